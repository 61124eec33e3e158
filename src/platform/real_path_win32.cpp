#include <windows.h>

#include "disk/device_names.h"
#include "disk/final_path_win32.h"
#include "disk/host_files.h"
#include "platform/real_path.h"

namespace morvelle {

namespace {

using std::filesystem::path;

bool IsLinkBetween(path place, const path& start) {
  for (; place != start && place.has_relative_path(); place = place.parent_path()) {
    if (IsLink(place)) return true;
  }
  return false;
}

}  // namespace

// std::filesystem::weakly_canonical follows no link here.
std::optional<path> RealPath(const path& place, const path& start) {
  auto present = place;
  path missing;
  while (::GetFileAttributesW(present.c_str()) == INVALID_FILE_ATTRIBUTES) {
    const DWORD error = ::GetLastError();
    if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) return std::nullopt;
    if (!present.has_relative_path()) return std::nullopt;
    missing = missing.empty() ? present.filename() : present.filename() / missing;
    present = present.parent_path();
  }
  const auto real = FinalPath(present);
  if (!real) return std::nullopt;
  if (real->empty()) return IsLinkBetween(place, start) ? std::nullopt : std::optional(place);
  return missing.empty() ? real : *real / missing;
}

bool MayBeFileName(std::string_view name) {
  // ":" begins the name of a stream of the file's; a blank or a point at the end is dropped.
  constexpr std::string_view kRefused = ":*?\"<>|";
  if (name.empty() || name.ends_with(' ') || name.ends_with('.')) return false;
  if (name.find_first_of(kRefused) != std::string_view::npos) return false;
  return !IsDeviceName(name);
}

}  // namespace morvelle
