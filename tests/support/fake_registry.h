#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "app/messages/text.h"
#include "ports/registry_store.h"

namespace morvelle {

/// A registry of maps, with writes that can be made to fail.
class FakeRegistry final : public RegistryStore {
 public:
  struct Value {
    std::string name;
    ValueKind kind;
    std::string data;
    bool operator==(const Value&) const = default;
  };
  struct Key {
    std::string name;
    std::vector<Value> values;
    std::map<std::string, std::shared_ptr<Key>> subkeys;  // by lower-cased name
  };

  RegistryStatus writeStatus = kStatusSuccess;     ///< Given by SetValue when not 0.
  int goodWrites = 0;                              ///< So many writes pass before `writeStatus`.
  RegistryStatus createStatus = kStatusSuccess;    ///< Given by CreateKey when not 0.
  RegistryStatus describeStatus = kStatusSuccess;  ///< Given by DescribeValue when not 0.
  CommitOutcome commitOutcome = CommitOutcome::Done;
  int commits = 0;
  int writes = 0;
  std::string lastError;

  RegistryStatus OpenKey(std::string_view path, KeyAccess, KeyHandle& handle) override {
    auto key = Find(path);
    if (!key) return kStatusNotFound;
    return Give(key, handle);
  }
  RegistryStatus CreateKey(std::string_view path, KeyHandle& handle) override {
    if (createStatus != kStatusSuccess) return createStatus;
    auto key = root_;
    for (const auto& part : Parts(path)) {
      auto& child = key->subkeys[LowerCase(part)];
      if (!child) child = std::make_shared<Key>(Key{part, {}, {}});
      key = child;
    }
    return Give(key, handle);
  }
  RegistryStatus CloseKey(KeyHandle handle) override {
    return handles_.erase(handle) != 0 ? kStatusSuccess : kStatusInvalidHandle;
  }
  RegistryStatus DescribeValue(KeyHandle key, std::string_view name, ValueKind& kind,
                               std::uint32_t& size) override {
    if (describeStatus != kStatusSuccess) return describeStatus;
    const auto* value = FindValue(key, name);
    if (value == nullptr) return kStatusNotFound;
    kind = value->kind;
    size = static_cast<std::uint32_t>(value->data.size());
    return kStatusSuccess;
  }
  RegistryStatus ReadValue(KeyHandle key, std::string_view name, std::string& data) override {
    const auto* value = FindValue(key, name);
    if (value == nullptr) return kStatusNotFound;
    data = value->data;
    return kStatusSuccess;
  }
  RegistryStatus SetValue(KeyHandle key, std::string_view name, ValueKind kind,
                          std::string_view data) override {
    if (writeStatus != kStatusSuccess && goodWrites-- <= 0) return writeStatus;
    ++writes;
    if (auto* value = FindValue(key, name)) {
      value->kind = kind;
      value->data = data;
    } else {
      handles_.at(key)->values.push_back({std::string(name), kind, std::string(data)});
    }
    return kStatusSuccess;
  }
  RegistryStatus DeleteValue(KeyHandle key, std::string_view name) override {
    auto& values = handles_.at(key)->values;
    return std::erase_if(
               values, [&](const Value& value) { return EqualIgnoringCase(value.name, name); }) != 0
               ? kStatusSuccess
               : kStatusNotFound;
  }
  RegistryStatus EnumKey(KeyHandle key, std::uint32_t index, std::string& name) override {
    const auto& subkeys = handles_.at(key)->subkeys;
    if (index >= subkeys.size()) return kStatusNoMoreItems;
    name = std::next(subkeys.begin(), static_cast<std::ptrdiff_t>(index))->second->name;
    return kStatusSuccess;
  }
  RegistryStatus DeleteKey(std::string_view path) override {
    auto parts = Parts(path);
    if (parts.empty()) return kStatusAccessDenied;
    const auto last = LowerCase(parts.back());
    parts.pop_back();
    auto parent = root_;
    for (const auto& part : parts) {
      const auto found = parent->subkeys.find(LowerCase(part));
      if (found == parent->subkeys.end()) return kStatusNotFound;
      parent = found->second;
    }
    const auto found = parent->subkeys.find(last);
    if (found == parent->subkeys.end()) return kStatusNotFound;
    if (!found->second->subkeys.empty()) return kStatusAccessDenied;
    parent->subkeys.erase(found);
    return kStatusSuccess;
  }
  RegistryStatus RenameSubkeys(std::string_view path, std::span<const KeyRename> renames,
                               std::span<const std::string_view>) override {
    auto parent = Find(path);
    if (!parent) return kStatusNotFound;
    std::vector<std::shared_ptr<Key>> moved;
    for (const auto& rename : renames) {
      const auto found = parent->subkeys.find(LowerCase(rename.from));
      if (found == parent->subkeys.end()) return kStatusNotFound;
      found->second->name = rename.to;
      moved.push_back(found->second);
      parent->subkeys.erase(found);
    }
    for (const auto& key : moved) parent->subkeys[LowerCase(key->name)] = key;
    return kStatusSuccess;
  }
  void BeginBatch() override { before_ = Copy(*root_); }
  CommitOutcome CommitBatch(bool overwriteChanged) override {
    if (commitOutcome == CommitOutcome::ChangedMeanwhile && overwriteChanged) {
      commitOutcome = CommitOutcome::Done;
    }
    if (commitOutcome == CommitOutcome::Failed) AbandonBatch();
    if (commitOutcome == CommitOutcome::Done) ++commits;
    return commitOutcome;
  }
  void AbandonBatch() override {
    if (before_) root_ = before_;
    before_ = nullptr;
  }
  [[nodiscard]] std::string LastError() const override { return lastError; }

  /// The key at a path, null when there is none.
  [[nodiscard]] std::shared_ptr<Key> Find(std::string_view path) const {
    auto key = root_;
    for (const auto& part : Parts(path)) {
      const auto found = key->subkeys.find(LowerCase(part));
      if (found == key->subkeys.end()) return nullptr;
      key = found->second;
    }
    return key;
  }

 private:
  static std::vector<std::string> Parts(std::string_view path) {
    std::vector<std::string> parts;
    while (!path.empty()) {
      const auto end = std::min(path.find('\\'), path.size());
      if (end > 0) parts.emplace_back(path.substr(0, end));
      path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
  }
  static std::shared_ptr<Key> Copy(const Key& key) {
    auto copy = std::make_shared<Key>(Key{key.name, key.values, {}});
    for (const auto& [name, subkey] : key.subkeys) copy->subkeys[name] = Copy(*subkey);
    return copy;
  }
  RegistryStatus Give(const std::shared_ptr<Key>& key, KeyHandle& handle) {
    handle = ++lastHandle_;
    handles_[handle] = key;
    return kStatusSuccess;
  }
  Value* FindValue(KeyHandle key, std::string_view name) {
    for (auto& value : handles_.at(key)->values) {
      if (EqualIgnoringCase(value.name, name)) return &value;
    }
    return nullptr;
  }

  std::shared_ptr<Key> root_ = std::make_shared<Key>();
  std::shared_ptr<Key> before_;
  std::map<KeyHandle, std::shared_ptr<Key>> handles_;
  KeyHandle lastHandle_ = 0;
};

}  // namespace morvelle
