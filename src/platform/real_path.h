#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

/// What this system makes of a path that somebody else wrote.
namespace morvelle {

/// The path with its links followed, also one that leads to nothing; what is not there keeps its
/// name. Nothing where it cannot be told. On a system that cannot follow links, one below the
/// folder `start`, which stands above `place` or is it, cannot be told either.
std::optional<std::filesystem::path> RealPath(const std::filesystem::path& place,
                                              const std::filesystem::path& start);

/// Whether a name can be a file's: a system may keep some for its devices, or take them for another
/// name.
bool MayBeFileName(std::string_view name);

}  // namespace morvelle
