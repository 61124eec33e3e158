#pragma once

#include <chrono>
#include <filesystem>

#include "disk/host_files.h"

namespace morvelle {

/// Leaves the present content of a file beside it, under its name with the date and time, local:
/// "a (copie du 2026-11-15 10-20-30).reg". `copy` is then that name. To be followed by PutInPlace,
/// as HostFiles::KeepCopy is.
FileFault KeepDatedCopy(HostFiles& files, const std::filesystem::path& file,
                        std::chrono::system_clock::time_point now, std::filesystem::path& copy);

}  // namespace morvelle
