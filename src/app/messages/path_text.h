#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// Host paths as text.
namespace morvelle {

/// A host path as its system has it; nothing when it is made of bytes that are not UTF-8, as a name
/// on Linux may be.
std::optional<std::u16string> PathUnits(const std::filesystem::path& path);
/// A host path as Windows-1252 text for a message; "?" for what the code page lacks.
std::string PathText(const std::filesystem::path& path);

}  // namespace morvelle
