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
/// hivex's own writer is not used: it never takes values above 16344 bytes apart, as Windows wants
/// them from version 1.4 on, makes a file of 79 MB out of 4096 rules in an empty hive because it
/// writes the index anew for each, aborts the program when it is asked to write after a value that
/// it refused (above 1,000,000 bytes), and cannot rename.
///
/// Throws HiveError where the form of the hive cannot hold what the tree holds.
std::string WriteHive(std::string_view base, const RegistryKey& root, const HiveOrigins& origins,
                      std::uint64_t time);

}  // namespace morvelle
