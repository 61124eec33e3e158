#include "core/rule_writer.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/entry_keys.h"
#include "core/entry_types.h"

namespace morvelle {

namespace {

constexpr std::string_view kTooManyEntries =
    "Cette règle ne peut être enregistrée : elle compterait plus de 12 critères ou actions"_cp;

constexpr std::string_view kTooManyWords =
    "Cette règle ne peut être enregistrée\u00A0: une de ses listes compte plus de 32\u00A0767 mots"_cp;

std::size_t Index(int row) { return static_cast<std::size_t>(row); }

/// An id as keys are told apart: without regard to letter case.
std::string KeyName(const std::string& id) { return LowerCase(id); }

/// Three characters of a damaged order may hold a "\\"; as a key's name they would lead elsewhere.
bool CanName(const std::string& id) { return !id.empty() && id.find('\\') == std::string::npos; }

/// The first id from that number up that no action has.
std::string FreeActionId(const std::vector<ActionRecord>& actions, std::size_t from) {
  for (auto number = static_cast<int>(from);; ++number) {
    auto id = ThreeDigitId(number);
    if (std::none_of(actions.begin(), actions.end(),
                     [&](const auto& action) { return EqualIgnoringCase(action.Id, id); })) {
      return id;
    }
  }
}

}  // namespace

bool RuleWriter::IsStored(WritePlan& plan, const RuleRecord& rule, std::string_view entries,
                          const std::string& id) const {
  return CanName(id) &&
         plan.KeyExists(EntryKey((mailKey_ + rule.Id).append(1, '\\').append(entries), id));
}

std::string RuleWriter::RefusalOf(int row) {
  const auto& rule = tables_.RuleAt(row);
  if (!IsThreeDigitId(rule.Id)) return std::string(kBadRuleId);
  if (rule.overfull) return std::string(kTooManyEntries);
  if (rule.overlong) return std::string(kTooManyWords);
  const bool movesToDeleted = rule.ActionsOrder.empty() && rule.ActionsParam[0].Type.empty();
  if (movesToDeleted && !IsDeletedItems(deletedItems_.DeletedItems())) {
    return std::string(kFoldersUnreadable);
  }
  return {};
}

PlannedRule RuleWriter::PlanRule(int row, SaveFlags flags) {
  return Trap(registry_.Boxes().Boxes(), "RuleToBdR", [&] {
    PlannedRule planned(row, registry_);
    planned.refusal = RefusalOf(row);
    if (planned.refusal.empty()) RuleToBdR(planned, flags);
    return planned;
  });
}

RegistryStatus RuleWriter::Apply(PlannedRule& planned) { return planned.plan.Apply(); }

void RuleWriter::RuleToBdR(PlannedRule& planned, SaveFlags flags) {
  const auto& rule = tables_.RuleAt(planned.row);
  const auto key = mailKey_ + rule.Id;
  PlanRulesVersion(planned.plan, mailKey_);
  planned.plan.SetValue(key, "Name", ValueKind::String, rule.Name);
  planned.plan.SetNumber(key, "Enabled", rule.Enabled);
  planned.plan.SetNumber(key, "Version", rule.Version);
  ActionsToBdR(planned, flags.closingAction);
  if (planned.refusal.empty() && !flags.skipCriteria) CriteriaToBdR(planned, flags.contentEdit);
}

void PlanRulesVersion(WritePlan& plan, const std::string& mailKey) {
  if (plan.KeyExists(mailKey) && !plan.LacksValue(mailKey, "Version")) return;
  plan.SetNumber(mailKey, "Version", std::to_string(kRuleStoreVersion));
}

std::vector<ActionRecord> RuleWriter::KeptActions(WritePlan& plan, int row) const {
  const auto& rule = tables_.RuleAt(row);
  std::vector<ActionRecord> all;
  std::vector<ActionRecord> kept;
  for (std::size_t j = 0; j < tables_.Actions[Index(row)]; ++j) {
    const auto& action = all.emplace_back(rule.ActionsParam[j]);
    // An order that names an action twice has it once; one that is not there, and was not chosen
    // in the window either, is none.
    const bool repeated = std::any_of(kept.begin(), kept.end(), [&](const auto& other) {
      return EqualIgnoringCase(other.Id, action.Id);
    });
    if (repeated) continue;
    if (action.Type.empty() && !IsStored(plan, rule, "Actions", action.Id)) continue;
    kept.push_back(action);
  }
  for (auto& action : kept) {
    if (!CanName(action.Id)) action.Id = FreeActionId(kept, 0);
  }
  // A rule that has lost all its actions is damaged: it is not one that was given none, which
  // would come to move its mail to the deleted items.
  return kept.empty() ? all : kept;
}

void RuleWriter::ActionsToBdR(PlannedRule& planned, bool closingAction) {
  const auto& rule = tables_.RuleAt(planned.row);
  auto& actions = planned.actions;
  planned.actionsOrder = rule.ActionsOrder;
  actions = KeptActions(planned.plan, planned.row);
  if (planned.actionsOrder.empty()) {
    planned.actionsOrder = "000";
    ActionRecord action = rule.ActionsParam[0];
    action.Id = planned.actionsOrder;
    if (action.Flags.empty()) action.Flags = "0";
    if (action.Type.empty()) {
      action.Type = kActionMove;
      action.Value = deletedItems_.DeletedItems() + '\0';
      action.ValueType = kValueTypeBytes;
    }
    actions = {std::move(action)};
  }
  if (closingAction && (actions.empty() || actions.back().Type != kActionStop)) {
    if (actions.size() == kMaxEntries) {
      planned.refusal = kTooManyEntries;
      return;
    }
    ActionRecord stop;
    stop.Id = FreeActionId(actions, actions.size());
    stop.Flags = "0";
    stop.Type = kActionStop;
    actions.push_back(std::move(stop));
  }
  std::vector<std::string> ids;
  ids.reserve(actions.size());
  for (const auto& action : actions) ids.push_back(action.Id);
  if (ids != IdsOfOrder(planned.actionsOrder)) planned.actionsOrder = JoinIds(ids);
  const auto key = mailKey_ + rule.Id + "\\Actions";
  planned.plan.SetValue(key, "Order", ValueKind::String, planned.actionsOrder);
  for (const auto& action : actions) PutAction(planned.plan, key, action);
}

std::vector<std::string> RuleWriter::StoredCriteria(int row) const {
  std::vector<std::string> ids;
  for (int j = 0; j < tables_.Criteria[Index(row)]; ++j) {
    const auto& id = tables_.RuleAt(row).CriteriaParam[Index(j)].Id;
    if (CanName(id)) ids.push_back(id);
  }
  return ids;
}

std::vector<RuleWriter::NewCriterion> RuleWriter::KeptCriteria(WritePlan& plan, int row,
                                                               bool slotsToo) {
  const auto& rule = tables_.RuleAt(row);
  const auto& owners = tables_.FirstCriteria[Index(row)];
  std::vector<NewCriterion> kept;
  for (int j = 0; j < tables_.Criteria[Index(row)]; ++j) {
    const auto& criterion = rule.CriteriaParam[Index(j)];
    // An order that names a criterion twice has it once.
    int same = 0;
    while (!EqualIgnoringCase(rule.CriteriaParam[Index(same)].Id, criterion.Id)) ++same;
    if (same < j) continue;
    const int slot = tables_.SlotOfType(criterion.Type);
    // The owner of a slot is written from its words. Where they could not be read and the user gave
    // none, it is kept as it is: a rule that lost its criterion would be about all mail.
    const bool owner = !slotsToo && slot >= 0 && owners[Index(slot)].Id == criterion.Id;
    if (owner && !(owners[Index(slot)].unreadable && display_.ListedWords(slot).empty())) continue;
    const bool stored = IsStored(plan, rule, "Criteria", criterion.Id);
    if (!stored && criterion.Type.empty()) continue;
    kept.push_back({criterion, stored ? criterion.Id : std::string{}, false});
  }
  return kept;
}

CriterionRecord RuleWriter::SlotCriterion(int row, int slot) {
  CriterionRecord criterion = tables_.FirstCriteria[Index(row)][Index(slot)];
  const bool edited =
      criterion.Id.empty() || DecodeWords(criterion.Value) != display_.ListedWords(slot);
  wordLists_.FillTable(slot);
  if (criterion.Flags.empty()) criterion.Flags = "0";
  criterion.Type = tables_.SlotType[Index(slot)];
  if (edited) criterion.Value = wordLists_.EnCodeValue(slot);
  criterion.ValueType = kValueTypeBytes;
  return criterion;
}

std::vector<RuleWriter::NewCriterion> RuleWriter::DecodeCriteria(WritePlan& plan, int row) {
  return Trap(registry_.Boxes().Boxes(), "DecodeCriteria", [&] {
    auto criteria = KeptCriteria(plan, row, false);
    for (int slot = 0; slot < kSlotCount; ++slot) {
      if (display_.ListedWords(slot).empty()) continue;
      auto record = SlotCriterion(row, slot);
      const bool stored = IsStored(plan, tables_.RuleAt(row), "Criteria", record.Id);
      auto storedId = stored ? record.Id : std::string{};
      criteria.push_back({std::move(record), std::move(storedId), true});
    }
    SetLogics(criteria, row);
    return criteria;
  });
}

void RuleWriter::SetLogics(std::vector<NewCriterion>& criteria, int row) const {
  const auto& chosen = tables_.FirstCriteria[Index(row)][0].Logic;
  for (auto& criterion : criteria) {
    auto& logic = criterion.record.Logic;
    if (!criterion.fromSlot) {
      if (editing_.logicChosen && criteria.size() >= 2) logic = chosen;
    } else if (criteria.size() < 2) {
      logic = "0";
    } else if (!IsAndOr(logic)) {
      logic = IsAndOr(chosen) ? chosen : "1";
    }
  }
}

void RuleWriter::CriteriaToBdR(PlannedRule& planned, bool contentEdit) {
  Trap(registry_.Boxes().Boxes(), "CriteriaToBdR", [&] {
    const int row = planned.row;
    auto criteria =
        contentEdit ? DecodeCriteria(planned.plan, row) : KeptCriteria(planned.plan, row, true);
    if (criteria.size() > kMaxEntries) {
      planned.refusal = kTooManyEntries;
      return;
    }
    std::vector<std::string> ids;
    for (auto& criterion : criteria) {
      criterion.record.Id = ThreeDigitId(static_cast<int>(ids.size()));
      ids.push_back(criterion.record.Id);
    }
    const auto key = mailKey_ + tables_.RuleAt(row).Id + "\\Criteria";
    PlanCriteriaKeys(planned.plan, row, key, criteria);
    for (const auto& criterion : criteria) {
      // A kept criterion that lacks a value goes on lacking it.
      const bool kept = !criterion.storedId.empty() && !criterion.fromSlot;
      PutCriterion(planned.plan, key, criterion.record, criterion.storedId,
                   kept ? Missing::StaysOut : Missing::IsZero);
    }
    planned.criteriaOrder = ids.empty() ? "000" : JoinIds(ids);
    planned.plan.SetValue(key, "Order", ValueKind::String, planned.criteriaOrder);
    planned.criteriaPlanned = true;
    for (auto& criterion : criteria) planned.criteria.push_back(std::move(criterion.record));
  });
}

void RuleWriter::PlanCriteriaKeys(WritePlan& plan, int row, const std::string& criteriaKey,
                                  const std::vector<NewCriterion>& criteria) {
  // A rule that is not stored yet has nothing to be moved or emptied.
  if (!plan.KeyExists(criteriaKey)) return;
  std::unordered_set<std::string> sources;
  std::vector<KeyRename> renames;
  auto emptied = StoredCriteria(row);
  // An order "000" with a key 000 would be one criterion, not none.
  if (criteria.empty()) emptied.emplace_back("000");
  bool moved = false;
  for (const auto& criterion : criteria) {
    if (criterion.storedId.empty()) {
      emptied.push_back(criterion.record.Id);
      continue;
    }
    sources.insert(KeyName(criterion.storedId));
    moved = moved || !EqualIgnoringCase(criterion.storedId, criterion.record.Id);
    renames.push_back({criterion.storedId, criterion.record.Id});
  }
  std::unordered_set<std::string> done;
  for (const auto& id : emptied) {
    const auto name = KeyName(id);
    if (sources.count(name) != 0 || !done.insert(name).second) continue;
    plan.DeleteKey(std::string(criteriaKey).append("\\").append(id));
  }
  if (moved) plan.RenameSubkeys(criteriaKey, std::move(renames));
}

void RuleWriter::Settle(const PlannedRule& planned) {
  tables_.Touch(planned.row);
  auto& rule = tables_.RuleAt(planned.row);
  rule.ActionsOrder = planned.actionsOrder;
  rule.ActionsParam = planned.actions;
  tables_.Actions[Index(planned.row)] = static_cast<std::uint8_t>(planned.actions.size());
  if (!planned.criteriaPlanned) return;
  rule.CriteriaOrder = planned.criteriaOrder;
  rule.CriteriaParam = planned.criteria;
  tables_.Criteria[Index(planned.row)] = static_cast<std::uint8_t>(planned.criteria.size());
  auto& slots = tables_.FirstCriteria[Index(planned.row)];
  slots = {};
  for (const auto& criterion : planned.criteria) {
    const int slot = tables_.SlotOfType(criterion.Type);
    if (slot >= 0 && slots[Index(slot)].Id.empty()) slots[Index(slot)] = criterion;
  }
}

RegistryStatus RuleWriter::VersionToBdR() {
  WritePlan plan(registry_);
  PlanRulesVersion(plan, mailKey_);
  return plan.Apply();
}

RegistryStatus RuleWriter::MailTopToBdR() {
  return Trap(registry_.Boxes().Boxes(), "MailTopToBdR", [&] {
    WritePlan plan(registry_);
    PlanRulesVersion(plan, mailKey_);
    // An order that lists no rule would hide every rule of the mail client.
    if (!tables_.Mail.Order.empty() || tables_.RuleCount == 0) {
      plan.SetValue(mailKey_, "Order", ValueKind::String, tables_.Mail.Order);
    }
    return plan.Apply();
  });
}

RegistryStatus RuleWriter::NameToBdR(int row, const std::string& name) {
  return Trap(registry_.Boxes().Boxes(), "NameToBdR", [&] {
    const auto key = mailKey_ + tables_.RuleAt(row).Id;
    // A name alone makes no rule: the key of one that is gone is not made again.
    WritePlan plan(registry_);
    if (!plan.KeyExists(key)) return kStatusNotFound;
    PlanRulesVersion(plan, mailKey_);
    plan.SetValue(key, "Name", ValueKind::String, name);
    return plan.Apply();
  });
}

RegistryStatus RuleWriter::DeleteRule(int row) {
  return Trap(registry_.Boxes().Boxes(), "DeleteRule", [&] {
    const auto& id = tables_.RuleAt(row).Id;
    WritePlan plan(registry_);
    // Another id is no rule's: three characters of a damaged order may lead anywhere.
    if (IsThreeDigitId(id)) plan.DeleteKey(mailKey_ + id);
    return plan.Apply();
  });
}

RegistryStatus RuleWriter::DeleteOrder() {
  return Trap(registry_.Boxes().Boxes(), "DeleteOrder", [&] {
    WritePlan plan(registry_);
    PlanRulesVersion(plan, mailKey_);
    plan.DeleteValue(mailKey_, "Order");
    return plan.Apply();
  });
}

std::string IdOfLine(const std::string& line) {
  const bool marked =
      line.size() >= 2 && (line[0] == '*' || line[0] == ' ') && (line[1] == ' ' || line[1] == '\t');
  return line.substr(marked ? 2 : 0, 3);
}

std::string SettledOrder(const std::vector<std::string>& lines, const RuleTables& tables,
                         std::string_view without) {
  // An arrangement may have pushed rules out of the rows: what was loaded stands in the order too.
  auto former = IdsOfOrder(tables.Mail.Order);
  for (int row = 0; row < tables.RuleCount; ++row) former.push_back(tables.RuleAt(row).Id);
  std::unordered_map<std::string, std::string> left;
  for (const auto& id : former) left.emplace(LowerCase(id), id);
  left.erase(LowerCase(without));
  std::vector<std::string> ids;
  const auto take = [&](const std::string& id) {
    const auto found = left.find(LowerCase(id));
    if (found == left.end()) return;
    ids.push_back(std::move(found->second));
    left.erase(found);
  };
  for (const auto& line : lines) take(IdOfLine(line));
  for (const auto& id : former) take(id);
  return JoinIds(ids);
}

}  // namespace morvelle
