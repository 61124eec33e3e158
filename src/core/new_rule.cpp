#include "core/new_rule.h"

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/entry_types.h"

namespace morvelle {

namespace {

constexpr std::string_view kRefusedInNames = "\\/:*?\"<>|";
/// The blank, the tabulator and the blank that does not break.
constexpr std::string_view kBlanks = " \t\xA0";

}  // namespace

FreeRuleIds::FreeRuleIds(const RuleTables& tables, RegistryAccess& registry,
                         const std::string& mailKey) {
  for (int row = 0; row < tables.RuleCount; ++row) {
    taken_.insert(LowerCase(tables.RuleAt(row).Id));
  }
  std::int16_t count = 0;
  for (const auto& name : registry.EnumSubKeys(mailKey, count, {}, {}, false)) {
    taken_.insert(LowerCase(name));
  }
}

bool FreeRuleIds::TakeIfFree(const std::string& id) {
  return IsThreeDigitId(id) && taken_.insert(LowerCase(id)).second;
}

std::optional<std::string> FreeRuleIds::Take(const std::string& wanted) {
  if (TakeIfFree(wanted)) return wanted;
  while (next_ < kMaxRules) {
    auto id = ThreeDigitId(next_++);
    if (TakeIfFree(id)) return id;
  }
  return std::nullopt;
}

std::string UsualRuleId(const RuleTables& tables) {
  std::unordered_set<std::string> used;
  for (int row = 0; row < tables.RuleCount; ++row) {
    used.insert(LowerCase(tables.RuleAt(row).Id));
  }
  for (int number = 1; number <= tables.RuleCount; ++number) {
    auto id = ThreeDigitId(number);
    if (used.count(LowerCase(id)) == 0) return id;
  }
  return ThreeDigitId(tables.RuleCount);
}

NameFault FaultOfName(const RuleTables& tables, std::string_view name, int ownRow) {
  if (name.find_first_of(kRefusedInNames) != std::string_view::npos ||
      HoldsControlCharacter(name) || name.find_first_not_of(kBlanks) == std::string_view::npos) {
    return NameFault::Characters;
  }
  if (EqualIgnoringCase(name, kBookRule)) return NameFault::Reserved;
  for (int row = 0; row < tables.RuleCount; ++row) {
    if (row != ownRow && EqualIgnoringCase(tables.RuleAt(row).Name, name)) return NameFault::Used;
  }
  return NameFault::None;
}

std::int16_t AddRow(RuleTables& tables, const std::string& id, std::string_view name) {
  const auto row = tables.RuleCount;
  tables.RuleCount = Checked<std::int16_t>(row + 1);
  tables.ReDimTables();
  const auto at = static_cast<std::size_t>(row);
  auto& rule = tables.RuleAt(row);
  // The tables keep one row where there is no rule: it may hold what is left of another.
  rule = {};
  tables.Actions[at] = 0;
  tables.Criteria[at] = 0;
  tables.FirstCriteria[at] = {};
  rule.Id = id;
  rule.Name = name;
  rule.Enabled = "1";
  rule.Version = "0";
  rule.blank = false;
  std::vector<std::string> ids;
  ids.reserve(at + 1);
  for (int other = 0; other < tables.RuleCount; ++other) ids.push_back(tables.RuleAt(other).Id);
  tables.Mail.Order = JoinIds(ids);
  return row;
}

void GiveDefaultAction(RuleTables& tables, int row, DeletedItemsSource& deletedItems) {
  auto& rule = tables.RuleAt(row);
  auto& action = rule.ActionsParam[0];
  action = {};
  action.Id = "000";
  action.Flags = "0";
  if (const auto& value = deletedItems.DeletedItems(); IsDeletedItems(value)) {
    action.Type = kActionMove;
    action.Value = value + '\0';
    action.ValueType = kValueTypeBytes;
  } else {
    action.Type = kActionStop;
  }
  rule.ActionsOrder = action.Id;
  tables.Actions[static_cast<std::size_t>(row)] = 1;
}

}  // namespace morvelle
