#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvelle {

/// The e-mail addresses of a table of text, one entry a row, empty where a row has none: fields are
/// separated by ";", "," or a tab, and may be quoted and then hold line breaks. The columns are
/// those whose heading is one of an address, in French or English; where none is, the one in which
/// "@" stands most often, and the first row is then no heading if it has an "@" there.
///
/// A quote that is never closed, or that has more text behind it, is a character like another, so
/// that it does not swallow the rows after it.
std::vector<std::string> ReadCsv(std::string_view text);

}  // namespace morvelle
