#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ports/registry_store.h"

namespace morvelle {

/// RegistryStore::RenameSubkeys for a store that has neither renaming nor batches: it is made of
/// the store's other operations, in such an order that each key is whole under one name at least at
/// every moment, however the program ends.
class SubkeyRenames {
 public:
  /// The subkeys of `path`, without "\" at its end; a key's values are carried by the `known`
  /// names.
  SubkeyRenames(RegistryStore& store, std::string path, std::span<const std::string_view> known)
      : store_(store), path_(std::move(path)), known_(known) {}

  /// Status 2, and nothing done, when a key to be renamed is not there. On another failure the keys
  /// that were renamed get their old names back as far as the store lets them.
  RegistryStatus Run(std::span<const KeyRename> renames);

 private:
  [[nodiscard]] std::string PathOf(const std::string& name) const { return path_ + "\\" + name; }
  RegistryStatus FindAll(std::span<const KeyRename> renames);
  RegistryStatus Move(const std::string& from, const std::string& to);
  RegistryStatus CopyTree(const std::string& from, const std::string& to);
  RegistryStatus CopyValues(KeyHandle from, KeyHandle to);
  RegistryStatus DeleteTree(const std::string& path);
  void GoBack();
  [[nodiscard]] std::string FreeName();

  RegistryStore& store_;
  std::string path_;
  std::span<const std::string_view> known_;
  std::vector<KeyRename> pending_;
  std::vector<KeyRename> done_;
};

}  // namespace morvelle
