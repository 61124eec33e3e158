#include "platform/windows_paths.h"

#include <string_view>
#include <system_error>

#include "app/messages/path_text.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr std::string_view kProfile = "%UserProfile%";

/// The entry of a folder with that name, exact or without regard to case.
std::filesystem::path FindEntry(const std::filesystem::path& folder, const std::string& name) {
  // By UTF-16: what a narrow string means in a path is not the same on every system.
  auto exact = folder / ToUtf16(name);
  std::error_code error;
  if (std::filesystem::exists(exact, error)) return exact;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const auto units = PathUnits(entry->path().filename());
    const auto shown = units ? FromUtf16(*units) : std::nullopt;
    if (shown && EqualIgnoringCase(*shown, name)) return entry->path();
  }
  return exact;
}

char Capital(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

bool IsLetter(char letter) { return Capital(letter) >= 'A' && Capital(letter) <= 'Z'; }

/// The folder from which a path starts; `rest` loses what names it.
std::filesystem::path StartOf(const WindowsFolders& folders, std::string_view& rest) {
  if (rest.size() >= 2 && IsLetter(rest[0]) && rest[1] == ':') {
    const char drive = Capital(rest[0]);
    rest.remove_prefix(2);
    const auto known = folders.drives.find(drive);
    if (known != folders.drives.end()) return known->second;
    return FindEntry(folders.registryFolder, std::string("drive_") + LowerCase(drive));
  }
  if (folders.profile && EqualIgnoringCase(rest.substr(0, kProfile.size()), kProfile)) {
    rest.remove_prefix(kProfile.size());
    return *folders.profile;
  }
  return folders.registryFolder;
}

}  // namespace

std::filesystem::path FindWindowsPath(const WindowsFolders& folders,
                                      const std::string& windowsPath) {
  std::string_view rest = windowsPath;
  auto place = StartOf(folders, rest);
  while (!rest.empty()) {
    const auto end = std::min(rest.find_first_of("\\/"), rest.size());
    if (end > 0) place = FindEntry(place, std::string(rest.substr(0, end)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return place;
}

}  // namespace morvelle
