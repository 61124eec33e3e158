#pragma once

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>

namespace morvelle {

/// What a file dialog shows. Texts are Windows-1252.
struct FileQuestion {
  std::string title;
  /// What stands for the pattern in the dialog: "Fichiers de règles OE (*.roe)".
  std::string filterLabel;
  /// "*." and the extension.
  std::string pattern;
  /// File name without a folder; empty to propose none.
  std::string proposal;
  /// Where the dialog starts; empty for the desktop's choice.
  std::filesystem::path folder;
};

/// The desktop's own dialogs to choose a file.
class FileDialogs {
 public:
  FileDialogs() = default;
  FileDialogs(const FileDialogs&) = delete;
  FileDialogs& operator=(const FileDialogs&) = delete;
  virtual ~FileDialogs() = default;

  /// The file to be read; nothing when the user cancels.
  virtual std::optional<std::filesystem::path> AskFileToOpen(const FileQuestion& question) = 0;

  /// The file to be written, the pattern's extension added where the user left it out; nothing when
  /// the user cancels. It may exist: whether to replace it is the caller's question, asked about
  /// the name as it is returned.
  virtual std::optional<std::filesystem::path> AskFileToSave(const FileQuestion& question) = 0;
};

/// `file` with the extension of a pattern such as "*.roe" where it does not end with it, letter
/// case ignored.
inline std::filesystem::path WithExtensionOf(const std::string& pattern,
                                             std::filesystem::path file) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  auto extension = file.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), lower);
  if (extension != pattern.substr(1)) file += pattern.substr(1);
  return file;
}

}  // namespace morvelle
