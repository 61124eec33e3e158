#pragma once

#include <windows.h>

#include <filesystem>

namespace morvelle {

/// Where an open file or folder really lies, behind links. Empty where the system does not say, as
/// Windows XP, which has no GetFinalPathNameByHandle.
std::filesystem::path FinalPath(HANDLE file);

}  // namespace morvelle
