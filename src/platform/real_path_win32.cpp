#include <windows.h>

#include <algorithm>
#include <array>
#include <string>

#include "app/messages/text.h"
#include "disk/final_path_win32.h"
#include "platform/real_path.h"

namespace morvelle {

namespace {

using std::filesystem::path;

bool IsLinkBetween(path place, const path& start) {
  for (; place != start && place.has_relative_path(); place = place.parent_path()) {
    const DWORD attributes = ::GetFileAttributesW(place.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
      return true;
    }
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
  const auto handle =
      ::CreateFileW(present.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return std::nullopt;
  path real = FinalPath(handle);
  ::CloseHandle(handle);
  if (real.empty()) return IsLinkBetween(place, start) ? std::nullopt : std::optional(place);
  return missing.empty() ? real : real / missing;
}

bool MayBeFileName(std::string_view name) {
  // ":" begins the name of a stream of the file's; a blank or a point at the end is dropped.
  constexpr std::string_view kRefused = ":*?\"<>|";
  if (name.empty() || name.ends_with(' ') || name.ends_with('.')) return false;
  if (name.find_first_of(kRefused) != std::string_view::npos) return false;
  // A device stays one under any extension, and with blanks before that.
  auto stem = name.substr(0, name.find('.'));
  stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
  const auto isStem = [&](std::string_view device) { return EqualIgnoringCase(stem, device); };
  constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN",    "AUX",
                                                        "NUL", "CONIN$", "CONOUT$"};
  if (std::any_of(kDevices.begin(), kDevices.end(), isStem)) return false;
  constexpr std::size_t kPortLength = 4;
  const auto port = stem.substr(0, kPortLength - 1);
  const bool isPort = EqualIgnoringCase(port, "COM") || EqualIgnoringCase(port, "LPT");
  return !isPort || stem.size() != kPortLength ||
         "123456789\u00B9\u00B2\u00B3"_cp.find(stem.back()) == std::string_view::npos;
}

}  // namespace morvelle
