#include "app/messages/messages.h"

#include <system_error>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"

namespace morvelle {

Button Messages::Msg(std::string_view prompt, int buttons, std::string& title) const {
  return Trap(dialogs_, "Msg", [&] {
    if (title.empty()) title = kAppTitle;
    return dialogs_.ShowMessage(std::string(prompt), buttons, title);
  });
}

Button Messages::Msg(std::string_view prompt, int buttons) const {
  std::string title;
  return Msg(prompt, buttons, title);
}

bool Messages::TestOui(std::string_view prompt) const {
  return Trap(dialogs_, "TestOui", [&] {
    return Msg(prompt, kBoxYesNo + kBoxQuestion + kBoxSecondDefault) == Button::Yes;
  });
}

void Messages::FileDoesNotExist(const std::filesystem::path& path) const {
  Trap(dialogs_, "FileDoesNotExist", [&] {
    Msg(std::string("Fichier "_cp) + PathText(path) + std::string(" introuvable ou endommagé"_cp));
  });
}

bool Messages::FileExists(const std::filesystem::path& path, bool report) const {
  return Trap(dialogs_, "FileExists", [&] {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return false;
    if (report && std::filesystem::file_size(path, error) == 0) FileDoesNotExist(path);
    return true;
  });
}

bool Messages::FolderExists(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

}  // namespace morvelle
