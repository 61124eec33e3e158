#pragma once

#include <optional>
#include <string>

#include "core/displays.h"
#include "core/registry_access.h"
#include "ports/environment.h"

namespace morvelle {

/// The identity whose rules are edited.
struct Identity {
  /// Path of its rules key, always ending with "\".
  std::string MailKey;
  /// Its GUID in braces.
  std::string IdentityId;
  /// Its message-store folder, a Windows path without "\" at the end.
  std::string StoreRoot;
};

/// Asks whether a store that seems to lack its end is to be opened all the same, and says of one
/// that cannot be written that it cannot. To be called before anything of the store is shown.
bool MayOpen(const RegistryStore& store, const Messages& messages);

/// Finds the identity that used the mail client last.
class IdentityFinder {
 public:
  IdentityFinder(RegistryAccess& registry, const Environment& environment, StatusPanels& panels,
                 Identity& identity)
      : registry_(registry), environment_(environment), panels_(panels), identity_(identity) {}

  /// True when the identity had a rules key; false when it was made now. Without an identity it
  /// says so and ends the program.
  bool FindID();

 private:
  [[noreturn]] void NoIdentity();
  void RequireKey(const std::string& path, KeyHandle& handle);
  void ExpandStoreRoot();
  void ShowIdentity();
  /// What FindID gives; nothing when it must start over.
  std::optional<bool> FindOnce();
  /// False when another program changed the store while the box about it stood open: the store was
  /// read again then.
  bool MakeRulesKey();
  void ReadAgain();

  RegistryAccess& registry_;
  const Environment& environment_;
  StatusPanels& panels_;
  Identity& identity_;
};

}  // namespace morvelle
