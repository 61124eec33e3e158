#include "platform/tree_store.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr std::u16string_view kRootName = u"HKEY_CURRENT_USER";

bool IsText(std::uint32_t kind) {
  const auto known = static_cast<ValueKind>(kind);
  return known == ValueKind::String || known == ValueKind::ExpandString ||
         known == ValueKind::MultiString;
}

std::u16string_view Units(std::string_view bytes) {
  return {reinterpret_cast<const char16_t*>(bytes.data()), bytes.size() / sizeof(char16_t)};
}

/// A value as a program of the single-byte interface sees it.
std::string View(const RegistryEntry& value) {
  return IsText(value.kind) ? FromUtf16Lossy(Units(value.data)) : value.data;
}

std::string Stored(std::uint32_t kind, std::string_view data) {
  if (!IsText(kind)) return std::string(data);
  std::string wide(data.size() * sizeof(char16_t), '\0');
  char* to = wide.data();
  for (const char byte : data) {
    const char16_t unit = CodeUnitOf(byte);
    std::memcpy(to, &unit, sizeof unit);
    to += sizeof unit;
  }
  return wide;
}

}  // namespace

void TreeStore::UseRoot() {
  root_ = RegistryTree::Subkey(held_->tree.Top(), kRootName);
  if (root_ == nullptr) {
    root_ = &held_->tree.AddSubkey(held_->tree.Top(), kRootName, RegistryTree::Placing::Nowhere);
  }
}

RegistryKey* TreeStore::KeyAt(std::string_view path) {
  std::size_t shared = 0;
  const auto wide = WidePath(path, shared);
  return held_->cursor.Find(*root_, wide, shared);
}

std::string TreeStore::PathBelowRoot(const RegistryKey& key) const {
  const auto path = RegistryTree::PathOf(key);
  const auto root = RegistryTree::PathOf(*root_) + u'\\';
  return path.starts_with(root) ? FromUtf16Lossy(path.substr(root.size())) : std::string();
}

RegistryStatus TreeStore::OpenKey(std::string_view path, KeyAccess access, KeyHandle& handle) {
  RegistryKey* key = KeyAt(path);
  if (key == nullptr) return kStatusNotFound;
  handle = Give(*key, access);
  return kStatusSuccess;
}

RegistryStatus TreeStore::CreateKey(std::string_view path, KeyHandle& handle) {
  return Written([&] {
    std::size_t shared = 0;
    const auto wide = WidePath(path, shared);
    RegistryKey* key = held_->cursor.Create(*root_, wide, RegistryTree::Placing::InOrder);
    if (key == nullptr) return kStatusInvalidParameter;
    handle = Give(*key, KeyAccess::ReadWrite);
    return kStatusSuccess;
  });
}

RegistryStatus TreeStore::CloseKey(KeyHandle handle) {
  if (handle == 0 || handle > opened_.size()) return kStatusInvalidHandle;
  OpenedKey& opened = opened_[handle - 1];
  if (opened.key == nullptr && !opened.deleted) return kStatusInvalidHandle;
  opened = {};
  freeHandles_.push_back(handle);
  return kStatusSuccess;
}

RegistryStatus TreeStore::DescribeValue(KeyHandle key, std::string_view name, ValueKind& kind,
                                        std::uint32_t& size) {
  const RegistryEntry* value = nullptr;
  if (const auto status = ValueOf(key, name, value); status != kStatusSuccess) return status;
  kind = static_cast<ValueKind>(value->kind);
  const auto bytes =
      IsText(value->kind) ? value->data.size() / sizeof(char16_t) : value->data.size();
  size = static_cast<std::uint32_t>(bytes);
  return kStatusSuccess;
}

RegistryStatus TreeStore::ReadValue(KeyHandle key, std::string_view name, std::string& data) {
  const RegistryEntry* value = nullptr;
  if (const auto status = ValueOf(key, name, value); status != kStatusSuccess) return status;
  data = View(*value);
  return kStatusSuccess;
}

RegistryStatus TreeStore::SetValue(KeyHandle handle, std::string_view name, ValueKind kind,
                                   std::string_view data) {
  RegistryKey* key = nullptr;
  const auto status = KeyOf(handle, KeyAccess::ReadWrite, key);
  if (status != kStatusSuccess) return status;
  const auto code = static_cast<std::uint32_t>(kind);
  return Written([&] {
    const RegistryEntry* present = RegistryTree::FindValue(*key, Wide(name));
    if (present == nullptr || present->kind != code || View(*present) != data) {
      held_->tree.SetValue(*key, wide_, code, Stored(code, data));
    }
    return kStatusSuccess;
  });
}

RegistryStatus TreeStore::DeleteValue(KeyHandle handle, std::string_view name) {
  RegistryKey* key = nullptr;
  const auto status = KeyOf(handle, KeyAccess::ReadWrite, key);
  if (status != kStatusSuccess) return status;
  return Written([&] {
    const RegistryEntry* value = RegistryTree::FindValue(*key, Wide(name));
    if (value == nullptr) return kStatusNotFound;
    held_->tree.DeleteValue(*key, *value);
    return kStatusSuccess;
  });
}

RegistryStatus TreeStore::EnumKey(KeyHandle handle, std::uint32_t index, std::string& name) {
  RegistryKey* key = nullptr;
  const auto status = KeyOf(handle, KeyAccess::EnumerateSubkeys, key);
  if (status != kStatusSuccess) return status;
  if (index >= key->subkeys.size()) return kStatusNoMoreItems;
  name = FromUtf16Lossy(key->subkeys[index]->name->text);
  return kStatusSuccess;
}

RegistryStatus TreeStore::DeleteKey(std::string_view path) {
  return Written([&] {
    RegistryKey* key = KeyAt(path);
    if (key == nullptr) return kStatusNotFound;
    if (key == root_ || !key->subkeys.empty()) return kStatusAccessDenied;
    held_->tree.Delete(*key);
    return kStatusSuccess;
  });
}

RegistryStatus TreeStore::RenameSubkeys(std::string_view path, std::span<const KeyRename> renames,
                                        std::span<const std::string_view> /*known*/) {
  return Written([&] {
    RegistryKey* parent = KeyAt(path);
    if (parent == nullptr) return kStatusNotFound;
    std::vector<RegistryTree::Renaming> renamings;
    for (const auto& rename : renames) {
      RegistryKey* subkey = held_->tree.Subkey(*parent, Wide(rename.from));
      if (subkey == nullptr) return kStatusNotFound;
      renamings.push_back({subkey, nullptr});
    }
    for (std::size_t i = 0; i < renamings.size(); ++i) {
      RegistryKey* present = held_->tree.Subkey(*parent, Wide(renames[i].to));
      const bool isRenamed =
          std::any_of(renamings.begin(), renamings.end(),
                      [&](const auto& renaming) { return renaming.subkey == present; });
      if (present != nullptr && !isRenamed) held_->tree.Delete(*present);
      renamings[i].name = held_->tree.Names().Intern(wide_);
    }
    held_->tree.Rename(*parent, renamings);
    return kStatusSuccess;
  });
}

bool TreeStore::WriteNewKeys(std::string_view path, std::span<const NewKey> keys) {
  if (!inBatch_) return false;
  std::size_t shared = 0;
  const auto wide = WidePath(path, shared);
  if (held_->cursor.Find(*root_, wide, shared) != nullptr) return false;
  RegistryKey* made = held_->cursor.Extend(*root_, wide, RegistryTree::Placing::InOrder);
  if (made == nullptr) return false;
  for (const auto& [below, values] : keys) {
    RegistryKey* key = made;
    std::size_t at = 0;
    const auto names = Wide(below);
    for (auto name = PathCursor::NextName(names, at); !name.empty();
         name = PathCursor::NextName(names, at)) {
      RegistryKey* known = RegistryTree::Subkey(*key, name);
      key = known != nullptr ? known
                             : &held_->tree.AddSubkey(*key, name, RegistryTree::Placing::InOrder);
    }
    Fill(*key, values);
  }
  return true;
}

void TreeStore::Fill(RegistryKey& key, std::span<const NewValue> values) {
  key.entries.reserve(values.size());
  for (const auto& value : values) {
    const auto kind = static_cast<std::uint32_t>(value.kind);
    held_->tree.SetValue(key, held_->tree.Names().Intern(value.name), kind,
                         Stored(kind, value.data));
  }
}

std::optional<std::uint64_t> TreeStore::ChangeMark(std::string_view path) {
  const RegistryKey* key = KeyAt(path);
  if (key == nullptr) return std::nullopt;
  return held_->tree.MarkOf(*key);
}

void TreeStore::BeginBatch() {
  inBatch_ = true;
  held_->tree.StartBatch();
}

CommitOutcome TreeStore::CommitBatch(bool overwriteChanged) {
  if (!inBatch_) return CommitOutcome::Done;
  lastError_.clear();
  const auto outcome =
      held_->tree.Changed() ? WriteOut(overwriteChanged, lastError_) : CommitOutcome::Done;
  if (outcome != CommitOutcome::ChangedMeanwhile) EndBatch(outcome == CommitOutcome::Done);
  return outcome;
}

void TreeStore::AbandonBatch() {
  if (inBatch_) EndBatch(false);
}

bool TreeStore::ReadAgain() {
  AbandonBatch();
  const auto mark = Tree().LastMark();
  held_ = std::make_unique<Held>();
  Tree().StartMarksBehind(mark);
  for (OpenedKey& opened : opened_) {
    opened.deleted = opened.deleted || opened.key != nullptr;
    opened.key = nullptr;
  }
  lastKey_ = nullptr;
  lastValue_ = nullptr;
  path_.clear();
  widePath_.clear();
  lastError_.clear();
  const bool read = Read(lastError_);
  UseRoot();
  return read;
}

bool TreeStore::Read([[maybe_unused]] std::string& error) { return true; }

CommitOutcome TreeStore::WriteOut([[maybe_unused]] bool overwriteChanged,
                                  [[maybe_unused]] std::string& error) {
  return CommitOutcome::Done;
}

KeyHandle TreeStore::Give(RegistryKey& key, KeyAccess access) {
  if (freeHandles_.empty()) {
    opened_.push_back({&key, access});
    return static_cast<KeyHandle>(opened_.size());
  }
  const KeyHandle handle = freeHandles_.back();
  freeHandles_.pop_back();
  opened_[handle - 1] = {&key, access};
  return handle;
}

RegistryStatus TreeStore::KeyOf(KeyHandle handle, KeyAccess wanted, RegistryKey*& key) const {
  if (handle == 0 || handle > opened_.size()) return kStatusInvalidHandle;
  const OpenedKey& opened = opened_[handle - 1];
  if (opened.deleted) return kStatusKeyDeleted;
  if (opened.key == nullptr) return kStatusInvalidHandle;
  if (opened.key->gone) return kStatusKeyDeleted;
  if (opened.access != KeyAccess::ReadWrite && opened.access != wanted) {
    return kStatusAccessDenied;
  }
  key = opened.key;
  return kStatusSuccess;
}

RegistryStatus TreeStore::ValueOf(KeyHandle handle, std::string_view name,
                                  const RegistryEntry*& value) {
  RegistryKey* key = nullptr;
  const auto status = KeyOf(handle, KeyAccess::ReadWrite, key);
  if (status != kStatusSuccess) return status;
  // A value is described and then read: the second look finds it where the first one did.
  const auto mark = held_->tree.MarkOf(*key);
  if (key != lastKey_ || mark != lastMark_ || name != lastName_) {
    lastKey_ = key;
    lastMark_ = mark;
    lastName_ = name;
    lastValue_ = RegistryTree::FindValue(*key, Wide(name));
  }
  value = lastValue_;
  return value == nullptr ? kStatusNotFound : kStatusSuccess;
}

std::u16string_view TreeStore::Wide(std::string_view name) {
  wide_.resize(name.size());
  std::transform(name.begin(), name.end(), wide_.begin(), CodeUnitOf);
  return wide_;
}

std::u16string_view TreeStore::WidePath(std::string_view path, std::size_t& shared) {
  shared = SharedLength(path, std::string_view(path_));
  const auto rest = path.substr(shared);
  path_.replace(shared, path_.size() - shared, rest);
  widePath_.resize(path.size());
  std::transform(rest.begin(), rest.end(), widePath_.begin() + static_cast<std::ptrdiff_t>(shared),
                 CodeUnitOf);
  return widePath_;
}

template <typename Write>
RegistryStatus TreeStore::Written(Write&& write) {
  if (inBatch_) return std::forward<Write>(write)();
  TreeStore::BeginBatch();
  const RegistryStatus status = std::forward<Write>(write)();
  switch (TreeStore::CommitBatch(false)) {
    case CommitOutcome::Done:
      return status;
    case CommitOutcome::ChangedMeanwhile:
      EndBatch(false);
      break;
    case CommitOutcome::Failed:
      break;
  }
  return kStatusWriteFailed;
}

void TreeStore::EndBatch(bool keep) {
  inBatch_ = false;
  if (keep) {
    held_->tree.Keep();
  } else {
    held_->tree.Undo();
  }
  // A handle outlives its key; it must not point to what is let go of now.
  if (!held_->tree.HasDead()) return;
  for (OpenedKey& opened : opened_) {
    if (opened.key == nullptr || !opened.key->gone) continue;
    opened.key = nullptr;
    opened.deleted = true;
  }
  held_->tree.Bury();
}

}  // namespace morvelle
