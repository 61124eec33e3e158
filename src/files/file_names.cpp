#include "files/file_names.h"

#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/device_names.h"

namespace morvelle {

std::string FileTitle(const std::filesystem::path& path) { return PathText(path.filename()); }

std::filesystem::path ToPath(std::string_view name) { return {ToUtf16(name)}; }

std::string SafeFileName(std::string_view name) {
  constexpr std::string_view kRefused = "\\/:*?<>|";
  std::string safe(name);
  for (auto& character : safe) {
    if (character == '"') {
      character = '\'';
    } else if (IsControlCharacter(character) ||
               kRefused.find(character) != std::string_view::npos) {
      character = '-';
    }
  }
  safe.resize(safe.find_last_not_of(". ") + 1);
  if (safe.empty() || safe.front() == '.' || IsDeviceName(safe)) safe.insert(0, 1, '_');
  return safe;
}

std::string_view WindowsFileName(std::string_view path) {
  const auto slash = path.rfind('\\');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

}  // namespace morvelle
