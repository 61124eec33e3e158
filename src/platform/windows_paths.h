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
  /// Folder of the registry file: a drive X without a folder of its own is `drive_x` in it.
  std::filesystem::path registryFolder;
};

/// The place of a Windows path, links followed: letter case is ignored where the exact name is not
/// there, and what does not exist keeps its own spelling. "." and ".." count as Windows counts
/// them. A path with neither drive nor variable lies beside the registry file.
///
/// Whoever wrote the path, or packed the folders, may mean harm. Empty, which is "not there", when
/// the place lies outside the folder from which the path starts; when the drive or the variable at
/// its head has no folder, or it names another machine; when it holds what no file's name holds.
/// What `drives` and `profile` name is the user's own word, links included; `drive_x` has to lie in
/// the registry file's folder.
std::filesystem::path FindWindowsPath(const WindowsFolders& folders,
                                      const std::string& windowsPath);

}  // namespace morvelle
