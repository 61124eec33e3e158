#include <set>
#include <utility>

#include "app/messages/text.h"
#include "fuzz/fuzzer.h"
#include "wab/whitelist_file.h"

namespace morvelle {

/// The first line is the book, its addresses between blanks; the rest is the whitelist.
void TryInput(std::string_view input) {
  const auto end = std::min(input.find('\n'), input.size());
  std::vector<std::string> book;
  std::string address;
  for (const char character : input.substr(0, end)) {
    if (character != ' ') {
      address += character;
    } else if (!address.empty()) {
      book.push_back(std::exchange(address, {}));
    }
  }
  if (book.empty()) return;
  const auto merged = MergedWhitelist(input.substr(std::min(end + 1, input.size())), book);
  Demand(merged.ends_with("\r\n"), "a whitelist ends with a line end");
  std::set<std::string> kept;
  std::size_t from = merged.find("From :");
  while (from < merged.size()) {
    const auto to = merged.find("\r\n", from);
    Demand(kept.insert(LowerCase(merged.substr(from, to - from))).second,
           "an address stands once, whatever its letter case");
    from = to + 2;
  }
}

}  // namespace morvelle
