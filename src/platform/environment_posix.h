#pragma once

#include <utility>

#include "platform/windows_paths.h"
#include "ports/environment.h"

namespace morvelle {

/// The environment on Linux and its kin.
class PosixEnvironment final : public Environment {
 public:
  /// `version` is that of the program itself, which no file carries here.
  PosixEnvironment(WindowsFolders folders, std::string version)
      : folders_(std::move(folders)), version_(std::move(version)) {}

  [[nodiscard]] std::filesystem::path ProgramFile() const override;
  /// `morvelle` in the user's data folder (XDG_DATA_HOME, else ~/.local/share), made when missing.
  [[nodiscard]] std::filesystem::path UserFolder() const override;
  /// The registry is a file here, of a machine whose variables nobody knows.
  [[nodiscard]] std::optional<std::string> Variable(const std::string& name) const override;
  [[nodiscard]] std::string GetFileVersion(const std::filesystem::path& file) const override;
  [[nodiscard]] std::filesystem::path HostPath(const std::string& windowsPath) const override;
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override;
  void SetCurrentFolder(const std::filesystem::path& folder) override;

  /// Known once the registry file is.
  void SetRegistryFolder(std::filesystem::path folder) {
    folders_.registryFolder = std::move(folder);
  }
  /// What %UserProfile% stands for, when the command line does not say it; without it, nothing.
  void SetProfile(std::filesystem::path folder) { folders_.profile = std::move(folder); }

 private:
  WindowsFolders folders_;
  std::string version_;
};

}  // namespace morvelle
