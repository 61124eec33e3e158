#pragma once

#include <memory>

#include "ports/address_book.h"

namespace morvelle {

/// The Windows Address Book of the user, through `kWab.dll`, which is loaded when a book is first
/// opened, from the program's own folder alone. Without the library, no book opens.
std::unique_ptr<AddressBook> MakeWindowsAddressBook();

}  // namespace morvelle
