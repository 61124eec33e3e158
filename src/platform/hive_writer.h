#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/hive_reader.h"
#include "platform/registry_tree.h"

namespace morvelle {

/// The bytes of the hive `base`, brought to what the tree under `root` holds. `origins` says what
/// the keys were in `base`; `time` (FILETIME) becomes the last write of the keys that changed.
///
/// A key that did not change keeps every byte of its cells, and so does each value that did not
/// change in one that did. A renamed key keeps its cell, hence its class, security and last write;
/// a new one has the security of its parent. Without a change the bytes are those of `base`.
///
/// Throws HiveError where the form of the hive cannot hold what the tree holds.
std::string WriteHive(std::string_view base, const RegistryKey& root, const HiveOrigins& origins,
                      std::uint64_t time);

}  // namespace morvelle
