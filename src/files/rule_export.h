#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/messages/messages.h"
#include "core/deleted_items.h"
#include "core/rule_tables.h"
#include "files/line_sink.h"
#include "ports/progress.h"

namespace morvelle {

/// Writes rules as labels and values, one a line: a file that RuleFileReader reads back, or a
/// listing for paper.
class RuleExport {
 public:
  RuleExport(const Messages& messages, RuleTables& tables, DeletedItemsSource& deletedItems,
             LineSink& sink)
      : messages_(messages), tables_(tables), deletedItems_(deletedItems), sink_(sink) {}

  /// All rules, or with oneRule the rule of that row alone. A rule without actions gets its default
  /// action in the tables, where "Éléments supprimés" is known.
  void MailToFile(bool oneRule, int row, Progress& progress);

  /// Names of the rules of which the tables do not hold all: they are left out.
  [[nodiscard]] const std::vector<std::string>& LeftOut() const { return leftOut_; }
  /// Names of the rules in which a value breaks the lines of the file, so that it cannot be read
  /// back; "MAIL" for what stands before the rules.
  [[nodiscard]] const std::vector<std::string>& NotReadable() const { return notReadable_; }
  /// Names of the rules of which an action or a criterion has no type: what reads the file takes
  /// them for damaged.
  [[nodiscard]] const std::vector<std::string>& Damaged() const { return damaged_; }

 private:
  void AllRules(Progress& progress);
  [[nodiscard]] std::vector<int> WholeRules();
  void RuleToFile(int i, bool oneRule);
  void ActionsToFile(int i);
  void AcionsParamToFile(int i, std::uint8_t k);
  void CriteriaToFile(int i);
  void CriteriaParamToFile(int i, std::uint8_t k);
  void RepairActions(int i);
  void CriterionValue(const CriterionRecord& criterion);
  /// A label and its value, indented on paper.
  void Pair(int indent, std::string_view label, int valueIndent, std::string_view value);

  const Messages& messages_;
  RuleTables& tables_;
  DeletedItemsSource& deletedItems_;
  LineSink& sink_;
  std::vector<std::string> leftOut_;
  std::vector<std::string> notReadable_;
  std::vector<std::string> damaged_;
};

}  // namespace morvelle
