#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/deleted_items.h"
#include "core/registry_access.h"
#include "core/rule_tables.h"

/// The rule "Carnet d'adresses": it moves every message whose sender is not in the user's address
/// book to "Éléments supprimés".
namespace morvelle {

/// Flags of the rule's sender criterion: the sender is none of the words.
inline constexpr std::string_view kBookRuleFlags = "1";

/// Row of the address-book rule, found by its name without regard to case; -1 when there is none.
int RowOfBookRule(const RuleTables& tables);

/// Id for a new address-book rule: the one after the greatest, or where that is taken the first
/// free one; nothing when none is left.
std::optional<std::string> BookRuleId(const RuleTables& tables, RegistryAccess& registry,
                                      const std::string& mailKey);

/// Adds the row of an address-book rule, without its words. `deletedItems` is the value of a move
/// to "Éléments supprimés", less its closing zero. Returns the row.
int AddBookRule(RuleTables& tables, const std::string& id, const std::string& deletedItems);

/// Writes the words into the rule's sender criterion, whatever the criterion's id, and nothing else
/// of the rule; like every first write, it gives a rules key without version its version. Without
/// such a criterion, or without words, nothing is written.
void WriteBookWords(RegistryAccess& registry, const std::string& mailKey, RuleTables& tables,
                    int row, const std::vector<std::string>& words);

}  // namespace morvelle
