#pragma once

#include <map>
#include <set>

#include "core/command_batch.h"
#include "core/rule_loader.h"
#include "core/rule_writer.h"
#include "tests/support/rule_set.h"
#include "tests/support/scripted_dialogs.h"

namespace morvelle {

/// What the rule model shows, kept to be looked at.
class RecordedDisplay : public RuleDisplay, public WordListDisplay {
 public:
  std::map<int, std::string> panels;
  std::vector<std::string> rules;
  std::set<int> editable;
  bool contentMenus = false;
  bool imports = false;
  std::array<std::vector<std::string>, kSlotCount> lists;
  std::array<std::string, kSlotCount> counts;

  void ShowPanel(int number, std::string_view text) override { panels[number] = text; }
  void BeginLoad() override {
    rules.clear();
    editable.clear();
  }
  void LoadMnu(int, std::string_view text, bool) override { rules.emplace_back(text); }
  void EnableMnu() override {}
  void EnableRuleEditing(int index, bool enable) override {
    if (enable) editable.insert(index);
  }
  void EnableContentMenus(bool enable) override { contentMenus = enable; }
  void EnableImports() override { imports = true; }
  [[nodiscard]] const std::vector<std::string>& ListedWords(int slot) const override {
    return lists[static_cast<std::size_t>(slot)];
  }
  void ShowWordCount(int slot, std::string_view text) override {
    counts[static_cast<std::size_t>(slot)] = text;
  }
};

inline std::string ShownCriterion(const CriterionRecord& record) {
  return "\n" + record.Id + "|" + record.Flags + "|" + record.Logic + "|" + record.Type + "|" +
         record.Value + "|" + record.ValueType;
}

/// A rule as the tables hold it; "+" stands before what lies behind the entries that count.
inline std::string ShownRow(const RuleTables& tables, int row) {
  const auto at = static_cast<std::size_t>(row);
  const auto& rule = tables.RuleAt(row);
  auto text = rule.Id + " " + rule.Name + " " + rule.Enabled + " " + rule.Version + "\n" +
              rule.ActionsOrder;
  for (std::size_t j = 0; j < kMaxEntries; ++j) {
    const auto& action = rule.ActionsParam[j];
    const bool counts = j < tables.Actions[at];
    if (!counts && action.Type.empty()) continue;
    text += (counts ? "\n" : "+\n") + action.Id + "|" + action.Flags + "|" + action.Type + "|" +
            action.Value + "|" + action.ValueType;
  }
  text += "\n" + rule.CriteriaOrder;
  for (std::size_t j = 0; j < kMaxEntries; ++j) {
    const auto& criterion = rule.CriteriaParam[j];
    const bool counts = j < tables.Criteria[at];
    if (counts || !criterion.Type.empty()) text += (counts ? "" : "+") + ShownCriterion(criterion);
  }
  for (const auto& slot : tables.FirstCriteria[at]) text += ShownCriterion(slot);
  return text;
}

/// All the rules.
inline std::string ShownRows(const RuleTables& tables) {
  std::string text;
  for (int row = 0; row < tables.RuleCount; ++row) text += ShownRow(tables, row) + "\n";
  return text;
}

/// The rule model over a store of a test's own, as the window stands over it.
class RuleModel : public DeletedItemsSource {
 public:
  RuleModel() { tables.SlotType = {"12", "8", "9", "22"}; }

  FakeRegistry store;
  RuleSet set{store};
  ScriptedDialogs dialogs;
  Messages messages{dialogs};
  RuleTables tables;
  EditingState editing;
  RecordedDisplay display;
  /// Value of "Éléments supprimés", less its closing zero.
  std::string deletedItems = "stored01\x04~~";
  DamageReport damage{messages, tables.RuleLabel};
  RegistryAccess registry{store, messages, damage};
  WordLists wordLists{messages, tables, display};
  RuleLoader loader{registry, kTestMailKey, tables, display};
  RuleWriter writer{registry, kTestMailKey, tables, editing, wordLists, display, *this};

  const std::string& DeletedItems() override { return deletedItems; }

  /// Loads the rule set and shows the words of a rule.
  void Open(int row = 0) {
    loader.MailFromBdR();
    for (std::size_t slot = 0; slot < kSlotCount; ++slot) {
      const auto& record = tables.FirstCriteria[static_cast<std::size_t>(row)][slot];
      display.lists[slot] = DecodeWords(record.Value);
    }
  }
  /// Saves a rule as one command; false when it was refused or not stored.
  bool Save(int row = 0, SaveFlags flags = {.contentEdit = true}) {
    auto planned = writer.PlanRule(row, flags);
    refusal = planned.refusal;
    if (!refusal.empty()) return false;
    CommandBatch batch(store, messages);
    if (!batch.Commit(RuleWriter::Apply(planned))) return false;
    writer.Settle(planned);
    return true;
  }
  std::string refusal;

  [[nodiscard]] std::string Dump() { return DumpOf(store); }
  [[nodiscard]] std::string Row(int row = 0) const { return ShownRow(tables, row); }
};

}  // namespace morvelle
