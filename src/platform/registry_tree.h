#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace morvelle {

/// How many characters two texts share at their start.
template <typename Char>
std::size_t SharedLength(std::basic_string_view<Char> left, std::basic_string_view<Char> right,
                         std::size_t known = 0) {
  constexpr std::size_t kStride = 16;  // Compared at once: long shared starts are the rule.
  const std::size_t limit = std::min(left.size(), right.size());
  std::size_t at = known;
  while (at + kStride <= limit && std::memcmp(&left[at], &right[at], kStride * sizeof(Char)) == 0) {
    at += kStride;
  }
  while (at < limit && left[at] == right[at]) ++at;
  return at;
}

/// A name of keys or values as one file spells it, kept once however many keys carry it. Two names
/// are the same to the registry when their `folded` is the same object.
struct RegistryName {
  std::u16string text;
  const RegistryName* folded = nullptr;  ///< The name in upper case; itself when it is that.
};

class NameTable {
 public:
  NameTable() = default;
  NameTable(const NameTable&) = delete;
  NameTable& operator=(const NameTable&) = delete;

  const RegistryName* Intern(std::u16string_view text);
  /// The same for a text of the code page.
  const RegistryName* Intern(std::string_view text);

 private:
  const RegistryName* InternNew(std::u16string_view text);
  /// Where a name is among the recent ones, if it is there.
  template <typename Text>
  static std::size_t RecentSlot(const Text& text);

  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const {
      return std::hash<std::u16string_view>{}(text);
    }
    std::size_t operator()(const RegistryName& name) const { return (*this)(name.text); }
  };
  struct Same {
    using is_transparent = void;
    static std::u16string_view Text(std::u16string_view text) { return text; }
    static std::u16string_view Text(const RegistryName& name) { return name.text; }
    template <typename Left, typename Right>
    bool operator()(const Left& left, const Right& right) const {
      return Text(left) == Text(right);
    }
  };

  /// The few names that nearly all values carry, found without the set.
  static constexpr std::size_t kRecent = 1024;

  std::unordered_set<RegistryName, Hash, Same> names_;
  std::array<const RegistryName*, kRecent> recent_{};
};

/// What stands under a key, in the order of its file: its values, and what an exchange file says
/// beside them.
struct RegistryEntry {
  enum class Role : std::uint8_t {
    Value,
    CutValue,  ///< A value of which the file may hold the beginning only.
    Deletion,  ///< The file asks for the deletion of the value of that name.
    Remark,    ///< A line that means nothing to the registry; its text is in `data`, UTF-16LE.
  };
  const RegistryName* name = nullptr;  ///< Null for a remark; the empty name is the default value.
  std::uint32_t kind = 0;              ///< Type code, any number.
  Role role = Role::Value;
  std::string data;  ///< As the registry stores it: strings are UTF-16LE with their final zero.
};

/// A place in the chain of what a file gives, in the order of the file. A key without a line of its
/// own (made because something under it is given) stands in no chain.
struct FilePlace {
  enum class Role : std::uint8_t { Key, Deletion, Remark, Ends };
  explicit FilePlace(Role placeRole) : role(placeRole) {}
  FilePlace(const FilePlace&) = delete;
  FilePlace& operator=(const FilePlace&) = delete;

  FilePlace* previous = nullptr;
  FilePlace* next = nullptr;
  Role role;
};

/// The deletion of a key that the file does not give again (`text` is its path), or a remark
/// between two keys.
struct FileLine : FilePlace {
  FileLine(Role placeRole, std::u16string_view lineText) : FilePlace(placeRole), text(lineText) {}
  std::u16string text;
};

struct RegistryKey : FilePlace {
  RegistryKey() : FilePlace(Role::Key) {}

  RegistryKey* parent = nullptr;
  const RegistryName* name = nullptr;
  std::vector<RegistryEntry> entries;
  std::vector<std::unique_ptr<RegistryKey>> subkeys;  ///< By folded name.
  /// Where the last look among the subkeys ended: the next one mostly wants the same or the next.
  mutable std::size_t looked = 0;
  std::uint64_t mark = 0;    ///< Of the last change here or below.
  std::uint64_t bornIn = 0;  ///< Number of the batch that made the key; 0 when none did.
  bool replaced = false;     ///< The file deletes the key before its first line.
  bool gone = false;         ///< Deleted, and kept only until the batch ends.

  [[nodiscard]] bool Listed() const { return previous != nullptr; }
};

/// Keys, values and all else that a registry file holds, from the roots (HKEY_CURRENT_USER …) down.
///
/// Names are UTF-16 with their letter case; keys compare without regard to it and their subkeys are
/// in that order, while the chain of places keeps the order of the file. Changes are recorded
/// between StartBatch and its end, so that they can be undone.
class RegistryTree {
 public:
  /// Limits of the Windows registry: characters of a key name, levels below a root.
  static constexpr std::size_t kLongestKeyName = 255;
  static constexpr std::size_t kDeepestLevel = 512;

  RegistryTree();
  RegistryTree(const RegistryTree&) = delete;
  RegistryTree& operator=(const RegistryTree&) = delete;

  [[nodiscard]] RegistryKey& Top() { return top_; }
  [[nodiscard]] NameTable& Names() { return names_; }
  /// First place of the chain; the last one's `next` has the role Ends.
  [[nodiscard]] const FilePlace* FirstPlace() const { return ends_.next; }

  /// The subkey of that name, null when there is none.
  [[nodiscard]] static RegistryKey* Subkey(const RegistryKey& key, std::u16string_view name);
  /// Where the new key stands in the chain.
  enum class Placing {
    Nowhere,  ///< In none yet: a key of a file that is being read, listed when its line comes.
    InOrder,  ///< Behind the sibling that comes before it by name, and what is under that.
  };
  /// Makes a subkey that is not there yet.
  RegistryKey& AddSubkey(RegistryKey& parent, std::u16string_view name, Placing placing);
  /// Gives a key its own line at the end of the chain, when it has none.
  void ListAtEnd(RegistryKey& key);
  /// Deletes a key with all that is under it.
  void Delete(RegistryKey& key);
  struct Renaming {
    RegistryKey* subkey;
    const RegistryName* name;
  };
  /// Gives subkeys of one key new names, all at once; no other subkey may bear one of them. Their
  /// lines stay where they are in the file.
  void Rename(RegistryKey& parent, const std::vector<Renaming>& renamings);
  /// The key's own path from the top, "HKEY_CURRENT_USER\…".
  [[nodiscard]] static std::u16string PathOf(const RegistryKey& key);

  /// The value of that name, null when there is none.
  [[nodiscard]] static const RegistryEntry* FindValue(const RegistryKey& key,
                                                      std::u16string_view name);
  void SetValue(RegistryKey& key, std::u16string_view name, std::uint32_t kind, std::string data) {
    SetValue(key, names_.Intern(name), kind, std::move(data));
  }
  /// As above, with a name of Names().
  void SetValue(RegistryKey& key, const RegistryName* name, std::uint32_t kind, std::string data);
  void DeleteValue(RegistryKey& key, const RegistryEntry& value);

  /// What a file says beside its keys and values; at the end of the chain.
  void AddRemark(std::u16string_view text);
  void AddRemarkInFront(std::u16string_view text);
  /// Takes from the file that it deletes the key, what is above it or what is below it, before it
  /// gives that again.
  static void ForgetDeletions(RegistryKey& key);
  /// Keeps the deletion of a key that is not there (any more), at the end of the chain. It moves in
  /// front of the key when that is made again.
  void AddDeletion(std::u16string_view path);

  void StartBatch() {
    recording_ = true;
    ++batch_;
  }
  /// True when something was changed since StartBatch.
  [[nodiscard]] bool Changed() const { return !undo_.empty(); }
  void Undo();
  /// Ends the batch for good. Between the two, keys that are `gone` are still there to be asked;
  /// Bury lets go of them.
  void Keep();
  [[nodiscard]] bool HasDead() const { return !dead_.empty(); }
  void Bury() { dead_.clear(); }
  /// Grows with every change of the key or below it.
  [[nodiscard]] std::uint64_t MarkOf(const RegistryKey& key) const {
    return key.mark > undoMark_ ? key.mark : undoMark_;
  }
  [[nodiscard]] std::uint64_t LastMark() const { return lastMark_; }
  /// Has every mark be later than one of another tree.
  void StartMarksBehind(std::uint64_t mark) { lastMark_ = undoMark_ = mark + 1; }
  /// Counts deletions of keys: while it stands still, a key once found is still where it was.
  [[nodiscard]] std::uint64_t Generation() const { return generation_; }

 private:
  void Record(std::function<void()> undo);
  /// Whether a change inside a key is to be undone by itself: a key that this batch made goes
  /// whole.
  [[nodiscard]] bool IsUndone(const RegistryKey& key) const {
    return recording_ && key.bornIn != batch_;
  }
  void Mark(RegistryKey& key);
  void Link(FilePlace& place, FilePlace& after);
  void Unlink(FilePlace& place);
  void ListBeforeSubkeys(RegistryKey& key);
  void UnlistAll(RegistryKey& key);
  [[nodiscard]] FilePlace& PlaceInOrder(const RegistryKey& key);
  void TakeBackDeletion(RegistryKey& key);
  void PutDeletion(std::u16string_view path, FilePlace& after);
  FileLine& AddLine(FilePlace::Role role, std::u16string_view text, FilePlace& after);

  NameTable names_;
  FilePlace ends_{FilePlace::Role::Ends};
  RegistryKey top_;
  /// Deletions of keys that are not there, by folded path.
  std::unordered_map<std::u16string, FileLine*> deletions_;
  std::vector<std::unique_ptr<FileLine>> lines_;
  std::vector<std::unique_ptr<RegistryKey>> removed_;  ///< Deleted in this batch, latest last.
  std::vector<std::unique_ptr<RegistryKey>> dead_;
  std::vector<std::function<void()>> undo_;
  std::uint64_t generation_ = 0;
  std::uint64_t lastMark_ = 1;
  std::uint64_t undoMark_ = 1;
  std::uint64_t batch_ = 0;
  bool recording_ = false;
};

/// Finds keys by path, one after the other, starting from what a path shares with the one before:
/// the paths of a rule set differ in their last components only.
class PathCursor {
 public:
  explicit PathCursor(RegistryTree& tree) : tree_(tree) {}
  /// The key of a path below `from`, which must be the same key at each call; "\" without a name
  /// between them do not count. Null when there is none. `shared` is what the caller knows the path
  /// to share with the last one, 0 when it knows nothing.
  RegistryKey* Find(RegistryKey& from, std::u16string_view path, std::size_t shared = 0);
  /// The key of that path, made with its missing parents. Null when it would pass a limit.
  RegistryKey* Create(RegistryKey& from, std::u16string_view path, RegistryTree::Placing placing);
  /// As Create, for a path that Find, just before, led to no key.
  RegistryKey* Extend(RegistryKey& from, std::u16string_view path, RegistryTree::Placing placing);
  /// Moves `at` past the next name of the path and gives the name; empty at the end.
  static std::u16string_view NextName(std::u16string_view path, std::size_t& at);

 private:
  struct Step {
    std::size_t end;  ///< Length of the path up to this key.
    RegistryKey* key;
  };
  /// Drops the steps that the path does not share with the last one.
  void KeepShared(std::u16string_view path, std::size_t shared);
  RegistryKey& Last(RegistryKey& from) { return steps_.empty() ? from : *steps_.back().key; }

  RegistryTree& tree_;
  std::u16string path_;
  std::vector<Step> steps_;
  std::uint64_t generation_ = 0;
};

}  // namespace morvelle
