#include "wab/whitelist_file.h"

#include <algorithm>
#include <optional>

#include "app/messages/text.h"
#include "wab/case_order.h"

namespace morvelle {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kFrom = "from";

/// The next line of the text, which loses it and its end (CR, LF or both).
std::string_view TakeLine(std::string_view& text) {
  const auto end = std::min(text.find_first_of("\r\n"), text.size());
  const auto line = text.substr(0, end);
  text.remove_prefix(end);
  text.remove_prefix(std::min<std::size_t>(text.starts_with(kLineEnd) ? 2 : 1, text.size()));
  return line;
}

/// Where "From" stands in a line, in any letter case.
std::size_t FromIn(std::string_view line) {
  const auto found = std::search(line.begin(), line.end(), kFrom.begin(), kFrom.end(),
                                 [](char left, char right) { return LowerCase(left) == right; });
  return found == line.end() ? std::string_view::npos
                             : static_cast<std::size_t>(found - line.begin());
}

std::optional<std::string> AddressIn(std::string_view line) {
  const auto from = FromIn(line);
  if (from == std::string_view::npos) return std::nullopt;
  const auto colon = line.find(':', from + kFrom.size());
  if (colon == std::string_view::npos) return std::nullopt;
  line.remove_prefix(colon + 1);
  const auto first = line.find_first_not_of(' ');
  if (first == std::string_view::npos) return std::string{};
  return std::string(line.substr(first, line.find_last_not_of(' ') - first + 1));
}

/// The lines up to the first address line, which is taken too, joined by CR LF.
std::string TakeHead(std::string_view& text) {
  std::string head;
  while (!text.empty()) {
    const auto line = TakeLine(text);
    if (FromIn(line) != std::string_view::npos) break;
    head.append(line).append(kLineEnd);
  }
  if (!head.empty()) head.resize(head.size() - kLineEnd.size());
  if (!head.empty()) return head;
  return std::string("# Ceci est la liste blanche de K9.\r\n#\r\n# Visitez le site de K9 - "_cp) +
         std::string(kK9Site) + std::string(" pour plus de détails."_cp);
}

}  // namespace

std::string MergedWhitelist(std::string_view file, std::vector<std::string> addresses) {
  auto text = TakeHead(file).append(kLineEnd);
  while (!file.empty()) {
    if (auto address = AddressIn(TakeLine(file))) addresses.push_back(std::move(*address));
  }
  SortByLowerCase(addresses);
  KeepLastOfEach(addresses);
  for (const auto& address : addresses) text.append("From :").append(address).append(kLineEnd);
  return text;
}

}  // namespace morvelle
