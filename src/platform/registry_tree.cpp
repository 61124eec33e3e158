#include "platform/registry_tree.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/messages/text.h"
#include "platform/unicode.h"

namespace morvelle {

namespace {

std::u16string Folded(std::u16string_view text) {
  std::u16string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), UpperCase);
  return folded;
}

/// A text folded without use of the heap, as long as it is no longer than names mostly are.
class ShortFold {
 public:
  explicit ShortFold(std::u16string_view text) : size_(text.size()) {
    char16_t* to = near_.data();
    if (size_ > near_.size()) {
      far_.resize(size_);
      to = far_.data();
    }
    std::transform(text.begin(), text.end(), to, UpperCase);
  }
  [[nodiscard]] std::u16string_view Text() const {
    return {size_ > near_.size() ? far_.data() : near_.data(), size_};
  }

 private:
  std::array<char16_t, 32> near_;  // Left as it is: only the first size_ units are ever read.
  std::u16string far_;
  std::size_t size_;
};

/// Position of a value (or of its deletion); the number of entries when there is none.
std::size_t Position(const RegistryKey& key, const RegistryName& name) {
  std::size_t at = 0;
  while (at < key.entries.size() &&
         (key.entries[at].name == nullptr || key.entries[at].name->folded != name.folded)) {
    ++at;
  }
  return at;
}

/// The same for a name that no key may carry yet.
std::size_t Position(const RegistryKey& key, std::u16string_view folded) {
  std::size_t at = 0;
  while (at < key.entries.size() &&
         (key.entries[at].name == nullptr || key.entries[at].name->folded->text != folded)) {
    ++at;
  }
  return at;
}

auto SubkeyPlace(const RegistryKey& key, std::u16string_view folded) {
  // Keys mostly come in order.
  if (!key.subkeys.empty() && key.subkeys.back()->name->folded->text < folded) {
    return key.subkeys.end();
  }
  return std::lower_bound(key.subkeys.begin(), key.subkeys.end(), folded,
                          [](const std::unique_ptr<RegistryKey>& subkey, std::u16string_view text) {
                            return subkey->name->folded->text < text;
                          });
}

bool IsUnder(const FilePlace& place, const RegistryKey& key) {
  if (place.role != FilePlace::Role::Key) return false;
  const auto* ancestor = static_cast<const RegistryKey*>(&place)->parent;
  while (ancestor != nullptr && ancestor != &key) ancestor = ancestor->parent;
  return ancestor != nullptr;
}

void ForgetDeletionsBelow(RegistryKey& key) {
  key.replaced = false;
  for (const auto& subkey : key.subkeys) ForgetDeletionsBelow(*subkey);
}

void SetGone(RegistryKey& key, bool gone) {
  key.gone = gone;
  for (const auto& subkey : key.subkeys) SetGone(*subkey, gone);
}

}  // namespace

template <typename Text>
std::size_t NameTable::RecentSlot(const Text& text) {
  if (text.empty()) return 0;
  const auto weigh = [](auto unit, std::size_t weight) {
    if constexpr (sizeof unit == 1) return CodeUnitOf(unit) * weight;
    return static_cast<char16_t>(unit) * weight;
  };
  return (text.size() * 7 + weigh(text.front(), 71) + weigh(text[text.size() / 2], 13) +
          weigh(text.back(), 1)) %
         kRecent;
}

const RegistryName* NameTable::Intern(std::u16string_view text) {
  const RegistryName*& recent = recent_[RecentSlot(text)];
  if (recent == nullptr || recent->text != text) recent = InternNew(text);
  return recent;
}

const RegistryName* NameTable::Intern(std::string_view text) {
  const RegistryName* recent = recent_[RecentSlot(text)];
  const auto isSame = [](char16_t unit, char character) { return unit == CodeUnitOf(character); };
  const bool known = recent != nullptr && std::equal(recent->text.begin(), recent->text.end(),
                                                     text.begin(), text.end(), isSame);
  return known ? recent : Intern(ToUtf16(text));
}

const RegistryName* NameTable::InternNew(std::u16string_view text) {
  if (const auto known = names_.find(text); known != names_.end()) return &*known;
  const std::u16string folded = Folded(text);
  const RegistryName* upper = text == folded ? nullptr : InternNew(folded);
  const auto added = names_.insert(RegistryName{std::u16string(text), upper}).first;
  // The hash covers the text only, so that an element may learn that it is its own folded name.
  if (upper == nullptr) const_cast<RegistryName&>(*added).folded = &*added;  // NOLINT
  return &*added;
}

RegistryTree::RegistryTree() {
  ends_.previous = ends_.next = &ends_;
  top_.name = names_.Intern(std::u16string_view());
}

RegistryKey* RegistryTree::Subkey(const RegistryKey& key, std::u16string_view name) {
  const ShortFold folded(name);
  const auto end = key.subkeys.end();
  const auto isIt = [&](const auto& place) {
    return place != end && (*place)->name->folded->text == folded.Text();
  };
  auto at =
      key.subkeys.begin() + static_cast<std::ptrdiff_t>(std::min(key.looked, key.subkeys.size()));
  if (!isIt(at) && (at == end || !isIt(++at))) at = SubkeyPlace(key, folded.Text());
  if (!isIt(at)) return nullptr;
  key.looked = static_cast<std::size_t>(at - key.subkeys.begin());
  return at->get();
}

RegistryKey& RegistryTree::AddSubkey(RegistryKey& parent, std::u16string_view name,
                                     Placing placing) {
  auto made = std::make_unique<RegistryKey>();
  RegistryKey& key = *made;
  key.parent = &parent;
  key.name = names_.Intern(name);
  if (recording_) key.bornIn = batch_;
  parent.subkeys.insert(SubkeyPlace(parent, key.name->folded->text), std::move(made));
  Mark(key);
  // What stands under a key of this batch goes with that key.
  if (IsUndone(parent)) {
    Record([this, &key] {
      auto& siblings = key.parent->subkeys;
      const auto at =
          siblings.begin() + (SubkeyPlace(*key.parent, key.name->folded->text) - siblings.cbegin());
      SetGone(key, true);
      dead_.push_back(std::move(*at));
      siblings.erase(at);
    });
  }
  if (!deletions_.empty()) TakeBackDeletion(key);
  if (placing == Placing::InOrder) Link(key, PlaceInOrder(key));
  return key;
}

void RegistryTree::ListAtEnd(RegistryKey& key) {
  if (!key.Listed()) Link(key, *ends_.previous);
}

void RegistryTree::Delete(RegistryKey& key) {
  RegistryKey& parent = *key.parent;
  // A parent that was there for this key's sake only must not vanish with it.
  if (!parent.Listed() && parent.parent != nullptr && parent.parent != &top_) {
    ListBeforeSubkeys(parent);
  }
  Mark(parent);
  UnlistAll(key);
  SetGone(key, true);
  ++generation_;
  auto& siblings = parent.subkeys;
  const auto at =
      siblings.begin() + (SubkeyPlace(parent, key.name->folded->text) - siblings.cbegin());
  if (recording_) removed_.push_back(std::move(*at));
  siblings.erase(at);
  Record([this, &parent] {
    auto& back = removed_.back();
    SetGone(*back, false);
    parent.subkeys.insert(SubkeyPlace(parent, back->name->folded->text), std::move(back));
    removed_.pop_back();
  });
}

void RegistryTree::Rename(RegistryKey& parent, const std::vector<Renaming>& renamings) {
  ++generation_;
  std::vector<std::unique_ptr<RegistryKey>> taken;
  std::vector<Renaming> before;
  auto& siblings = parent.subkeys;
  for (const auto& [subkey, name] : renamings) {
    const auto at =
        siblings.begin() + (SubkeyPlace(parent, subkey->name->folded->text) - siblings.cbegin());
    before.push_back({subkey, subkey->name});
    taken.push_back(std::move(*at));
    siblings.erase(at);
    subkey->name = name;
    Mark(*subkey);
  }
  for (auto& subkey : taken) {
    siblings.insert(SubkeyPlace(parent, subkey->name->folded->text), std::move(subkey));
  }
  Record([this, &parent, names = std::move(before)] { Rename(parent, names); });
}

std::u16string RegistryTree::PathOf(const RegistryKey& key) {
  std::vector<const RegistryKey*> line;
  for (const auto* step = &key; step->parent != nullptr; step = step->parent) line.push_back(step);
  std::u16string path;
  std::reverse(line.begin(), line.end());
  for (const auto* step : line) {
    if (!path.empty()) path += u'\\';
    path += step->name->text;
  }
  return path;
}

const RegistryEntry* RegistryTree::FindValue(const RegistryKey& key, std::u16string_view name) {
  const auto position = Position(key, ShortFold(name).Text());
  if (position == key.entries.size()) return nullptr;
  const auto& entry = key.entries[position];
  const bool isValue =
      entry.role == RegistryEntry::Role::Value || entry.role == RegistryEntry::Role::CutValue;
  return isValue ? &entry : nullptr;
}

void RegistryTree::SetValue(RegistryKey& key, const RegistryName* name, std::uint32_t kind,
                            std::string data) {
  Mark(key);
  if (!key.Listed()) ListBeforeSubkeys(key);
  const std::size_t at = Position(key, *name);
  if (at == key.entries.size()) {
    key.entries.push_back({name, kind, RegistryEntry::Role::Value, std::move(data)});
    if (IsUndone(key)) Record([&key] { key.entries.pop_back(); });
    return;
  }
  RegistryEntry& entry = key.entries[at];
  if (IsUndone(key)) Record([&key, at, before = entry] { key.entries[at] = before; });
  entry.kind = kind;
  entry.role = RegistryEntry::Role::Value;
  entry.data = std::move(data);
}

void RegistryTree::DeleteValue(RegistryKey& key, const RegistryEntry& value) {
  Mark(key);
  const auto at = &value - key.entries.data();
  if (IsUndone(key)) {
    Record([&key, at, before = value] { key.entries.insert(key.entries.begin() + at, before); });
  }
  key.entries.erase(key.entries.begin() + at);
}

void RegistryTree::AddRemark(std::u16string_view text) {
  AddLine(FilePlace::Role::Remark, text, *ends_.previous);
}

void RegistryTree::AddRemarkInFront(std::u16string_view text) {
  AddLine(FilePlace::Role::Remark, text, ends_);
}

void RegistryTree::ForgetDeletions(RegistryKey& key) {
  for (auto* above = key.parent; above != nullptr; above = above->parent) above->replaced = false;
  ForgetDeletionsBelow(key);
}

void RegistryTree::AddDeletion(std::u16string_view path) { PutDeletion(path, *ends_.previous); }

void RegistryTree::Undo() {
  recording_ = false;
  ++generation_;
  if (!undo_.empty()) undoMark_ = ++lastMark_;
  while (!undo_.empty()) {
    const auto undo = std::move(undo_.back());
    undo_.pop_back();
    undo();
  }
}

void RegistryTree::Keep() {
  recording_ = false;
  undo_.clear();
  std::move(removed_.begin(), removed_.end(), std::back_inserter(dead_));
  removed_.clear();
}

void RegistryTree::Mark(RegistryKey& key) {
  ++lastMark_;
  for (auto* step = &key; step != nullptr; step = step->parent) step->mark = lastMark_;
}

void RegistryTree::Record(std::function<void()> undo) {
  if (recording_) undo_.push_back(std::move(undo));
}

void RegistryTree::Link(FilePlace& place, FilePlace& after) {
  place.previous = &after;
  place.next = after.next;
  after.next->previous = &place;
  after.next = &place;
  Record([this, &place] { Unlink(place); });
}

void RegistryTree::Unlink(FilePlace& place) {
  FilePlace& before = *place.previous;
  before.next = place.next;
  place.next->previous = &before;
  place.previous = place.next = nullptr;
  Record([this, &place, &before] { Link(place, before); });
}

void RegistryTree::ListBeforeSubkeys(RegistryKey& key) {
  FilePlace* place = ends_.next;
  while (place != &ends_ && !IsUnder(*place, key)) place = place->next;
  Link(key, *place->previous);
}

void RegistryTree::UnlistAll(RegistryKey& key) {
  for (const auto& subkey : key.subkeys) UnlistAll(*subkey);
  FilePlace& before = key.Listed() ? *key.previous : *ends_.previous;
  if (key.Listed()) Unlink(key);
  // Who imports the file must still lose what it asked to delete.
  if (key.replaced) PutDeletion(PathOf(key), before);
}

FilePlace& RegistryTree::PlaceInOrder(const RegistryKey& key) {
  const auto& siblings = key.parent->subkeys;
  const auto at = siblings.back().get() == &key ? siblings.end() - 1
                                                : SubkeyPlace(*key.parent, key.name->folded->text);
  FilePlace* place = key.parent->Listed() ? key.parent : ends_.previous;
  if (at == siblings.begin()) return *place;
  RegistryKey& before = **(at - 1);
  if (!before.Listed()) return *ends_.previous;
  place = &before;
  while (IsUnder(*place->next, before)) place = place->next;
  return *place;
}

void RegistryTree::TakeBackDeletion(RegistryKey& key) {
  const auto found = deletions_.find(Folded(PathOf(key)));
  if (found == deletions_.end()) return;
  Unlink(*found->second);
  Record([this, path = found->first, line = found->second] { deletions_[path] = line; });
  deletions_.erase(found);
  key.replaced = true;
}

void RegistryTree::PutDeletion(std::u16string_view path, FilePlace& after) {
  const auto [place, isNew] = deletions_.try_emplace(Folded(path), nullptr);
  if (!isNew) return;
  place->second = &AddLine(FilePlace::Role::Deletion, path, after);
  Record([this, folded = place->first] { deletions_.erase(folded); });
}

FileLine& RegistryTree::AddLine(FilePlace::Role role, std::u16string_view text, FilePlace& after) {
  FileLine& line = *lines_.emplace_back(std::make_unique<FileLine>(role, text));
  Link(line, after);
  return line;
}

RegistryKey* PathCursor::Find(RegistryKey& from, std::u16string_view path, std::size_t shared) {
  KeepShared(path, shared);
  std::size_t at = steps_.empty() ? 0 : steps_.back().end;
  for (auto name = NextName(path, at); !name.empty(); name = NextName(path, at)) {
    RegistryKey* key = tree_.Subkey(Last(from), name);
    if (key == nullptr) return nullptr;
    steps_.push_back({at, key});
  }
  return &Last(from);
}

RegistryKey* PathCursor::Create(RegistryKey& from, std::u16string_view path,
                                RegistryTree::Placing placing) {
  RegistryKey* key = Find(from, path);
  return key != nullptr ? key : Extend(from, path, placing);
}

RegistryKey* PathCursor::Extend(RegistryKey& from, std::u16string_view path,
                                RegistryTree::Placing placing) {
  const std::size_t start = steps_.empty() ? 0 : steps_.back().end;
  std::size_t level = steps_.size();
  std::size_t at = start;
  for (auto name = NextName(path, at); !name.empty(); name = NextName(path, at)) {
    if (name.size() > RegistryTree::kLongestKeyName) return nullptr;
    if (++level > RegistryTree::kDeepestLevel) return nullptr;
  }
  at = start;
  for (auto name = NextName(path, at); !name.empty(); name = NextName(path, at)) {
    steps_.push_back({at, &tree_.AddSubkey(Last(from), name, placing)});
  }
  return &Last(from);
}

void PathCursor::KeepShared(std::u16string_view path, std::size_t shared) {
  if (generation_ != tree_.Generation()) {
    steps_.clear();
    generation_ = tree_.Generation();
  }
  shared = SharedLength(path, std::u16string_view(path_), shared);
  // A step counts only when the path ends there or goes on with a "\".
  while (!steps_.empty() && (steps_.back().end > shared || (steps_.back().end < path.size() &&
                                                            path[steps_.back().end] != u'\\'))) {
    steps_.pop_back();
  }
  path_.replace(shared, path_.size() - shared, path.substr(shared));
}

std::u16string_view PathCursor::NextName(std::u16string_view path, std::size_t& at) {
  while (at < path.size() && path[at] == u'\\') ++at;
  const std::size_t start = at;
  at = std::min(path.find(u'\\', at), path.size());
  return path.substr(start, at - start);
}

}  // namespace morvelle
