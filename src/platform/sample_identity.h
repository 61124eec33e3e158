#pragma once

#include <filesystem>

namespace morvelle {

/// The user's own copy of the sample identity: its registry file in `userFolder`, copied with what
/// belongs to it from `shippedFolder` where it is not there yet. The original is only ever read.
/// Throws std::filesystem::filesystem_error when the copy cannot be made; none is left half made.
std::filesystem::path OwnSampleIdentity(const std::filesystem::path& shippedFolder,
                                        const std::filesystem::path& userFolder);

}  // namespace morvelle
