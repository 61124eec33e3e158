#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "app/messages/messages.h"
#include "disk/host_files.h"

/// Files read and written whole.
namespace morvelle {

/// The bytes of a plain file; nothing when it is none, cannot be read or has more than `limit`
/// bytes. `fault` then says why.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& file, std::uint64_t limit,
                                         FileFault* fault = nullptr);

/// Says of a file that could not be read that it is too large, where that is why; whether it did.
bool TellTooLarge(const Messages& messages, const std::filesystem::path& file,
                  const FileFault& fault);

/// Writes a file beside the one of that name, down to the disk, and puts it in its place: one that
/// was there stays as it was when the writing fails, and after a power cut one or the other is
/// whole. What is there and no plain file is refused. Throws RuntimeError 61 when the disk is full,
/// 70 where writing is not allowed, 76 where the folder is missing, 57 for other failures of the
/// system.
void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes);

/// As WriteWholeFile, for a folder that others may have filled: a link of that name is replaced,
/// and what it leads to stays as it is.
void WriteOverLink(const std::filesystem::path& file, std::string_view bytes);

/// As WriteWholeFile, with a dated copy of what was there left beside it.
void ReplaceWholeFile(const std::filesystem::path& file, std::string_view bytes,
                      std::chrono::system_clock::time_point now);

/// Whether the file is there and marked as not to be written.
bool IsReadOnly(const std::filesystem::path& file);

}  // namespace morvelle
