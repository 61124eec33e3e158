#pragma once

#include <filesystem>

/// The whitelist at its limit: 50,000 addresses of a book into a whitelist of 100,000.
namespace morvelle::bench {

/// Registers "MergeWhitelist" and its yardstick "SortLines", `sort -f -u` on the same lines. Their
/// files lie in `folder`.
void RegisterWhitelist(const std::filesystem::path& folder);

}  // namespace morvelle::bench
