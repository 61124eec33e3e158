#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "app/messages/messages.h"
#include "ports/environment.h"
#include "ports/file_dialogs.h"

namespace morvelle {

/// The questions for a file that the program asks, by the file's extension: "roe", "moe", "sgn" or
/// "oe". Whatever the answer, the current folder is the program's own afterwards.
class FileChoice {
 public:
  FileChoice(const Messages& messages, FileDialogs& dialogs, Environment& environment,
             std::filesystem::path programFolder)
      : messages_(messages),
        dialogs_(dialogs),
        environment_(environment),
        programFolder_(std::move(programFolder)) {}

  /// The file to be read; nothing when the user cancels.
  std::optional<std::filesystem::path> ToOpen(std::string_view extension,
                                              const std::filesystem::path& folder,
                                              std::string_view name = {});
  /// The file to be written: the user has agreed to replace one that is there. Nothing when the
  /// user gives up.
  std::optional<std::filesystem::path> ToSave(std::string_view extension,
                                              const std::filesystem::path& folder,
                                              std::string_view name);

 private:
  enum class Verdict { Taken, AskAgain, GivenUp };
  [[nodiscard]] Verdict MayBeWritten(const std::filesystem::path& file) const;

  const Messages& messages_;
  FileDialogs& dialogs_;
  Environment& environment_;
  std::filesystem::path programFolder_;
};

}  // namespace morvelle
