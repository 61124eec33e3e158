#pragma once

#include <chrono>
#include <filesystem>

#include "disk/host_files.h"

namespace morvelle {

/// Puts what was written aside in the place of a file that is there, and leaves its present content
/// beside it under its name with the date and time, local: "a (copie du 2026-11-15 10-20-30).reg".
/// What fails leaves the file and nothing else, unless the copy is all that is left of it. `stamp`
/// is as for HostFiles::PutInPlace.
FileFault PutInPlaceKeepingCopy(HostFiles& files, const std::filesystem::path& aside,
                                const std::filesystem::path& file,
                                std::chrono::system_clock::time_point now, FileStamp& stamp);

}  // namespace morvelle
