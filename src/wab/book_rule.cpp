#include "wab/book_rule.h"

#include <algorithm>

#include "app/messages/text.h"
#include "core/command_batch.h"
#include "core/entry_types.h"
#include "core/new_rule.h"
#include "core/rule_writer.h"
#include "core/word_lists.h"

namespace morvelle {

namespace {

/// Slot of the sender's words.
constexpr int kSenderSlot = 0;

std::string UpperCaseOf(std::string id) {
  for (auto& digit : id) {
    if (digit >= 'a' && digit <= 'f') digit = static_cast<char>(digit - 'a' + 'A');
  }
  return id;
}

}  // namespace

int RowOfBookRule(const RuleTables& tables) {
  for (int row = 0; row < tables.RuleCount; ++row) {
    if (EqualIgnoringCase(tables.RuleAt(row).Name, kBookRule)) return row;
  }
  return -1;
}

std::optional<std::string> BookRuleId(const RuleTables& tables, RegistryAccess& registry,
                                      const std::string& mailKey) {
  std::string greatest;
  for (int row = 0; row < tables.RuleCount; ++row) {
    const auto& id = tables.RuleAt(row).Id;
    if (IsThreeDigitId(id)) greatest = std::max(greatest, UpperCaseOf(id));
  }
  constexpr int kHexadecimal = 16;
  const int next = greatest.empty() ? 0 : std::stoi(greatest, nullptr, kHexadecimal) + 1;
  return FreeRuleIds(tables, registry, mailKey).Take(ThreeDigitId(next));
}

int AddBookRule(RuleTables& tables, const std::string& id, const std::string& deletedItems) {
  const int row = AddRow(tables, id, kBookRule);
  const auto at = static_cast<std::size_t>(row);
  auto& rule = tables.RuleAt(row);
  auto& action = rule.ActionsParam[0];
  action.Id = "000";
  action.Type = kActionMove;
  action.Value = deletedItems + '\0';
  rule.ActionsOrder = action.Id;
  tables.Actions[at] = 1;
  auto& criterion = rule.CriteriaParam[0];
  criterion.Id = "000";
  criterion.Flags = kBookRuleFlags;
  criterion.Logic = "0";
  criterion.Type = tables.SlotType[kSenderSlot];
  criterion.ValueType = kValueTypeBytes;
  rule.CriteriaOrder = criterion.Id;
  tables.Criteria[at] = 1;
  tables.SlotOf(row, kSenderSlot) = criterion;
  return row;
}

void WriteBookWords(RegistryAccess& registry, const std::string& mailKey, RuleTables& tables,
                    int row, const std::vector<std::string>& words) {
  auto& rule = tables.RuleAt(row);
  if (words.empty() || rule.overfull || rule.overlong || !IsThreeDigitId(rule.Id)) return;
  for (auto& criterion : rule.CriteriaParam) {
    if (criterion.Type != tables.SlotType[kSenderSlot] || !IsThreeDigitId(criterion.Id)) continue;
    const auto key = mailKey + rule.Id + "\\Criteria\\" + criterion.Id;
    WritePlan plan(registry);
    if (!plan.KeyExists(key)) return;
    criterion.Value = EncodeWords(words);
    PlanRulesVersion(plan, mailKey);
    plan.SetValue(key, "Value", ValueKind::Binary, criterion.Value);
    tables.Touch(row);
    CommandBatch batch(registry.Store(), registry.Boxes());
    batch.Commit(plan.Apply());
    return;
  }
}

}  // namespace morvelle
