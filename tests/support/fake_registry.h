#pragma once

#include <optional>
#include <string>

#include "app/messages/text.h"
#include "platform/tree_store.h"

namespace morvelle {

/// A registry in memory whose writes can be made to fail.
class FakeRegistry final : public TreeStore {
 public:
  FakeRegistry() { UseRoot(); }

  RegistryStatus writeStatus = kStatusSuccess;        ///< Given by SetValue when not 0.
  int goodWrites = 0;                                 ///< So many writes pass before `writeStatus`.
  RegistryStatus createStatus = kStatusSuccess;       ///< Given by CreateKey when not 0.
  RegistryStatus describeStatus = kStatusSuccess;     ///< Given by DescribeValue when not 0.
  CommitOutcome commitOutcome = CommitOutcome::Done;  ///< "Failed" is given once.
  std::string lastError;
  int commits = 0;
  int writes = 0;
  /// Whether it can tell what has changed and make keys at once, as a file can and the Windows
  /// registry cannot.
  bool tellsChanges = true;
  /// Without them every write is final, as it is on the Windows registry.
  bool hasBatches = true;

  RegistryStatus CreateKey(std::string_view path, KeyHandle& handle) override {
    return createStatus != kStatusSuccess ? createStatus : TreeStore::CreateKey(path, handle);
  }
  RegistryStatus DescribeValue(KeyHandle key, std::string_view name, ValueKind& kind,
                               std::uint32_t& size) override {
    if (describeStatus != kStatusSuccess) return describeStatus;
    return TreeStore::DescribeValue(key, name, kind, size);
  }
  RegistryStatus SetValue(KeyHandle key, std::string_view name, ValueKind kind,
                          std::string_view data) override {
    if (writeStatus != kStatusSuccess && goodWrites-- <= 0) return writeStatus;
    ++writes;
    return TreeStore::SetValue(key, name, kind, data);
  }
  bool WriteNewKeys(std::string_view path, std::span<const NewKey> keys) override {
    return tellsChanges && writeStatus == kStatusSuccess && TreeStore::WriteNewKeys(path, keys);
  }
  std::optional<std::uint64_t> ChangeMark(std::string_view path) override {
    return tellsChanges ? TreeStore::ChangeMark(path) : std::nullopt;
  }
  void BeginBatch() override {
    if (hasBatches) TreeStore::BeginBatch();
  }
  void AbandonBatch() override {
    if (hasBatches) TreeStore::AbandonBatch();
  }
  CommitOutcome CommitBatch(bool overwriteChanged) override {
    if (commitOutcome == CommitOutcome::ChangedMeanwhile && overwriteChanged) {
      commitOutcome = CommitOutcome::Done;
    }
    if (commitOutcome == CommitOutcome::Failed) {
      AbandonBatch();
      return std::exchange(commitOutcome, CommitOutcome::Done);
    }
    if (commitOutcome != CommitOutcome::Done) return commitOutcome;
    ++commits;
    return TreeStore::CommitBatch(overwriteChanged);
  }
  [[nodiscard]] std::string LastError() const override { return lastError; }

  [[nodiscard]] bool HasKey(std::string_view path) { return KeyAt(path) != nullptr; }
  /// Calls `value(path below, name, kind, single-byte view)` for each value below a key in stored
  /// order, subkeys by name, and `bare(path below)` for a key with nothing in it.
  template <typename OnValue, typename OnBareKey>
  void Walk(const std::string& path, const OnValue& value, const OnBareKey& bare,
            const std::string& below = {}) {
    const RegistryKey& key = *KeyAt(path);
    if (key.entries.empty() && key.subkeys.empty()) bare(below);
    KeyHandle handle = 0;
    OpenKey(path, KeyAccess::ReadWrite, handle);
    for (const auto& entry : key.entries) {
      const auto name = FromUtf16Lossy(entry.name->text);
      std::string data;
      ReadValue(handle, name, data);
      value(below, name, static_cast<ValueKind>(entry.kind), data);
    }
    CloseKey(handle);
    for (const auto& subkey : key.subkeys) {
      const auto name = FromUtf16Lossy(subkey->name->text) + "\\";
      auto subpath = path;
      if (!subpath.ends_with('\\')) subpath += '\\';
      Walk(subpath.append(name), value, bare, below + name);
    }
  }
};

}  // namespace morvelle
