#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvelle {

/// An address book kept as text.
struct Book {
  /// Each entry by its e-mail address, Windows-1252, empty where it has none. An entry with several
  /// addresses counts once for each.
  std::vector<std::string> entries;
  /// How many addresses have characters that Windows-1252 lacks: their entries are empty, for an
  /// address with another character in its place is another one's.
  std::int32_t leftOut = 0;
};

/// Reads CSV as address books export it, vCard 2.1 to 4.0, or LDIF (RFC 2849), told by what the
/// text is and not by its name. Nothing when the bytes are no text.
///
/// The readers are our own: what is wanted of a format is one property, a broken line must not cost
/// the lines after it, and they serve Windows too.
std::optional<Book> ReadBook(std::string_view bytes);

/// A text that is UTF-8 or, failing that, Windows-1252, as Windows-1252; a zero for what that
/// lacks.
std::string AsWindows1252(std::string_view bytes);

}  // namespace morvelle
