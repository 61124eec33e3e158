#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/registry_tree.h"

namespace morvelle {

/// What a key was when its hive was opened.
struct HiveOrigin {
  std::uint32_t cell = 0;
  const RegistryName* name = nullptr;
  std::vector<RegistryEntry> entries;  ///< As many as its value list has, in that order.
};
/// By the key in the tree, whatever name it has by now.
using HiveOrigins = std::unordered_map<const RegistryKey*, HiveOrigin>;

/// Reads a whole hive through hivex; its root becomes `root`. Throws HiveError when the bytes are
/// no hive, when Windows had not finished writing it, or when anything in it cannot be read.
/// `origins` may be null.
void ReadHive(std::string_view bytes, RegistryTree& tree, RegistryKey& root, HiveOrigins* origins);

}  // namespace morvelle
