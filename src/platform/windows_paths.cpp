#include "platform/windows_paths.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <vector>

#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "platform/real_path.h"

namespace morvelle {

namespace {

using std::filesystem::path;

constexpr std::string_view kProfile = "%UserProfile%";
constexpr std::string_view kSeparators = "\\/";

bool IsSeparator(char character) { return kSeparators.find(character) != std::string_view::npos; }

/// The entry of a folder with that name, exact or without regard to case.
path FindEntry(const path& folder, const std::string& name) {
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

/// Both with their links followed.
bool IsWithin(const path& place, const path& folder) {
  return std::mismatch(folder.begin(), folder.end(), place.begin(), place.end()).first ==
         folder.end();
}

/// A folder that is there, with its links followed.
std::optional<path> RealFolder(const path& folder) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) return std::nullopt;
  return RealPath(folder, folder);
}

/// The drive's folder beside the registry file. Who made that file may have made this folder too:
/// a link to elsewhere is none.
std::optional<path> DriveBeside(const path& registryFolder, char drive) {
  const auto above = RealFolder(registryFolder);
  if (!above) return std::nullopt;
  auto folder = RealPath(FindEntry(*above, std::string("drive_") + LowerCase(drive)), *above);
  if (!folder || *folder == *above || !IsWithin(*folder, *above)) return std::nullopt;
  return RealFolder(*folder);
}

/// The folder from which a path starts; without one it is not there.
struct Start {
  std::optional<path> folder;
  bool isDrive = false;
};

/// `rest` loses what names the start.
Start StartOf(const WindowsFolders& folders, std::string_view& rest) {
  if (rest.size() >= 2 && IsLetter(rest[0]) && rest[1] == ':') {
    const char drive = Capital(rest[0]);
    rest.remove_prefix(2);
    const auto known = folders.drives.find(drive);
    const bool isKnown = known != folders.drives.end();
    return {isKnown ? RealFolder(known->second) : DriveBeside(folders.registryFolder, drive), true};
  }
  if (folders.profile && EqualIgnoringCase(rest.substr(0, kProfile.size()), kProfile) &&
      (rest.size() == kProfile.size() || IsSeparator(rest[kProfile.size()]))) {
    rest.remove_prefix(kProfile.size());
    return {RealFolder(*folders.profile)};
  }
  const bool isVariable = rest.starts_with('%') && rest.find('%', 1) != std::string_view::npos;
  const bool isElsewhere = rest.size() >= 2 && IsSeparator(rest[0]) && IsSeparator(rest[1]);
  if (isVariable || isElsewhere) return {};
  return {RealFolder(folders.registryFolder)};
}

/// The names of a path below its start, in their order. ".." drops the one before it whatever that
/// is, a link too; at the start there is nothing to drop, and `climbs` is told.
std::vector<std::string> NamesOf(std::string_view rest, bool& climbs) {
  std::vector<std::string> names;
  while (!rest.empty()) {
    const auto end = std::min(rest.find_first_of(kSeparators), rest.size());
    const auto name = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (name.empty() || name == ".") continue;
    if (name != "..") {
      names.emplace_back(name);
    } else if (names.empty()) {
      climbs = true;
    } else {
      names.pop_back();
    }
  }
  return names;
}

}  // namespace

path FindWindowsPath(const WindowsFolders& folders, const std::string& windowsPath) {
  if (HoldsControlCharacter(windowsPath)) return {};
  std::string_view rest = windowsPath;
  const auto start = StartOf(folders, rest);
  bool climbs = false;
  const auto names = NamesOf(rest, climbs);
  // A drive has nothing above it; a folder has.
  if (!start.folder || (climbs && !start.isDrive)) return {};
  auto place = *start.folder;
  for (const auto& name : names) {
    if (!MayBeFileName(name)) return {};
    // At each step: a folder outside is not even to be searched.
    auto next = RealPath(FindEntry(place, name), *start.folder);
    if (!next || !IsWithin(*next, *start.folder)) return {};
    place = std::move(*next);
  }
  return place;
}

}  // namespace morvelle
