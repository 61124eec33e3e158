#include "files/rule_export.h"

#include <algorithm>
#include <compare>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/entry_types.h"
#include "core/word_lists.h"
#include "files/labels.h"
#include "files/rule_file_reader.h"

namespace morvelle {

namespace {

/// Blanks before a line on paper.
constexpr int kTop = 5;
constexpr int kTopValue = 10;
constexpr int kMailItem = 10;
constexpr int kMailValue = 15;
constexpr int kSection = 15;
constexpr int kEntry = 20;
constexpr int kEntryValue = 25;

/// A folder's value ends with what no reader wants to see.
constexpr std::size_t kFolderEnd = 3;

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

}  // namespace

void RuleExport::Pair(int indent, std::string_view label, int valueIndent, std::string_view value) {
  sink_.Line(indent, label);
  sink_.Line(valueIndent, value);
}

void RuleExport::MailToFile(bool oneRule, int row, Progress& progress) {
  if (!oneRule) {
    AllRules(progress);
  } else if (tables_.RuleAt(row).overfull) {
    leftOut_.push_back(tables_.RuleAt(row).Name);
  } else {
    RuleToFile(row, true);
    sink_.Marker(labels::kEndOfMail);
  }
}

std::vector<int> RuleExport::WholeRules() {
  std::vector<int> rows;
  for (int row = 0; row < tables_.RuleCount; ++row) {
    const auto& rule = tables_.RuleAt(row);
    if (rule.overfull) {
      leftOut_.push_back(rule.Name);
    } else {
      rows.push_back(row);
    }
  }
  return rows;
}

void RuleExport::AllRules(Progress& progress) {
  const auto rows = WholeRules();
  auto order = tables_.Mail.Order;
  // The order tells the reader how many rules follow.
  if (IdsOfOrder(order).size() != rows.size()) {
    std::vector<std::string> ids;
    ids.reserve(rows.size());
    for (const int row : rows) ids.push_back(tables_.RuleAt(row).Id);
    order = JoinIds(ids);
  }
  sink_.Line(kTop, labels::kMail);
  Pair(kMailItem, labels::kOrder, kMailValue, order);
  Pair(kMailItem, labels::kVersion, kMailValue, tables_.Mail.Version);
  sink_.Marker(labels::kEndOfTop);
  if (!sink_.OnPaper() && !rows.empty() && !ReadsBackTop(sink_.FileText())) {
    notReadable_.emplace_back(labels::kMail);
  }
  ProgressOf work(progress,
                  std::string(sink_.OnPaper() ? "Mise en page des règles ..."_cp
                                              : "Exportation des règles ..."_cp),
                  static_cast<int>(rows.size()));
  int done = 0;
  for (const int row : rows) {
    RuleToFile(row, false);
    work.Done(++done);
  }
  sink_.Marker(labels::kEndOfMail);
}

void RuleExport::RuleToFile(int i, bool oneRule) {
  Trap(messages_.Boxes(), "RuleToFile", [&] {
    const auto begin = sink_.FileText().size();
    const auto& rule = tables_.RuleAt(i);
    if (!oneRule) {
      sink_.Gap();
      Pair(kTop, labels::kRuleId, kTop, rule.Id);
    }
    Pair(kTop, labels::kRuleName, kTopValue, rule.Name);
    Pair(kTop, labels::kRuleVersion, kTopValue, rule.Version);
    Pair(kTop, labels::kRuleEnabled, kTopValue, rule.Enabled);
    ActionsToFile(i);
    CriteriaToFile(i);
    sink_.Marker(labels::kEndOfRule);
    if (sink_.OnPaper()) return;
    const auto read = ReadBlock(std::string_view(sink_.FileText()).substr(begin),
                                oneRule ? RuleFileKind::OneRule : RuleFileKind::AllRules);
    if (!read) {
      notReadable_.push_back(rule.Name);
    } else if (read->damaged) {
      damaged_.push_back(rule.Name);
    }
  });
}

void RuleExport::RepairActions(int i) {
  auto& rule = tables_.RuleAt(i);
  if (!rule.ActionsOrder.empty()) return;
  auto& action = rule.ActionsParam[0];
  if (action.Type.empty() || action.Value.empty()) {
    const auto& folder = deletedItems_.DeletedItems();
    // An action that names no folder would move mail nowhere.
    if (!IsDeletedItems(folder)) return;
    action.Flags = "0";
    action.Type = kActionMove;
    action.ValueType = kValueTypeBytes;
    action.Value = folder + '\0';
  }
  tables_.Touch(i);
  rule.ActionsOrder = "000";
  action.Id = "000";
  tables_.Actions[Index(i)] = 1;
}

void RuleExport::ActionsToFile(int i) {
  Trap(messages_.Boxes(), "ActionsToFile", [&] {
    RepairActions(i);
    sink_.Gap();
    sink_.Line(kSection, labels::kActions);
    Pair(kEntry, labels::kActionsOrder, kEntryValue, tables_.RuleAt(i).ActionsOrder);
    for (std::uint8_t k = 0; k < tables_.Actions[Index(i)]; ++k) AcionsParamToFile(i, k);
  });
}

void RuleExport::AcionsParamToFile(int i, std::uint8_t k) {
  Trap(messages_.Boxes(), "AcionsParamToFile", [&] {
    const auto& action = tables_.RuleAt(i).ActionsParam[k];
    sink_.Gap();
    Pair(kEntry, labels::kActionId, kEntryValue, action.Id);
    Pair(kEntry, labels::kActionFlags, kEntryValue, action.Flags);
    Pair(kEntry, labels::kActionType, kEntryValue, action.Type);
    if (!labels::HasActionValue(action.Type)) return;
    Pair(kEntry, labels::kActionValueType, kEntryValue, action.ValueType);
    std::string_view value = action.Value;
    if (sink_.OnPaper() && ToLongOrZero(action.Type) == ToLongOrZero(std::string(kActionMove))) {
      value.remove_suffix(std::min(value.size(), kFolderEnd));
    }
    Pair(kEntry, labels::kActionValue, kEntryValue, value);
  });
}

void RuleExport::CriteriaToFile(int i) {
  Trap(messages_.Boxes(), "CriteriaToFile", [&] {
    sink_.Gap();
    sink_.Line(kSection, labels::kCriteria);
    Pair(kEntry, labels::kCriteriaOrder, kEntryValue, tables_.RuleAt(i).CriteriaOrder);
    for (std::uint8_t k = 0; k < tables_.Criteria[Index(i)]; ++k) CriteriaParamToFile(i, k);
  });
}

void RuleExport::CriteriaParamToFile(int i, std::uint8_t k) {
  Trap(messages_.Boxes(), "CriteriaParamToFile", [&] {
    const auto& criterion = tables_.RuleAt(i).CriteriaParam[k];
    sink_.Gap();
    Pair(kEntry, labels::kCriterionId, kEntryValue, criterion.Id);
    Pair(kEntry, labels::kCriterionFlags, kEntryValue, criterion.Flags);
    Pair(kEntry, labels::kCriterionLogic, kEntryValue, criterion.Logic);
    Pair(kEntry, labels::kCriterionType, kEntryValue, criterion.Type);
    if (!labels::HasCriterionValue(criterion.Type)) return;
    Pair(kEntry, labels::kCriterionValueType, kEntryValue, criterion.ValueType);
    sink_.Line(kEntry, labels::kCriterionValue);
    CriterionValue(criterion);
  });
}

void RuleExport::CriterionValue(const CriterionRecord& criterion) {
  if (!sink_.OnPaper() || tables_.SlotOfType(criterion.Type) < 0) {
    sink_.Line(kEntryValue, criterion.Value);
    return;
  }
  // Into a list of its own: the editor's lists are those of the open rule.
  auto words = DecodeWords(criterion.Value);
  std::sort(words.begin(), words.end(), [](const auto& left, const auto& right) {
    return std::is_lt(CompareBinary(left, right));
  });
  for (const auto& word : words) sink_.Line(kEntryValue, word);
}

namespace labels {

bool HasActionValue(const std::string& type) {
  const auto number = ToLongOrZero(type);
  return number == 1 || number == 2 || number == 5 || number == 6 || number == 10 || number == 17;
}

bool HasCriterionValue(const std::string& type) {
  const auto number = ToLongOrZero(type);
  return (number >= 8 && number <= 13) || number == 15 || number == 19 || number == 22 ||
         number == 31;
}

}  // namespace labels

}  // namespace morvelle
