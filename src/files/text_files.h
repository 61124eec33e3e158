#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Files of Windows-1252 text, read and written whole, and their names.
namespace morvelle {

/// The bytes of a file; nothing when it is no file or cannot be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& file);

/// Writes a file beside the one of that name and puts it in its place: one that was there stays as
/// it was when the writing fails. What is no plain file is written to. Throws RuntimeError 61 when
/// the disk is full, 70 where writing is not allowed, 76 where the folder is missing.
void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes);

/// Whether the file is there and marked as not to be written.
bool IsReadOnly(const std::filesystem::path& file);

/// The name alone as a message shows it: "?" for what Windows-1252 lacks.
std::string FileTitle(const std::filesystem::path& path);

/// A Windows-1252 file name as a path.
std::filesystem::path ToPath(std::string_view name);

/// `name` as a file can be called: an apostrophe for each double quote, "-" for the other
/// characters that Windows refuses.
std::string SafeFileName(std::string_view name);

/// The part of a Windows path from its last backslash on, without it.
std::string_view WindowsFileName(std::string_view path);

}  // namespace morvelle
