#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace morvelle {

/// Where the folders of the old Windows machine lie on this one.
struct WindowsFolders {
  /// Folder for each drive letter (capital).
  std::map<char, std::filesystem::path> drives;
  /// Folder that %UserProfile% stands for.
  std::optional<std::filesystem::path> profile;
  /// Folder of the registry file: a drive X without a folder of its own is `drive_x` beside it.
  std::filesystem::path registryFolder;
};

/// The place of a Windows path: letter case is ignored where the exact name is not there. What does
/// not exist keeps its own spelling. A path with neither drive nor %UserProfile% lies beside the
/// registry file.
std::filesystem::path FindWindowsPath(const WindowsFolders& folders,
                                      const std::string& windowsPath);

}  // namespace morvelle
