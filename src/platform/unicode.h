#pragma once

#include <string>
#include <string_view>

/// UTF-16 as the registry and its files use it, characters outside Windows-1252 included.
namespace morvelle {

/// Upper case of one UTF-16 code unit for the comparison of registry names: Latin, Greek and
/// Cyrillic letters; any other unit is its own upper case.
char16_t UpperCase(char16_t unit);

/// Half of a surrogate pair alone, which UTF-8 cannot hold, becomes U+FFFD.
std::string Utf8FromUtf16(std::u16string_view text);
/// False when half of a surrogate pair stands alone.
bool IsWellFormed(std::u16string_view text);

}  // namespace morvelle
