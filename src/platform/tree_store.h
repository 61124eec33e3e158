#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry_tree.h"
#include "ports/registry_store.h"

namespace morvelle {

/// winerror.h: the handle's key was deleted.
inline constexpr RegistryStatus kStatusKeyDeleted = 1018;
/// winerror.h: the write did not reach the disk.
inline constexpr RegistryStatus kStatusWriteFailed = 1016;
/// winerror.h: a name or path that no key can have.
inline constexpr RegistryStatus kStatusInvalidParameter = 87;

/// A registry held as a tree in memory. What becomes of a finished batch is the matter of the
/// stores made of it: a file format reads into the tree and writes it out again.
class TreeStore : public RegistryStore {
 public:
  TreeStore() = default;

  RegistryStatus OpenKey(std::string_view path, KeyAccess access, KeyHandle& handle) override;
  RegistryStatus CreateKey(std::string_view path, KeyHandle& handle) override;
  RegistryStatus CloseKey(KeyHandle handle) override;
  RegistryStatus DescribeValue(KeyHandle key, std::string_view name, ValueKind& kind,
                               std::uint32_t& size) override;
  RegistryStatus ReadValue(KeyHandle key, std::string_view name, std::string& data) override;
  RegistryStatus SetValue(KeyHandle key, std::string_view name, ValueKind kind,
                          std::string_view data) override;
  RegistryStatus DeleteValue(KeyHandle key, std::string_view name) override;
  RegistryStatus EnumKey(KeyHandle key, std::uint32_t index, std::string& name) override;
  RegistryStatus DeleteKey(std::string_view path) override;
  RegistryStatus RenameSubkeys(std::string_view path, std::span<const KeyRename> renames,
                               std::span<const std::string_view> known) override;

  bool WriteNewKeys(std::string_view path, std::span<const NewKey> keys) override;
  [[nodiscard]] std::optional<std::uint64_t> ChangeMark(std::string_view path) override;

  void BeginBatch() override;
  CommitOutcome CommitBatch(bool overwriteChanged) override;
  void AbandonBatch() override;
  bool ReadAgain() override;
  [[nodiscard]] std::string LastError() const override { return lastError_; }

 protected:
  /// Brings the changed tree to where it is kept. When that fails, `error` is the message.
  virtual CommitOutcome WriteOut(bool overwriteChanged, std::string& error);

  /// Reads what is kept into the tree, which is empty. When that fails, `error` is the message.
  virtual bool Read(std::string& error);

  [[nodiscard]] RegistryTree& Tree() { return held_->tree; }
  /// To be called once the tree is filled and before the first operation.
  void UseRoot();
  /// The key of a path under HKEY_CURRENT_USER; null when there is none.
  [[nodiscard]] RegistryKey* KeyAt(std::string_view path);
  /// The path of a key as KeyAt takes it; empty when it is not under HKEY_CURRENT_USER.
  [[nodiscard]] std::string PathBelowRoot(const RegistryKey& key) const;

 private:
  struct OpenedKey {
    RegistryKey* key = nullptr;  ///< Null while the handle is free.
    KeyAccess access = KeyAccess::ReadWrite;
    bool deleted = false;
  };

  void Fill(RegistryKey& key, std::span<const NewValue> values);
  KeyHandle Give(RegistryKey& key, KeyAccess access);
  RegistryStatus KeyOf(KeyHandle handle, KeyAccess wanted, RegistryKey*& key) const;
  RegistryStatus ValueOf(KeyHandle handle, std::string_view name, const RegistryEntry*& value);
  /// A value name as UTF-16; good until the next call.
  std::u16string_view Wide(std::string_view name);
  /// As Wide, for a path. `shared` is how much it has in common with the path before.
  std::u16string_view WidePath(std::string_view path, std::size_t& shared);
  /// Runs one write: in the open batch, or as a batch of its own.
  template <typename Write>
  RegistryStatus Written(Write&& write);
  void EndBatch(bool keep);

  struct Held {
    RegistryTree tree;
    PathCursor cursor{tree};
  };
  std::unique_ptr<Held> held_ = std::make_unique<Held>();
  RegistryKey* root_ = nullptr;
  std::vector<OpenedKey> opened_;
  std::vector<KeyHandle> freeHandles_;
  const RegistryKey* lastKey_ = nullptr;
  std::uint64_t lastMark_ = 0;
  std::string lastName_;
  const RegistryEntry* lastValue_ = nullptr;
  std::u16string wide_;
  std::string path_;
  std::u16string widePath_;
  std::string lastError_;
  bool inBatch_ = false;
};

}  // namespace morvelle
