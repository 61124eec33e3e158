#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/displays.h"
#include "core/registry_access.h"
#include "core/rule_tables.h"

namespace morvelle {

/// Reads the identity's rules from the registry into the tables and shows them.
class RuleLoader {
 public:
  /// `mailKey`: path of the rules key, ending with "\", as the identity holds it.
  RuleLoader(RegistryAccess& registry, const std::string& mailKey, RuleTables& tables,
             RuleDisplay& display)
      : registry_(registry), mailKey_(mailKey), tables_(tables), display_(display) {}

  /// Loads the whole rule set. A rule that was loaded before is read again only when it was changed
  /// in the tables or in the store, or when the store cannot tell.
  void MailFromBdR();

  /// Loads the rule of a row; true when its words can be edited.
  bool RuleFromBdR(std::int16_t row);

 private:
  /// What the tables hold of one rule.
  struct LoadedRule {
    RuleRecord rule;
    std::uint8_t actions = 0;
    std::uint8_t criteria = 0;
    std::array<CriterionRecord, kSlotCount> slots;
  };

  /// Order and version; where the order is there and cannot be read, that of the rules' keys.
  [[nodiscard]] MailRecord ReadMail();
  /// The ids under which rules are stored, upwards.
  [[nodiscard]] std::vector<std::string> StoredRules();
  void TellOverlong();
  /// Gives the tables one row for each id. What was loaded of a rule goes to its new row.
  void ArrangeRows(const std::vector<std::string>& ids);
  void BlankRow(int row);
  /// Whether the store still says what the row was read from.
  [[nodiscard]] bool StillHolds(int row) const;
  /// Reads a rule where it has to be, and shows it.
  bool LoadRow(std::int16_t row);
  void ActionsFromBdR(int row);
  void CiteriaFromBdR(int row);
  void ActionsParamFromBdR(int row, int entry);
  void CriteriaParamFromBdR(int row, int entry);
  void FillFirstCriteria(const CriterionRecord& criterion, int row);
  void FinishEmpty();
  /// Number of entries of an "Order", 0 after marking the rule when the tables cannot hold them.
  std::uint8_t CountEntries(const std::string& order, int row, const char* table);
  [[nodiscard]] bool IsEditable(int row) const;
  [[nodiscard]] bool IsWithoutCriteria(const std::string& order, const std::string& keyPath);
  [[nodiscard]] std::string KeyOf(int row) const { return mailKey_ + tables_.RuleAt(row).Id; }

  RegistryAccess& registry_;
  const std::string& mailKey_;
  RuleTables& tables_;
  RuleDisplay& display_;
};

}  // namespace morvelle
