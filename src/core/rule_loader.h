#pragma once

#include <string>

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

  /// Loads the whole rule set.
  void MailFromBdR();

  /// Loads the rule of a row; true when its words can be edited.
  bool RuleFromBdR(std::int16_t row);

 private:
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
