#pragma once

#include <functional>
#include <string>

#include "ports/dialogs.h"

class wxWindow;

namespace morvelle {

/// The window that a box shown now belongs to; null when there is none.
wxWindow* OwnerOfBox();

/// The message and input boxes with wxWidgets: their buttons say Oui, Non, OK and Annuler on every
/// system.
class WxDialogs final : public Dialogs {
 public:
  /// `beforeBox` runs before each box is shown: the window brings itself up to date.
  void BeforeBox(std::function<void()> beforeBox) { beforeBox_ = std::move(beforeBox); }
  /// For the desktop's own dialogs, which are boxes of the program's too.
  void PrepareBox() {
    if (beforeBox_) beforeBox_();
  }

  Button ShowMessage(const std::string& prompt, int style, const std::string& title) override;
  std::optional<std::string> AskText(const std::string& prompt, const std::string& title,
                                     const std::string& proposal) override;

 private:
  std::function<void()> beforeBox_;
};

}  // namespace morvelle
