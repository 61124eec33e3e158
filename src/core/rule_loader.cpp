#include "core/rule_loader.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/entry_types.h"
#include "core/word_lists.h"

namespace morvelle {

namespace {

constexpr std::string_view kFirstId = "000";

std::size_t Index(int row) { return static_cast<std::size_t>(row); }

}  // namespace

void RuleLoader::FinishEmpty() {
  display_.EnableMnu();
  display_.EnableContentMenus(false);
  display_.EnableImports();
}

void RuleLoader::BlankRow(int row) {
  auto& rule = tables_.RuleAt(row);
  auto id = std::move(rule.Id);
  rule = {};
  rule.Id = std::move(id);
  tables_.Actions[Index(row)] = 0;
  tables_.Criteria[Index(row)] = 0;
  tables_.FirstCriteria[Index(row)] = {};
}

void RuleLoader::ArrangeRows(const std::vector<std::string>& ids) {
  const int before = tables_.RuleCount;
  const int after = Checked<std::int16_t>(ids.size());
  int first = 0;
  while (first < std::min(before, after) && tables_.RuleAt(first).Id == ids[Index(first)]) ++first;
  int atEnd = 0;
  while (atEnd < std::min(before, after) - first &&
         tables_.RuleAt(before - 1 - atEnd).Id == ids[Index(after - 1 - atEnd)]) {
    ++atEnd;
  }
  // Only the rows in between change places: moving all of them costs as much as reading them.
  std::unordered_map<std::string, LoadedRule> loaded;
  for (int row = first; row < before - atEnd; ++row) {
    auto& rule = tables_.RuleAt(row);
    if (rule.readMark == 0) continue;
    auto id = rule.Id;
    loaded.try_emplace(std::move(id), LoadedRule{std::move(rule), tables_.Actions[Index(row)],
                                                 tables_.Criteria[Index(row)],
                                                 std::move(tables_.FirstCriteria[Index(row)])});
  }
  tables_.ResizeBlock(before - atEnd, after - atEnd);
  for (int row = first; row < after - atEnd; ++row) {
    const auto& id = ids[Index(row)];
    const auto found = loaded.find(id);
    if (found == loaded.end()) {
      if (!tables_.RuleAt(row).blank) BlankRow(row);
      tables_.RuleAt(row).Id = id;
      continue;
    }
    tables_.RuleAt(row) = std::move(found->second.rule);
    tables_.Actions[Index(row)] = found->second.actions;
    tables_.Criteria[Index(row)] = found->second.criteria;
    tables_.FirstCriteria[Index(row)] = std::move(found->second.slots);
    loaded.erase(found);
  }
}

bool RuleLoader::StillHolds(int row) const {
  const auto read = tables_.RuleAt(row).readMark;
  return read != 0 && registry_.Store().ChangeMark(KeyOf(row)) == read;
}

bool RuleLoader::LoadRow(std::int16_t row) {
  if (!StillHolds(row)) {
    if (!tables_.RuleAt(row).blank) BlankRow(row);
    return RuleFromBdR(row);
  }
  const auto& rule = tables_.RuleAt(row);
  display_.LoadMnu(row, rule.Id + " " + rule.Name, true);
  const bool editable = IsEditable(row);
  display_.EnableRuleEditing(row, editable);
  return editable;
}

std::vector<std::string> RuleLoader::StoredRules() {
  std::int16_t count = 0;
  auto ids = registry_.EnumSubKeys(mailKey_, count, {}, {}, false);
  std::erase_if(ids, [](const auto& id) { return !IsThreeDigitId(id); });
  return ids;
}

MailRecord RuleLoader::ReadMail() {
  MailRecord mail;
  const OpenedKey key(registry_, mailKey_, true);
  ValueKind kind{};
  std::uint32_t size = 0;
  const auto status = registry_.Store().DescribeValue(key.Handle(), "Order", kind, size);
  if (status == kStatusNotFound) {
    registry_.Damage().BadValueReport("Mail");
    return mail;
  }
  // A rules key without a version is mended by the first write and no concern of the user's.
  mail.Version = TextOf(registry_.Peek(key.Handle(), "Version"));
  const auto order = registry_.Peek(key.Handle(), "Order");
  if (const auto* text = std::get_if<std::string>(&order)) {
    mail.Order = *text;
    return mail;
  }
  // Taken for an empty rule set, the next order that is written would hide every rule.
  mail.Order = JoinIds(StoredRules());
  if (!mail.Order.empty()) registry_.Damage().UnreadableOrder();
  return mail;
}

void RuleLoader::TellOverlong() {
  std::vector<std::string> names;
  for (int row = 0; row < tables_.RuleCount; ++row) {
    const auto& rule = tables_.RuleAt(row);
    if (rule.overlong) names.push_back(rule.Name);
  }
  registry_.Damage().TooManyWords(names);
}

void RuleLoader::MailFromBdR() {
  Trap(registry_.Boxes().Boxes(), "MailFromBdR", [&] {
    display_.BeginLoad();
    auto mail = ReadMail();
    // A rule that the order names twice is one rule: two rows of it would overwrite each other.
    const auto ids = EachIdOnce(IdsOfOrder(mail.Order));
    if (ids.empty()) {
      tables_.Blank();
      tables_.Mail = std::move(mail);
      FinishEmpty();
      return;
    }
    ArrangeRows(ids);
    tables_.Mail = std::move(mail);
    display_.EnableMnu();
    registry_.Damage().BeginLoad();
    display_.ShowPanel(9, "");
    bool anyEditable = false;
    for (std::int16_t row = 0; row < tables_.RuleCount; ++row) {
      anyEditable = LoadRow(row) || anyEditable;
    }
    display_.EnableContentMenus(anyEditable);
    registry_.Damage().EndLoad();
    TellOverlong();
  });
}

bool RuleLoader::RuleFromBdR(std::int16_t row) {
  return Trap(registry_.Boxes().Boxes(), "RuleFromBdR", [&] {
    auto& rule = tables_.RuleAt(row);
    const int damageBefore = registry_.Damage().Count();
    rule.blank = false;
    tables_.RuleLabel = rule.Id;
    {
      const OpenedKey key(registry_, KeyOf(row), false);
      if (key.IsOpen()) {
        registry_.QueryField("Rule", key.Handle(), "Name", rule.Name);
        tables_.RuleLabel = rule.Id + " - " + rule.Name;
        registry_.QueryField("Rule", key.Handle(), "Enabled", rule.Enabled);
        registry_.QueryField("Rule", key.Handle(), "Version", rule.Version);
      } else {
        registry_.Damage().BadValueReport("Rule");
      }
    }
    display_.LoadMnu(row, rule.Id + " " + rule.Name, true);
    ActionsFromBdR(row);
    CiteriaFromBdR(row);
    const bool editable = IsEditable(row);
    display_.EnableRuleEditing(row, editable);
    // A damaged rule is reported at each load, and so read at each.
    if (registry_.Damage().Count() == damageBefore) {
      rule.readMark = registry_.Store().ChangeMark(KeyOf(row)).value_or(0);
    }
    return editable;
  });
}

bool RuleLoader::IsEditable(int row) const {
  const auto& rule = tables_.RuleAt(row);
  if (rule.overfull || rule.overlong) return false;
  const auto& slots = tables_.FirstCriteria[Index(row)];
  const bool anySlot =
      std::any_of(slots.begin(), slots.end(), [](const auto& slot) { return !slot.Id.empty(); });
  // Without any criterion a rule can be given its first words; with only foreign ones it has
  // nothing that the window could show.
  return anySlot || tables_.Criteria[Index(row)] == 0;
}

std::uint8_t RuleLoader::CountEntries(const std::string& order, int row, const char* table) {
  const auto count = (order.size() + 1) / 4;
  if (count <= kMaxEntries) return static_cast<std::uint8_t>(count);
  tables_.RuleAt(row).overfull = true;
  registry_.Damage().BadValueReport(table);
  return 0;
}

void RuleLoader::ActionsFromBdR(int row) {
  Trap(registry_.Boxes().Boxes(), "ActionsFromBdR", [&] {
    auto& rule = tables_.RuleAt(row);
    {
      const OpenedKey key(registry_, KeyOf(row) + "\\Actions", false);
      if (!key.IsOpen()) {
        registry_.Damage().BadValueReport("Actions");
        return;
      }
      registry_.QueryField("Actions", key.Handle(), "Order", rule.ActionsOrder);
    }
    auto& count = tables_.Actions[Index(row)];
    count = CountEntries(rule.ActionsOrder, row, "Actions");
    rule.ActionsParam.Reserve(count);
    for (int entry = 0; entry < count; ++entry) {
      rule.ActionsParam[Index(entry)].Id = rule.ActionsOrder.substr(4 * Index(entry), 3);
      ActionsParamFromBdR(row, entry);
    }
  });
}

bool RuleLoader::IsWithoutCriteria(const std::string& order, const std::string& keyPath) {
  if (order != kFirstId) return false;
  return !OpenedKey(registry_, keyPath + "\\" + order, false).IsOpen();
}

void RuleLoader::CiteriaFromBdR(int row) {
  Trap(registry_.Boxes().Boxes(), "CiteriaFromBdR", [&] {
    auto& rule = tables_.RuleAt(row);
    const auto path = KeyOf(row) + "\\Criteria";
    {
      const OpenedKey key(registry_, path, false);
      if (!key.IsOpen()) {
        registry_.Damage().BadValueReport("Criteria");
        return;
      }
      registry_.QueryField("Criteria", key.Handle(), "Order", rule.CriteriaOrder);
    }
    if (IsWithoutCriteria(rule.CriteriaOrder, path)) return;
    auto& count = tables_.Criteria[Index(row)];
    count = CountEntries(rule.CriteriaOrder, row, "Criteria");
    rule.CriteriaParam.Reserve(count);
    for (int entry = 0; entry < count; ++entry) {
      rule.CriteriaParam[Index(entry)].Id = rule.CriteriaOrder.substr(4 * Index(entry), 3);
      CriteriaParamFromBdR(row, entry);
    }
  });
}

void RuleLoader::ActionsParamFromBdR(int row, int entry) {
  Trap(registry_.Boxes().Boxes(), "ActionsParamFromBdR", [&] {
    constexpr const char* kTable = "ActionsParam";
    auto& action = tables_.RuleAt(row).ActionsParam[Index(entry)];
    const OpenedKey key(registry_, KeyOf(row) + "\\Actions\\" + action.Id, false);
    if (!key.IsOpen()) {
      registry_.Damage().BadValueReport(kTable);
      return;
    }
    registry_.QueryField(kTable, key.Handle(), "Type", action.Type);
    const auto status = registry_.QueryField(kTable, key.Handle(), "Flags", action.Flags);
    if (status == kStatusNotFound) action.Flags = "0";
    if (!CarriesValue(ArgumentOfAction(action.Type))) return;
    registry_.QueryField(kTable, key.Handle(), "Value", action.Value);
    registry_.QueryField(kTable, key.Handle(), "ValueType", action.ValueType);
  });
}

void RuleLoader::CriteriaParamFromBdR(int row, int entry) {
  Trap(registry_.Boxes().Boxes(), "CriteriaParamFromBdR", [&] {
    constexpr const char* kTable = "CriteriaParam";
    auto& criterion = tables_.RuleAt(row).CriteriaParam[Index(entry)];
    const OpenedKey key(registry_, KeyOf(row) + "\\Criteria\\" + criterion.Id, false);
    if (!key.IsOpen()) {
      registry_.Damage().BadValueReport(kTable);
      return;
    }
    registry_.QueryField(kTable, key.Handle(), "Type", criterion.Type);
    registry_.QueryField(kTable, key.Handle(), "Flags", criterion.Flags);
    registry_.QueryField(kTable, key.Handle(), "Logic", criterion.Logic);
    if (CarriesValue(ArgumentOfCriterion(criterion.Type))) {
      registry_.QueryField(kTable, key.Handle(), "Value", criterion.Value);
      registry_.QueryField(kTable, key.Handle(), "ValueType", criterion.ValueType);
    }
    FillFirstCriteria(criterion, row);
  });
}

void RuleLoader::FillFirstCriteria(const CriterionRecord& criterion, int row) {
  Trap(registry_.Boxes().Boxes(), "FillFirstCriteria", [&] {
    const int slot = tables_.SlotOfType(criterion.Type);
    if (slot < 0) return;
    // A word takes a byte at least.
    if (criterion.Value.size() > kMaxWords && CountWords(criterion.Value) > kMaxWords) {
      tables_.RuleAt(row).overlong = true;
    }
    auto& owner = tables_.FirstCriteria[Index(row)][Index(slot)];
    // The first criterion of a kind owns the slot.
    if (owner.Id.empty()) owner = criterion;
  });
}

}  // namespace morvelle
