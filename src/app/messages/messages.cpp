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

void Messages::MsgNamed(std::string_view prompt, const std::vector<std::string>& names) const {
  if (names.empty()) return;
  constexpr std::size_t kMost = 10;
  std::string text(prompt);
  for (std::size_t i = 0; i < names.size() && i < kMost; ++i) text += "\r\"" + names[i] + "\"";
  if (names.size() > kMost) text += "\r... (" + std::to_string(names.size()) + ")";
  Msg(text, kBoxExclamation);
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

void BoxSeries::Say(std::string_view prompt, std::string_view item) {
  constexpr int kBoxes = 5;
  if (shown_ == kBoxes) {
    rest_.emplace_back(item);
    return;
  }
  ++shown_;
  messages_.Msg(prompt);
}

void BoxSeries::Finish(std::string_view heading) {
  constexpr std::size_t kListed = 20;
  if (rest_.empty()) return;
  std::string list(heading);
  for (std::size_t k = 0; k < rest_.size() && k < kListed; ++k) list.append("\r").append(rest_[k]);
  if (rest_.size() > kListed) {
    const auto more = rest_.size() - kListed;
    list.append("\r… et "_cp).append(std::to_string(more)).append(more == 1 ? " autre" : " autres");
  }
  rest_.clear();
  messages_.Msg(list);
}

}  // namespace morvelle
