#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace morvelle {

/// An open key. Opaque, given by RegistryStore::OpenKey and CreateKey, closed by CloseKey; 0 is
/// never a valid one.
using KeyHandle = std::uint32_t;

/// A Windows registry status (winerror.h): 0 is success.
using RegistryStatus = std::int32_t;

inline constexpr RegistryStatus kStatusSuccess = 0;
inline constexpr RegistryStatus kStatusNotFound = 2;
inline constexpr RegistryStatus kStatusAccessDenied = 5;
inline constexpr RegistryStatus kStatusInvalidHandle = 6;
inline constexpr RegistryStatus kStatusNoMoreItems = 259;

/// Registry type codes (winnt.h). A store keeps any other code as it is.
enum class ValueKind : std::uint32_t {
  None = 0,
  String = 1,
  ExpandString = 2,
  Binary = 3,
  Dword = 4,
  MultiString = 7,
};

/// Access rights asked for at opening (winnt.h).
enum class KeyAccess : std::uint32_t {
  EnumerateSubkeys = 0x08,
  ReadWrite = 0x3F,
};

/// How the writes of a command ended.
enum class CommitOutcome {
  Done,
  ChangedMeanwhile,  ///< Another program changed the file; nothing was written, the batch stays
                     ///< open.
  Failed,            ///< Nothing was written and the batch is undone; LastError says why.
};

/// A subkey's name before and after.
struct KeyRename {
  std::string from;
  std::string to;
};

/// A value to be written, its data as RegistryStore::SetValue takes them.
struct NewValue {
  std::string_view name;
  ValueKind kind;
  std::string_view data;
};

/// A key to be made: its path below another one, empty for that one itself.
struct NewKey {
  std::string_view path;
  std::span<const NewValue> values;
};

/// What an exchange file tells of its being whole. A file that lost its end lacks what stood behind
/// its last key, which may lack values itself.
struct ExchangeFile {
  bool incomplete = false;  ///< It ends where no such file does.
  bool inPart = false;      ///< It is incomplete, or was when we wrote it.
  bool closed = false;      ///< Its last key is there with all its values.
  std::string lastKey;      ///< Path of that key; empty where something else comes last.
};

/// What an exchange file is to do, where it is imported, to what a key of it holds there already.
enum class Import {
  Replaces,  ///< The key is given whole: what the file does not hold goes.
  Adds,      ///< Nothing goes.
};

/// The registry under HKEY_CURRENT_USER as the program sees it: keys that hold named values and
/// subkeys. Paths, names and string data are text of the system code page, one byte a character;
/// paths are relative to HKEY_CURRENT_USER with "\" between components, a "\" at the end is
/// harmless, letter case does not count.
///
/// The first eight operations answer as RegOpenKeyExA, RegCreateKeyExA, RegCloseKey,
/// RegQueryValueExA, RegSetValueExA, RegEnumKeyExA, RegDeleteKeyA and RegDeleteValueA do.
///
/// Writes between BeginBatch and CommitBatch reach the user's file together or not at all; reads
/// see them at once. A write outside a batch is a batch of its own. On the Windows registry, which
/// has no such thing, every write is final.
class RegistryStore {
 public:
  RegistryStore() = default;
  RegistryStore(const RegistryStore&) = delete;
  RegistryStore& operator=(const RegistryStore&) = delete;
  virtual ~RegistryStore() = default;

  virtual RegistryStatus OpenKey(std::string_view path, KeyAccess access, KeyHandle& handle) = 0;
  /// Opens the key, making it and its missing parents first.
  virtual RegistryStatus CreateKey(std::string_view path, KeyHandle& handle) = 0;
  virtual RegistryStatus CloseKey(KeyHandle handle) = 0;

  /// Type code and size in bytes of a value, as its single-byte view counts them.
  virtual RegistryStatus DescribeValue(KeyHandle key, std::string_view name, ValueKind& kind,
                                       std::uint32_t& size) = 0;
  /// The bytes of a value. Strings come in the single-byte view, their final zero included when
  /// the stored string has one; a character that the code page lacks reads as "?".
  virtual RegistryStatus ReadValue(KeyHandle key, std::string_view name, std::string& data) = 0;
  /// Writes a value. When the type and the single-byte view are those already stored, the stored
  /// bytes are left alone.
  virtual RegistryStatus SetValue(KeyHandle key, std::string_view name, ValueKind kind,
                                  std::string_view data) = 0;
  virtual RegistryStatus DeleteValue(KeyHandle key, std::string_view name) = 0;
  /// Name of the subkey at `index`; subkeys are listed by name without regard to case.
  virtual RegistryStatus EnumKey(KeyHandle key, std::uint32_t index, std::string& name) = 0;
  /// Deletes a key that has no subkeys; one that has is refused with kStatusAccessDenied.
  virtual RegistryStatus DeleteKey(std::string_view path) = 0;

  /// Gives subkeys of `path` new names, all at once: two may exchange theirs. What a new name held
  /// before is deleted unless it is renamed itself. A store keeps all that the keys hold, as it is
  /// stored; one that cannot list a key's values carries the values of the `known` names.
  virtual RegistryStatus RenameSubkeys(std::string_view path, std::span<const KeyRename> renames,
                                       std::span<const std::string_view> known) = 0;

  /// A number that grows with every change of the key or of what is below it: while it stands
  /// still, what was read there still holds. Nothing where other programs write unseen, or where
  /// there is no such key.
  [[nodiscard]] virtual std::optional<std::uint64_t> ChangeMark(
      [[maybe_unused]] std::string_view path) {
    return std::nullopt;
  }

  /// Makes a key that is not there, with its missing parents, and keys below it, all with their
  /// values, where the store has a quicker way to it than one operation after the other. False,
  /// with nothing written, where it has none or the key is there.
  virtual bool WriteNewKeys([[maybe_unused]] std::string_view path,
                            [[maybe_unused]] std::span<const NewKey> keys) {
    return false;
  }

  virtual void BeginBatch() {}
  /// Ends the batch. With `overwriteChanged` a file that another program changed meanwhile is
  /// replaced all the same.
  virtual CommitOutcome CommitBatch([[maybe_unused]] bool overwriteChanged) {
    return CommitOutcome::Done;
  }
  /// Undoes the writes of the batch, where the store can.
  virtual void AbandonBatch() {}

  /// Reads again what another program may have changed. The open batch is undone and no handle is
  /// good any more. False: it cannot be read, LastError says why, and the store is of no use.
  virtual bool ReadAgain() {
    AbandonBatch();
    return true;
  }
  /// Why nothing can be written, as a message that names the file; empty when there is no reason.
  [[nodiscard]] virtual std::string ReadOnlyReason() const { return {}; }

  /// Why the last CommitBatch, or the last status other than 0, came about, in French; empty when
  /// there is nothing to add to the status.
  [[nodiscard]] virtual std::string LastError() const { return {}; }

  /// Nothing where the store is no exchange file.
  [[nodiscard]] virtual std::optional<ExchangeFile> Exchange() const { return std::nullopt; }
  /// Tells a store that is an exchange file what becomes of the key at an import. It holds from the
  /// next write on.
  virtual void GiveKey([[maybe_unused]] std::string_view path, [[maybe_unused]] Import how) {}
};

}  // namespace morvelle
