#include "platform/file_dialogs_wx.h"

#include <wx/filedlg.h>

#include <utility>

#include "app/messages/text.h"

namespace morvelle {

namespace {

wxString ToWx(std::string_view text) { return wxString::FromUTF8(ToUtf8(text)); }

wxString NameOf(const std::filesystem::path& path) {
  const auto name = path.u8string();
  return wxString::FromUTF8(reinterpret_cast<const char*>(name.data()), name.size());
}

/// A name that the desktop gives, in the form that the system opens.
std::filesystem::path ToPath(const wxString& name) {
  const auto native = name.fn_str();
  return {static_cast<const std::filesystem::path::value_type*>(native)};
}

}  // namespace

std::optional<std::filesystem::path> WxFileDialogs::Ask(const FileQuestion& question, long style) {
  boxes_.PrepareBox();
  wxFileDialog dialog(OwnerOfBox(), ToWx(question.title), NameOf(question.folder),
                      ToWx(question.proposal), ToWx(question.filterLabel + "|" + question.pattern),
                      style);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  return ToPath(dialog.GetPath());
}

std::optional<std::filesystem::path> WxFileDialogs::AskFileToOpen(const FileQuestion& question) {
  return Ask(question, wxFD_OPEN);
}

std::optional<std::filesystem::path> WxFileDialogs::AskFileToSave(const FileQuestion& question) {
  auto file = Ask(question, wxFD_SAVE);
  if (file) file = WithExtensionOf(question.pattern, std::move(*file));
  return file;
}

}  // namespace morvelle
