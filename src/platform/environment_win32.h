#pragma once

#include <optional>
#include <utility>

#include "platform/windows_paths.h"
#include "ports/environment.h"

namespace morvelle {

/// The environment on Windows.
class Win32Environment final : public Environment {
 public:
  /// `folders` when the registry is a file: it is another machine's, whose drives may lie beside it
  /// and whose variables nobody knows.
  explicit Win32Environment(std::optional<WindowsFolders> folders) : folders_(std::move(folders)) {}

  [[nodiscard]] std::filesystem::path ProgramFile() const override;
  /// The program's own folder.
  [[nodiscard]] std::filesystem::path UserFolder() const override;
  [[nodiscard]] std::optional<std::string> Variable(const std::string& name) const override;
  [[nodiscard]] std::string GetFileVersion(const std::filesystem::path& file) const override;
  /// The path itself, unless the registry is a file. A variable at its head is replaced here where
  /// `Variable` could not give it as text of the code page.
  [[nodiscard]] std::filesystem::path HostPath(const std::string& windowsPath) const override;
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override;
  void SetCurrentFolder(const std::filesystem::path& folder) override;

 private:
  std::optional<WindowsFolders> folders_;
};

}  // namespace morvelle
