#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace morvelle {

/// What the program asks of the machine that it runs on: its own places, variables, the clock, and
/// where a path of the old Windows machine lies today.
class Environment {
 public:
  Environment() = default;
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  virtual ~Environment() = default;

  /// The program file itself.
  [[nodiscard]] virtual std::filesystem::path ProgramFile() const = 0;
  /// Folder of the settings file and of the user's files: the program's own on Windows, the user's
  /// data folder on Linux.
  [[nodiscard]] virtual std::filesystem::path UserFolder() const = 0;
  /// The value of a variable that stands in the registry, as %NAME% would give it; nothing when it
  /// is not known. Where the registry is a file none is: this machine's are not those of the old
  /// one.
  [[nodiscard]] virtual std::optional<std::string> Variable(const std::string& name) const = 0;
  /// The four version numbers of a program file joined by "."; empty when it has none.
  [[nodiscard]] virtual std::string GetFileVersion(const std::filesystem::path& file) const = 0;
  /// Where a Windows path that the registry or a file names lies on this machine. The path need not
  /// exist. Empty when it has no place here: where the registry is a file, that is also said of
  /// what lies outside the folders of the old machine.
  [[nodiscard]] virtual std::filesystem::path HostPath(const std::string& windowsPath) const = 0;
  [[nodiscard]] virtual std::chrono::system_clock::time_point Now() const = 0;
  virtual void SetCurrentFolder(const std::filesystem::path& folder) = 0;
};

}  // namespace morvelle
