#pragma once

#include <memory>

#include "platform/dialogs_wx.h"
#include "ports/printer.h"

class wxPrintDialogData;

namespace morvelle {

/// The desktop's printers, through wxWidgets.
class WxPrinter final : public Printer {
 public:
  explicit WxPrinter(WxDialogs& boxes);
  ~WxPrinter() override;

  PrintOutcome Print(const std::string& title, const std::vector<std::string>& lines) override;

 private:
  WxDialogs& boxes_;
  /// What the user chose last; made at the first print, for it asks the desktop for its printers.
  std::unique_ptr<wxPrintDialogData> choices_;
};

}  // namespace morvelle
