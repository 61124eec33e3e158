#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Host paths as text.
namespace morvelle {

/// A host path as its system has it; nothing when it is made of bytes that are not UTF-8, as a name
/// on Linux may be.
std::optional<std::u16string> PathUnits(const std::filesystem::path& path);
/// A host path as Windows-1252 text for a message; "?" for what the code page lacks.
std::string PathText(const std::filesystem::path& path);
/// What a message says of a file that did not do what it was to do: "Le fichier « x » ne peut être
/// ouvert : il n'existe pas".
std::string FileFailure(const std::filesystem::path& path, std::string_view what,
                        std::string_view reason);

}  // namespace morvelle
