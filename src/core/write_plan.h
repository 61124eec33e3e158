#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/registry_access.h"

namespace morvelle {

/// The writes of a save, settled before the first of them: whatever does not convert raises its
/// error here, while the store is still untouched. A value whose text is the one already stored is
/// not written.
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
  [[nodiscard]] RegistryStatus Apply() const;

  /// Whether a key that is there now holds no value of that name.
  [[nodiscard]] bool LacksValue(const std::string& path, std::string_view name) const;

 private:
  enum class Verb { CreateKey, SetValue, DeleteValue, DeleteKey, RenameSubkeys };
  struct Step {
    Verb verb;
    std::string path;
    std::string name;
    ValueKind kind;
    RegistryValue value;
    std::vector<KeyRename> renames;
  };

  void Add(Step step) { steps_.push_back(std::move(step)); }
  [[nodiscard]] bool IsStored(const std::string& path, std::string_view name,
                              const std::string& text) const;
  [[nodiscard]] bool IsMissing(const OpenedKey& key, std::string_view name) const;
  [[nodiscard]] RegistryStatus MayWrite() const;
  [[nodiscard]] RegistryStatus Apply(const Step& step) const;

  RegistryAccess& registry_;
  std::vector<Step> steps_;
};

}  // namespace morvelle
