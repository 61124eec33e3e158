#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/registry_access.h"
#include "ports/address_book.h"
#include "ports/environment.h"

namespace morvelle {

/// Where the user's address book lies (modReadWab).
struct BookPlace {
  /// The book's file as the registry names it, a Windows path; empty when it names none.
  std::string wabFile;
  /// Its folder, without "\" at the end; empty when no address book is known.
  std::string WabFolder;
};

/// What a registry field or a buffer of 256 blanks holds of an address: what stands before its
/// first zero, without the blanks around it.
std::string CleanAddress(std::string_view text);

/// Reads the e-mail addresses of the user's address book.
class AddressReader {
 public:
  AddressReader(RegistryAccess& registry, const Environment& environment, AddressBook& book,
                BookPlace& place)
      : registry_(registry), environment_(environment), book_(book), place_(place) {}

  /// Locates the book; says so where there is none. True when its folder is known.
  bool FindWab();

  /// Opens the book; false, with a message, when it cannot be opened or holds no entry. The caller
  /// closes it in either case.
  bool OpenWab();
  void CloseWab();

  /// The address of every entry that has one, in the library's order, repeats included; says how
  /// many the code page cannot hold. Empty when the book did not open; the message has been shown
  /// then.
  std::vector<std::string> ReadWab();

  /// The addresses as a rule takes them: sorted, each once. Empty when there is none or when they
  /// are more than a rule can hold, with a message then.
  std::vector<std::string> ReadWords();

 private:
  /// Reads where the book lies; false when the registry does not tell of any.
  bool ReadPlace();

  RegistryAccess& registry_;
  const Environment& environment_;
  AddressBook& book_;
  BookPlace& place_;
  BookHandle hWab_ = 0;
  std::int32_t wabEntryCount_ = 0;
};

}  // namespace morvelle
