#include <algorithm>
#include <set>

#include "app/messages/text.h"
#include "core/rule_writer.h"
#include "fuzz/fuzzer.h"

namespace morvelle {

namespace {

/// An id as the registry compares it.
std::string Folded(std::string_view id) { return LowerCase(id); }

}  // namespace

/// The first line is an "Order" value; each further one is a line of the rule list.
void TryInput(std::string_view input) {
  std::vector<std::string> lines;
  for (std::size_t from = 0; from <= input.size();) {
    const auto to = std::min(input.find('\n', from), input.size());
    lines.emplace_back(input.substr(from, to - from));
    from = to + 1;
  }
  RuleTables tables;
  for (const auto& id : IdsOfOrder(lines.front())) {
    if (!IsThreeDigitId(id) || tables.RowOfId(id) >= 0 || tables.RuleCount >= kMaxRules) continue;
    ++tables.RuleCount;
    tables.ReDimTables();
    tables.RuleAt(tables.RuleCount - 1).Id = id;
  }
  lines.erase(lines.begin());
  const auto written = IdsOfOrder(SettledOrder(lines, tables));
  std::set<std::string> known;
  for (int row = 0; row < tables.RuleCount; ++row) known.insert(Folded(tables.RuleAt(row).Id));
  std::set<std::string> seen;
  for (const auto& id : written) seen.insert(Folded(id));
  Demand(seen.size() == written.size(), "an order names no rule twice");
  Demand(std::includes(seen.begin(), seen.end(), known.begin(), known.end()),
         "an order names every rule that is loaded");
}

}  // namespace morvelle
