#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/registry_access.h"
#include "core/rule_tables.h"
#include "ports/registry_store.h"

namespace morvelle {

/// Writes rules whose keys are not there yet, straight from their rows: where thousands are made at
/// once, a plan for each takes longer than its writing.
class NewRuleKeys {
 public:
  NewRuleKeys(RegistryAccess& registry, const std::string& mailKey)
      : registry_(registry), mailKey_(mailKey) {}

  /// Whether a row, written to a key that is not there, would be read as it stands: nothing in it
  /// is to be made up, left out or put right.
  [[nodiscard]] static bool IsAsRead(const RuleTables& tables, int row);

  /// Writes such a row; the status of the first write that fails.
  [[nodiscard]] RegistryStatus Write(const RuleTables& tables, int row);

  // What entry_keys.h asks for; paths are those below the rule's key.
  void CreateKey(const std::string& path) { Turn(path); }
  bool SetNumber(const std::string& path, std::string_view name, const std::string& text,
                 const std::string& storedIn = {});
  bool SetValue(const std::string& path, std::string_view name, ValueKind kind,
                const std::string& text, const std::string& storedIn = {});
  void DeleteValue(const std::string& /*path*/, std::string_view /*name*/) {}
  [[nodiscard]] static bool KeyExists(const std::string& /*path*/) { return false; }
  [[nodiscard]] static bool LacksValue(const std::string& /*path*/, std::string_view /*name*/) {
    return false;
  }

 private:
  /// A rule's own key, "Actions" and "Criteria", and what is below the two.
  static constexpr std::size_t kMostKeys = 3 + 2 * kMaxEntries;
  static constexpr std::size_t kMostValues = 5 * kMostKeys;

  /// What follows is for that key.
  void Turn(const std::string& path);
  void Add(std::string_view name, ValueKind kind, std::string_view data);
  [[nodiscard]] RegistryStatus WriteOneByOne(const std::string& key) const;

  RegistryAccess& registry_;
  const std::string& mailKey_;
  std::array<std::string, kMostKeys> paths_;
  std::array<NewKey, kMostKeys> keys_;
  std::array<NewValue, kMostValues> values_;  ///< Their data lies in the tables and in numbers_.
  std::array<std::array<char, 4>, kMostValues> numbers_;
  std::size_t keyCount_ = 0;
  std::size_t valueCount_ = 0;
};

}  // namespace morvelle
