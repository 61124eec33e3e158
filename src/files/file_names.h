#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Names of files, between Windows-1252 text and the host.
namespace morvelle {

/// The name alone as a message shows it: "?" for what Windows-1252 lacks.
std::string FileTitle(const std::filesystem::path& path);

/// A Windows-1252 file name as a path.
std::filesystem::path ToPath(std::string_view name);

/// `name` as a file can be called on every system, for files travel: an apostrophe for each double
/// quote, "-" for the other characters that Windows refuses, none of the dots and blanks at its
/// end, which Windows drops, and "_" before what would be a device, a hidden file or nothing.
std::string SafeFileName(std::string_view name);

/// The part of a Windows path from its last backslash on, without it.
std::string_view WindowsFileName(std::string_view path);

}  // namespace morvelle
