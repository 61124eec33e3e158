#include "platform/environment_posix.h"

#include <cstdlib>
#include <system_error>

#include "disk/host_files.h"

namespace morvelle {

std::filesystem::path PosixEnvironment::ProgramFile() const {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::filesystem::path PosixEnvironment::UserFolder() const {
  const char* data = std::getenv("XDG_DATA_HOME");
  const char* home = std::getenv("HOME");
  std::filesystem::path folder;
  if (data != nullptr && *data == '/') {
    folder = data;
  } else {
    folder = std::filesystem::path(home != nullptr ? home : "/") / ".local" / "share";
  }
  folder /= "morvelle";
  try {
    MakeOwnFolder(folder);
  } catch (const std::filesystem::filesystem_error&) {
    // What is to be written there will say so.
  }
  return folder;
}

std::optional<std::string> PosixEnvironment::Variable(const std::string& /*name*/) const {
  return std::nullopt;
}

std::string PosixEnvironment::GetFileVersion(const std::filesystem::path& file) const {
  return file == ProgramFile() ? version_ : std::string{};
}

std::filesystem::path PosixEnvironment::HostPath(const std::string& windowsPath) const {
  return FindWindowsPath(folders_, windowsPath);
}

std::chrono::system_clock::time_point PosixEnvironment::Now() const {
  return std::chrono::system_clock::now();
}

void PosixEnvironment::SetCurrentFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::current_path(folder, error);
}

}  // namespace morvelle
