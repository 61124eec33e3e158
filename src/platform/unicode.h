#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// UTF-16 and UTF-8 as the registry and its files use them, characters outside Windows-1252
/// included.
namespace morvelle {

/// Upper case of one UTF-16 code unit for the comparison of registry names: Latin, Greek and
/// Cyrillic letters; any other unit is its own upper case.
char16_t UpperCase(char16_t unit);

/// Nothing when the bytes are not well-formed UTF-8.
std::optional<std::u16string> Utf16FromUtf8(std::string_view utf8);
/// Half of a surrogate pair alone, which UTF-8 cannot hold, becomes U+FFFD.
std::string Utf8FromUtf16(std::u16string_view text);
/// False when half of a surrogate pair stands alone.
bool IsWellFormed(std::u16string_view text);

/// A host path as its system has it; nothing when it is made of bytes that are not UTF-8, as a name
/// on Linux may be.
std::optional<std::u16string> PathUnits(const std::filesystem::path& path);
/// A host path as Windows-1252 text for a message; "?" for what the code page lacks.
std::string PathText(const std::filesystem::path& path);

}  // namespace morvelle
