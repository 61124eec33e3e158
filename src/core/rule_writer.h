#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/messages/text.h"
#include "core/deleted_items.h"
#include "core/editing_state.h"
#include "core/registry_access.h"
#include "core/rule_tables.h"
#include "core/word_lists.h"
#include "core/write_plan.h"

namespace morvelle {

/// Said where a rule stands under an id that cannot be written.
inline constexpr std::string_view kBadRuleId =
    "Cette règle ne peut être enregistrée : son numéro n'est pas valable"_cp;

/// What a save of a rule takes into account.
struct SaveFlags {
  /// The rule is the open one and its word lists are the window's.
  bool contentEdit = false;
  /// A "stop processing rules" action is added when the rule does not end with one.
  bool closingAction = false;
  /// Criteria stay as they are stored.
  bool skipCriteria = false;
};

/// A rule ready to be written.
struct PlannedRule {
  PlannedRule(int rowPlanned, RegistryAccess& registry) : row(rowPlanned), plan(registry) {}

  int row;
  /// Why the rule cannot be saved, for the user; empty when it can.
  std::string refusal;
  WritePlan plan;
  std::string actionsOrder;
  std::vector<ActionRecord> actions;
  /// Left as they are when empty and `criteriaPlanned` is false.
  bool criteriaPlanned = false;
  std::string criteriaOrder;
  std::vector<CriterionRecord> criteria;
};

/// Puts rules back into the registry. A save is planned, applied inside the command's batch, and
/// settled in the tables once the batch has reached the store.
class RuleWriter {
 public:
  RuleWriter(RegistryAccess& registry, const std::string& mailKey, RuleTables& tables,
             EditingState& editing, WordLists& wordLists, const WordListDisplay& display,
             DeletedItemsSource& deletedItems)
      : registry_(registry),
        mailKey_(mailKey),
        tables_(tables),
        editing_(editing),
        wordLists_(wordLists),
        display_(display),
        deletedItems_(deletedItems) {}

  /// Why the rule cannot be saved, whatever is planned for it; empty when it can.
  [[nodiscard]] std::string RefusalOf(int row);
  [[nodiscard]] PlannedRule PlanRule(int row, SaveFlags flags);
  [[nodiscard]] static RegistryStatus Apply(PlannedRule& planned);
  void Settle(const PlannedRule& planned);

  /// Writes the version of a rules key that has none.
  RegistryStatus VersionToBdR();
  /// Writes Mail.Order. The order is pending no more once the command's batch is stored: that is
  /// for the caller to note.
  RegistryStatus MailTopToBdR();
  /// Takes the order of an empty rule set away.
  RegistryStatus DeleteOrder();

  /// Writes a rule's name and nothing else of it; status 2 when its key is gone.
  RegistryStatus NameToBdR(int row, const std::string& name);
  /// Deletes a rule's key; one that is gone already counts as deleted. The order is left alone.
  RegistryStatus DeleteRule(int row);

 private:
  /// A criterion of the rule as it will be: where it lies now, and which slot it comes from.
  struct NewCriterion {
    CriterionRecord record;
    std::string storedId;  ///< Empty when it is not stored yet.
    bool fromSlot;
  };

  void RuleToBdR(PlannedRule& planned, SaveFlags flags);
  void ActionsToBdR(PlannedRule& planned, bool closingAction);
  void CriteriaToBdR(PlannedRule& planned, bool contentEdit);
  [[nodiscard]] std::vector<NewCriterion> DecodeCriteria(WritePlan& plan, int row);
  [[nodiscard]] std::vector<NewCriterion> KeptCriteria(WritePlan& plan, int row, bool slotsToo);
  [[nodiscard]] CriterionRecord SlotCriterion(int row, int slot);
  void SetLogics(std::vector<NewCriterion>& criteria, int row) const;
  void PlanCriteriaKeys(WritePlan& plan, int row, const std::string& criteriaKey,
                        const std::vector<NewCriterion>& criteria);
  [[nodiscard]] std::vector<ActionRecord> KeptActions(WritePlan& plan, int row) const;
  /// Whether an entry of the rule, under "Actions" or "Criteria", has a key of its own.
  [[nodiscard]] bool IsStored(WritePlan& plan, const RuleRecord& rule, std::string_view entries,
                              const std::string& id) const;
  [[nodiscard]] std::vector<std::string> StoredCriteria(int row) const;

  RegistryAccess& registry_;
  const std::string& mailKey_;
  RuleTables& tables_;
  EditingState& editing_;
  WordLists& wordLists_;
  const WordListDisplay& display_;
  DeletedItemsSource& deletedItems_;
};

/// What the first write of a run gives to a rules key that lacks it: its version.
void PlanRulesVersion(WritePlan& plan, const std::string& mailKey);

/// The id that a line of the rule list names: it stands after the two-character marker, or at the
/// start of a line that has none.
std::string IdOfLine(const std::string& line);

/// The order to be written, from the lines of the rule list. Repeats are dropped, loaded rules that
/// are missing follow in their former order; the rule `without` is left out.
std::string SettledOrder(const std::vector<std::string>& lines, const RuleTables& tables,
                         std::string_view without = {});

}  // namespace morvelle
