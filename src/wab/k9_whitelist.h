#pragma once

#include <filesystem>

#include "core/registry_access.h"
#include "ports/environment.h"
#include "ports/processes.h"
#include "wab/address_reader.h"

namespace morvelle {

/// The whitelist of the spam filter K9, brought up to date from the user's address book.
class K9Whitelist {
 public:
  K9Whitelist(RegistryAccess& registry, const Environment& environment, Processes& processes,
              AddressReader& reader)
      : registry_(registry), environment_(environment), processes_(processes), reader_(reader) {}

  /// Path of K9's whitelist file; empty when K9 or its file is not there.
  [[nodiscard]] std::filesystem::path EmailsPath();

  /// Merges the book's addresses into the file, which EmailsPath gave, K9 being stopped meanwhile;
  /// a dated copy of it stays. A book without an address, or a K9 that cannot be stopped, leaves
  /// the file untouched. An unexpected error ends the program, the file being as it was and K9
  /// stopped.
  void UpDateWhiteListK9(const std::filesystem::path& emailsFile);

 private:
  RegistryAccess& registry_;
  const Environment& environment_;
  Processes& processes_;
  AddressReader& reader_;
};

}  // namespace morvelle
