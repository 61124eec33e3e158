#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "app/messages/messages.h"
#include "core/damage_report.h"
#include "ports/registry_store.h"

namespace morvelle {

/// A registry value on its way through the program: nothing, a text (for binary values one
/// character a byte) or a 32-bit number.
using RegistryValue = std::variant<std::monostate, std::string, std::int32_t>;

/// The value as the tables hold it: a number as its decimal digits, nothing as empty text.
std::string TextOf(const RegistryValue& value);

/// The one place where the program touches the registry for its rules (modRegister).
class RegistryAccess {
 public:
  RegistryAccess(RegistryStore& store, const Messages& messages, DamageReport& damage)
      : store_(store), messages_(messages), damage_(damage) {}

  /// Makes a key with its missing parents, or says that it cannot and ends the program.
  void CreateKey(const std::string& path);

  /// Opens a key. With `createIfMissing` it is made first where it is missing, and `handle` is
  /// always usable; without, `handle` is so only when the status is 0.
  RegistryStatus OpenKey(const std::string& path, KeyHandle& handle, bool createIfMissing);
  void CloseKey(KeyHandle handle) { store_.CloseKey(handle); }

  /// Reads a value. One that is not there goes to the damage report with the label of the table
  /// that it was meant for; another failure shows the system's text. In both cases `value` stays
  /// as it was.
  RegistryStatus QueryValue(std::string_view table, KeyHandle key, std::string_view name,
                            RegistryValue& value);
  /// As QueryValue, into a field of the tables; empty when the read failed.
  RegistryStatus QueryField(std::string_view table, KeyHandle key, std::string_view name,
                            std::string& field);

  /// Writes a string (type 1 or 2, a final zero is added), bytes (3) or a number (4).
  RegistryStatus SetKeyValue(KeyHandle key, std::string_view name, ValueKind kind,
                             const RegistryValue& value);

  /// Deletes a key and all below it. An empty path is status 2 and touches nothing.
  RegistryStatus DeleteKey(const std::string& path);

  /// Names of a key's subkeys. When it cannot be opened, the message is shown if asked for and the
  /// list is empty.
  std::vector<std::string> EnumSubKeys(const std::string& path, std::int16_t& count,
                                       std::string_view message, const std::string& title,
                                       bool showMessage);

  /// A value, silently: nothing where it is missing, cannot be read or is of another type.
  [[nodiscard]] RegistryValue Peek(KeyHandle key, std::string_view name) const;

  [[nodiscard]] RegistryStore& Store() { return store_; }
  [[nodiscard]] const Messages& Boxes() const { return messages_; }
  [[nodiscard]] DamageReport& Damage() { return damage_; }

 private:
  RegistryStatus ReadTyped(KeyHandle key, std::string_view name, ValueKind kind,
                           RegistryValue& value) const;

  RegistryStore& store_;
  const Messages& messages_;
  DamageReport& damage_;
};

/// Closes a key where its use ends.
class OpenedKey {
 public:
  OpenedKey(RegistryAccess& registry, const std::string& path, bool createIfMissing)
      : registry_(registry), status_(registry.OpenKey(path, handle_, createIfMissing)) {}
  OpenedKey(const OpenedKey&) = delete;
  OpenedKey& operator=(const OpenedKey&) = delete;
  ~OpenedKey() {
    if (IsOpen()) registry_.CloseKey(handle_);
  }
  [[nodiscard]] bool IsOpen() const { return status_ == kStatusSuccess; }
  [[nodiscard]] RegistryStatus Status() const { return status_; }
  [[nodiscard]] KeyHandle Handle() const { return handle_; }

 private:
  RegistryAccess& registry_;
  KeyHandle handle_ = 0;
  RegistryStatus status_;
};

}  // namespace morvelle
