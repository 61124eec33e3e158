#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Files read and written whole.
namespace morvelle {

/// The bytes of a file; nothing when it is no file or cannot be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& file);

/// Writes a file beside the one of that name, down to the disk, and puts it in its place: one that
/// was there stays as it was when the writing fails, and after a power cut one or the other is
/// whole. What is no plain file is written to. Throws RuntimeError 61 when the disk is full, 70
/// where writing is not allowed, 76 where the folder is missing, 57 for other failures of the
/// system.
void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes);

/// Whether the file is there and marked as not to be written.
bool IsReadOnly(const std::filesystem::path& file);

}  // namespace morvelle
