#include "app/messages/path_text.h"

#include "app/messages/text.h"

namespace morvelle {

namespace {

/// UTF-16 already on Windows, where half of a surrogate pair may stand alone.
template <typename Native>
std::optional<std::u16string> UnitsOf(const Native& path) {
  if constexpr (sizeof(path[0]) == 1) {
    return Utf16FromUtf8(path);
  } else {
    return std::u16string(path.begin(), path.end());
  }
}

}  // namespace

std::optional<std::u16string> PathUnits(const std::filesystem::path& path) {
  return UnitsOf(path.native());
}

std::string PathText(const std::filesystem::path& path) {
  if (const auto text = PathUnits(path)) return FromUtf16Lossy(*text);
  return path.string();
}

std::string FileFailure(const std::filesystem::path& path, std::string_view what,
                        std::string_view reason) {
  std::string message;
  message += "Le fichier « "_cp;
  message += PathText(path);
  message += " » "_cp;
  message.append(what).append(" : ").append(reason);
  return message;
}

}  // namespace morvelle
