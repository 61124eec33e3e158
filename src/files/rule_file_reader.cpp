#include "files/rule_file_reader.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/entry_types.h"
#include "files/labels.h"

namespace morvelle {

namespace {

/// The text ends where a line was still expected, or a line holds what cannot stand there.
struct NotImportable : std::exception {};
struct MarkerMissing : std::exception {};

class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) {}

  [[nodiscard]] bool AtEnd() const { return at_ == text_.size(); }
  [[nodiscard]] std::string_view Peek() const {
    return AtEnd() ? std::string_view{} : text_.substr(at_, End() - at_);
  }
  /// The next line, which ends at a carriage return followed by a line feed: a value may hold
  /// either alone. The last one may lack them.
  std::string_view Take() {
    if (AtEnd()) throw NotImportable();
    const auto end = End();
    auto line = text_.substr(at_, end - at_);
    if (end == text_.size() && line.ends_with('\r')) line.remove_suffix(1);
    at_ = std::min(end + 2, text_.size());
    return line;
  }
  void Skip() { Take(); }
  std::string TakeValue() {
    Skip();
    return std::string(Take());
  }
  /// A number as the tables hold it: its digits, or nothing. Types are told apart by them alone,
  /// and no save could convert a blank or a "+" before them.
  std::string TakeNumber() { return Numeric(TakeValue()); }
  static std::string Numeric(std::string text) {
    if (text.empty() || IsPlainNumber(text)) return text;
    try {
      return std::to_string(ToLong(text));
    } catch (const RuntimeError&) {
      throw NotImportable();
    }
  }
  void CheckFile(std::string_view marker) {
    if (AtEnd() || Take() != marker) throw MarkerMissing();
  }

 private:
  [[nodiscard]] std::size_t End() const { return std::min(text_.find("\r\n", at_), text_.size()); }

  std::string_view text_;
  std::size_t at_ = 0;
};

std::size_t CountOf(std::string_view order) {
  const auto count = (order.size() + 1) / 4;
  if (count > kMaxEntries) throw NotImportable();
  return count;
}

std::string CheckedValue(Argument argument, std::string value) {
  return argument == Argument::Number ? Lines::Numeric(std::move(value)) : value;
}

ActionRecord ActionsParamFromFile(Lines& lines) {
  ActionRecord action;
  lines.TakeValue();
  action.Flags = lines.TakeNumber();
  action.Type = lines.TakeNumber();
  if (!labels::HasActionValue(action.Type)) return action;
  action.ValueType = lines.TakeNumber();
  action.Value = CheckedValue(ArgumentOfAction(action.Type), lines.TakeValue());
  return action;
}

CriterionRecord CriteriaParamFromFile(Lines& lines) {
  CriterionRecord criterion;
  lines.TakeValue();
  criterion.Flags = lines.TakeNumber();
  criterion.Logic = lines.TakeNumber();
  criterion.Type = lines.TakeNumber();
  if (!labels::HasCriterionValue(criterion.Type)) return criterion;
  criterion.ValueType = lines.TakeNumber();
  criterion.Value = CheckedValue(ArgumentOfCriterion(criterion.Type), lines.TakeValue());
  return criterion;
}

void ActionsFromFile(Lines& lines, RuleBlock& block) {
  lines.Skip();
  const auto count = CountOf(lines.TakeValue());
  block.actions.reserve(count);
  for (std::size_t k = 0; k < count; ++k) {
    auto action = ActionsParamFromFile(lines);
    // What was damaged when it was exported holds nothing.
    if (action.Type.empty()) continue;
    action.Id = ThreeDigitId(static_cast<int>(block.actions.size()));
    block.actions.push_back(std::move(action));
  }
}

void CriteriaFromFile(Lines& lines, RuleBlock& block) {
  lines.Skip();
  const auto order = lines.TakeValue();
  // A rule without criteria has the order "000".
  const bool none = order == "000" && lines.Peek() == labels::kEndOfRule;
  const auto count = none ? 0 : CountOf(order);
  block.criteria.reserve(count);
  for (std::size_t k = 0; k < count; ++k) {
    auto criterion = CriteriaParamFromFile(lines);
    if (criterion.Type.empty()) continue;
    criterion.Id = ThreeDigitId(static_cast<int>(block.criteria.size()));
    block.criteria.push_back(std::move(criterion));
  }
}

void RuleFromFile(Lines& lines, RuleFileKind kind, RuleBlock& block) {
  if (kind == RuleFileKind::AllRules) lines.TakeValue();
  block.Name = lines.TakeValue();
  block.Version = lines.TakeNumber();
  block.Enabled = lines.TakeNumber();
  ActionsFromFile(lines, block);
  CriteriaFromFile(lines, block);
}

/// How many rules follow; with none the rest is left unread.
std::size_t TopFromFile(Lines& lines, RuleFile& file) {
  lines.Skip();
  const auto count = (lines.TakeValue().size() + 1) / 4;
  if (count == 0) return 0;
  file.version = lines.TakeNumber();
  lines.CheckFile(labels::kEndOfTop);
  return count;
}

/// Puts the entries in their places of the row and gives their order.
template <typename Record>
std::string FillEntries(std::array<Record, kMaxEntries>& places, std::vector<Record>& entries) {
  std::string order;
  for (std::size_t k = 0; k < entries.size(); ++k) {
    if (k > 0) order += ' ';
    order += entries[k].Id;
    places[k] = std::move(entries[k]);
  }
  return order;
}

}  // namespace

void FillRow(RuleTables& tables, int row, const std::string& id, RuleBlock block) {
  const auto at = static_cast<std::size_t>(row);
  auto& rule = tables.RuleAt(row);
  if (!rule.blank) rule = {};
  rule.blank = false;
  rule.Id = id;
  rule.Name = std::move(block.Name);
  rule.Version = std::move(block.Version);
  rule.Enabled = std::move(block.Enabled);
  rule.ActionsOrder = FillEntries(rule.ActionsParam, block.actions);
  rule.CriteriaOrder = FillEntries(rule.CriteriaParam, block.criteria);
  tables.Actions[at] = static_cast<std::uint8_t>(block.actions.size());
  tables.Criteria[at] = static_cast<std::uint8_t>(block.criteria.size());
  tables.FirstCriteria[at] = {};
  for (std::size_t k = 0; k < block.criteria.size(); ++k) {
    const auto& criterion = rule.CriteriaParam[k];
    const int slot = tables.SlotOfType(criterion.Type);
    // The first criterion of a kind owns the slot.
    if (slot >= 0 && tables.SlotOf(row, slot).Id.empty()) tables.SlotOf(row, slot) = criterion;
  }
}

std::string ExtensionOf(RuleFileKind kind) { return kind == RuleFileKind::OneRule ? "roe" : "moe"; }

RuleFile ReadRuleFile(std::string_view text, RuleFileKind kind) {
  RuleFile file;
  Lines lines(text);
  try {
    std::size_t count = 1;
    if (kind == RuleFileKind::AllRules) {
      count = TopFromFile(lines, file);
      if (count == 0) return file;
    }
    // As many as an identity can hold, whatever an order claims.
    file.rules.reserve(std::min<std::size_t>(count, kMaxRules));
    for (std::size_t k = 0; k < count; ++k) {
      RuleFromFile(lines, kind, file.rules.emplace_back());
      lines.CheckFile(labels::kEndOfRule);
    }
    lines.CheckFile(labels::kEndOfMail);
    file.verdict = RuleFileVerdict::Good;
  } catch (const NotImportable&) {
    file.verdict = RuleFileVerdict::NotImportable;
  } catch (const MarkerMissing&) {
    file.verdict = RuleFileVerdict::BadlySaved;
  }
  return file;
}

bool ReadsBackTop(std::string_view top) {
  Lines lines(top);
  RuleFile read;
  try {
    TopFromFile(lines, read);
  } catch (const std::exception&) {
    return false;
  }
  return lines.AtEnd();
}

bool ReadsBack(std::string_view block, RuleFileKind kind) {
  Lines lines(block);
  try {
    RuleBlock read;
    RuleFromFile(lines, kind, read);
    lines.CheckFile(labels::kEndOfRule);
  } catch (const std::exception&) {
    return false;
  }
  return lines.AtEnd();
}

}  // namespace morvelle
