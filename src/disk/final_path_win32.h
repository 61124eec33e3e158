#pragma once

#include <filesystem>
#include <optional>

namespace morvelle {

/// Where a file or folder really lies, behind links; nothing where it cannot be opened. Empty where
/// the system does not say, as Windows XP, which has no GetFinalPathNameByHandle.
std::optional<std::filesystem::path> FinalPath(const std::filesystem::path& file);

}  // namespace morvelle
