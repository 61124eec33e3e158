#include "platform/subkey_renames.h"

#include <algorithm>
#include <utility>

#include "app/messages/text.h"

namespace morvelle {

namespace {

std::string Below(std::string path, const std::string& name) {
  path += '\\';
  path += name;
  return path;
}

/// A handle that is closed at the end.
class ScopedKey {
 public:
  explicit ScopedKey(RegistryStore& store) : store_(store) {}
  ScopedKey(const ScopedKey&) = delete;
  ScopedKey& operator=(const ScopedKey&) = delete;
  ~ScopedKey() {
    if (handle != 0) store_.CloseKey(handle);
  }
  KeyHandle handle = 0;

 private:
  RegistryStore& store_;
};

}  // namespace

RegistryStatus SubkeyRenames::Run(std::span<const KeyRename> renames) {
  auto status = FindAll(renames);
  while (status == kStatusSuccess && !pending_.empty()) {
    // One whose new name nobody waits to leave; where all wait in a ring, one steps aside.
    auto next = std::find_if(pending_.begin(), pending_.end(), [&](const KeyRename& rename) {
      return std::none_of(pending_.begin(), pending_.end(), [&](const KeyRename& other) {
        return EqualIgnoringCase(other.from, rename.to);
      });
    });
    if (next == pending_.end()) {
      const auto aside = FreeName();
      status = Move(pending_.front().from, aside);
      pending_.front().from = aside;
    } else {
      status = Move(next->from, next->to);
      pending_.erase(next);
    }
  }
  if (status != kStatusSuccess) GoBack();
  return status;
}

void SubkeyRenames::GoBack() {
  auto moves = std::move(done_);
  done_.clear();
  std::reverse(moves.begin(), moves.end());
  for (const auto& move : moves) {
    // The next step back would overwrite what could not step back.
    if (Move(move.to, move.from) != kStatusSuccess) return;
  }
}

RegistryStatus SubkeyRenames::FindAll(std::span<const KeyRename> renames) {
  for (const auto& rename : renames) {
    ScopedKey key(store_);
    const auto status = store_.OpenKey(PathOf(rename.from), KeyAccess::ReadWrite, key.handle);
    if (status != kStatusSuccess) return status;
    if (rename.from != rename.to) pending_.push_back(rename);
  }
  return kStatusSuccess;
}

RegistryStatus SubkeyRenames::Move(const std::string& from, const std::string& to) {
  auto status = DeleteTree(PathOf(to));
  if (status != kStatusSuccess && status != kStatusNotFound) return status;
  status = CopyTree(PathOf(from), PathOf(to));
  if (status != kStatusSuccess) {
    // Half a rule would be read as a damaged one; the whole one is still there.
    DeleteTree(PathOf(to));
    return status;
  }
  done_.push_back({from, to});
  return DeleteTree(PathOf(from));
}

RegistryStatus SubkeyRenames::CopyTree(const std::string& from, const std::string& to) {
  ScopedKey source(store_);
  ScopedKey target(store_);
  auto status = store_.OpenKey(from, KeyAccess::ReadWrite, source.handle);
  if (status == kStatusSuccess) status = store_.CreateKey(to, target.handle);
  if (status == kStatusSuccess) status = CopyValues(source.handle, target.handle);
  std::string name;
  for (std::uint32_t i = 0; status == kStatusSuccess; ++i) {
    status = store_.EnumKey(source.handle, i, name);
    if (status == kStatusNoMoreItems) return kStatusSuccess;
    if (status == kStatusSuccess) status = CopyTree(Below(from, name), Below(to, name));
  }
  return status;
}

RegistryStatus SubkeyRenames::CopyValues(KeyHandle from, KeyHandle to) {
  for (const auto name : known_) {
    ValueKind kind{};
    std::uint32_t size = 0;
    std::string data;
    auto status = store_.DescribeValue(from, name, kind, size);
    if (status == kStatusNotFound) continue;
    if (status == kStatusSuccess) status = store_.ReadValue(from, name, data);
    if (status == kStatusSuccess) status = store_.SetValue(to, name, kind, data);
    if (status != kStatusSuccess) return status;
  }
  return kStatusSuccess;
}

RegistryStatus SubkeyRenames::DeleteTree(const std::string& path) {
  {
    ScopedKey key(store_);
    auto status = store_.OpenKey(path, KeyAccess::ReadWrite, key.handle);
    if (status != kStatusSuccess) return status;
    std::string name;
    while ((status = store_.EnumKey(key.handle, 0, name)) == kStatusSuccess) {
      // What stays would be met again for ever: a subkey's failure ends the loop.
      status = DeleteTree(Below(path, name));
      // Deleted meanwhile, or its name has letters that the code page lacks: the key, which is
      // refused while it holds one, tells which.
      if (status == kStatusNotFound) break;
      if (status != kStatusSuccess) return status;
    }
    if (status != kStatusNoMoreItems && status != kStatusNotFound) return status;
  }
  return store_.DeleteKey(path);
}

std::string SubkeyRenames::FreeName() {
  // Not three hexadecimal digits: nothing takes it for an entry of its own.
  for (int number = 1;; ++number) {
    auto name = "Morvelle " + std::to_string(number);
    ScopedKey key(store_);
    if (store_.OpenKey(PathOf(name), KeyAccess::ReadWrite, key.handle) == kStatusNotFound) {
      return name;
    }
  }
}

}  // namespace morvelle
