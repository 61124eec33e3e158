#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/registry_access.h"

namespace morvelle {

/// The writes of a save, settled before the first of them: whatever does not convert raises its
/// error here, while the store is still untouched. A value whose text is the one already stored is
/// not written. While a plan is made nothing else writes to the store: what it once found there, or
/// did not find, holds until it is carried out.
class WritePlan {
 public:
  explicit WritePlan(RegistryAccess& registry) : registry_(registry) {}

  void CreateKey(const std::string& path);
  /// A number from its text; an empty text is 0. `storedIn` is the key that holds the value before
  /// the plan is carried out, empty when none does. False when the value is there already.
  bool SetNumber(const std::string& path, std::string_view name, const std::string& text,
                 const std::string& storedIn);
  bool SetNumber(const std::string& path, std::string_view name, const std::string& text) {
    return SetNumber(path, name, text, path);
  }
  /// A text or bytes, in the same way.
  bool SetValue(const std::string& path, std::string_view name, ValueKind kind,
                const std::string& text, const std::string& storedIn);
  bool SetValue(const std::string& path, std::string_view name, ValueKind kind,
                const std::string& text) {
    return SetValue(path, name, kind, text, path);
  }
  void DeleteValue(const std::string& path, std::string_view name);
  void DeleteKey(const std::string& path);
  void RenameSubkeys(const std::string& path, std::vector<KeyRename> renames);

  /// Carries the plan out in its order; stops at the first write that fails and gives its status.
  /// A key that is there and may not be written is found before the first write.
  [[nodiscard]] RegistryStatus Apply();

  /// Whether a key that is there now holds no value of that name.
  [[nodiscard]] bool LacksValue(const std::string& path, std::string_view name);
  /// Whether a key is there before the plan is carried out.
  [[nodiscard]] bool KeyExists(const std::string& path) { return Look(path) != nullptr; }

 private:
  enum class Verb { CreateKey, SetValue, DeleteValue, DeleteKey, RenameSubkeys };
  struct Step {
    Verb verb;
    std::size_t path;  ///< Index in paths_.
    std::string name;
    ValueKind kind;
    RegistryValue value;
    std::vector<KeyRename> renames;
  };

  Step& Add(Verb verb, const std::string& path, std::string_view name = {});
  /// The key of that path, which stays open until the next look; null when there is none.
  [[nodiscard]] const OpenedKey* Look(const std::string& path);
  [[nodiscard]] bool IsStored(const std::string& path, std::string_view name,
                              const std::string& text);
  [[nodiscard]] bool IsMissing(const OpenedKey& key, std::string_view name) const;
  [[nodiscard]] RegistryStatus MayWrite() const;
  /// Carries out one step; `key` is the key that the step before wrote to, if any.
  [[nodiscard]] RegistryStatus Apply(const Step& step, std::unique_ptr<OpenedKey>& key,
                                     std::size_t& pathOfKey) const;

  RegistryAccess& registry_;
  std::vector<std::string> paths_;  ///< Steps on one key follow each other and share its path.
  std::vector<Step> steps_;
  std::string lookedAt_;
  std::unique_ptr<OpenedKey> looked_;
  std::string missing_;  ///< A key that is not there, and nothing below it either.
};

}  // namespace morvelle
