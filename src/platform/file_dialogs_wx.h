#pragma once

#include "platform/dialogs_wx.h"
#include "ports/file_dialogs.h"

namespace morvelle {

/// The desktop's file dialogs, through wxWidgets.
class WxFileDialogs final : public FileDialogs {
 public:
  explicit WxFileDialogs(WxDialogs& boxes) : boxes_(boxes) {}

  std::optional<std::filesystem::path> AskFileToOpen(const FileQuestion& question) override;
  std::optional<std::filesystem::path> AskFileToSave(const FileQuestion& question) override;

 private:
  std::optional<std::filesystem::path> Ask(const FileQuestion& question, long style);

  WxDialogs& boxes_;
};

}  // namespace morvelle
