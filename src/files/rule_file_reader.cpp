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
  void TakeNumber(std::string& number) {
    Skip();
    number = Take();
    ToDigits(number);
  }
  static void ToDigits(std::string& text) {
    if (text.empty() || IsPlainNumber(text)) return;
    try {
      text = std::to_string(ToLong(text));
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

void TakeArgument(Lines& lines, Argument argument, std::string& valueType, std::string& value) {
  lines.TakeNumber(valueType);
  value = lines.TakeValue();
  if (argument == Argument::Number) Lines::ToDigits(value);
}

void ActionsParamFromFile(Lines& lines, ActionRecord& action) {
  lines.TakeValue();
  lines.TakeNumber(action.Flags);
  lines.TakeNumber(action.Type);
  if (!labels::HasActionValue(action.Type)) return;
  TakeArgument(lines, ArgumentOfAction(action.Type), action.ValueType, action.Value);
}

void CriteriaParamFromFile(Lines& lines, CriterionRecord& criterion) {
  lines.TakeValue();
  lines.TakeNumber(criterion.Flags);
  lines.TakeNumber(criterion.Logic);
  lines.TakeNumber(criterion.Type);
  if (!labels::HasCriterionValue(criterion.Type)) return;
  TakeArgument(lines, ArgumentOfCriterion(criterion.Type), criterion.ValueType, criterion.Value);
}

/// Reads so many entries and numbers them by their place; false when some had no type and were left
/// out.
template <typename Record, typename Read>
bool EntriesFromFile(Lines& lines, std::size_t count, std::vector<Record>& entries, Read&& read) {
  entries.reserve(count);
  for (std::size_t k = 0; k < count; ++k) {
    auto& entry = entries.emplace_back();
    read(lines, entry);
    if (entry.Type.empty()) {
      entries.pop_back();
    } else {
      entry.Id = ThreeDigitId(static_cast<int>(entries.size()) - 1);
    }
  }
  return entries.size() == count;
}

void ActionsFromFile(Lines& lines, RuleBlock& block) {
  lines.Skip();
  const auto count = CountOf(lines.TakeValue());
  block.damaged = !EntriesFromFile(lines, count, block.actions, ActionsParamFromFile);
  if (!block.damaged || !block.actions.empty()) return;
  // A rule without actions would be given the default one, and the user who activates it would find
  // mail in the bin that it never sent there.
  block.actions.push_back({ThreeDigitId(0), "0", std::string(kActionStop), {}, {}});
}

void CriteriaFromFile(Lines& lines, RuleBlock& block) {
  lines.Skip();
  const auto order = lines.TakeValue();
  // A rule without criteria has the order "000".
  const bool none = order == "000" && lines.Peek() == labels::kEndOfRule;
  const bool whole =
      EntriesFromFile(lines, none ? 0 : CountOf(order), block.criteria, CriteriaParamFromFile);
  block.damaged = block.damaged || !whole;
}

void RuleFromFile(Lines& lines, RuleFileKind kind, RuleBlock& block) {
  if (kind == RuleFileKind::AllRules) lines.TakeValue();
  block.Name = lines.TakeValue();
  lines.TakeNumber(block.Version);
  lines.TakeNumber(block.Enabled);
  ActionsFromFile(lines, block);
  CriteriaFromFile(lines, block);
  if (block.damaged) block.Enabled = "0";
}

/// How many rules follow; with none the rest is left unread.
std::size_t TopFromFile(Lines& lines, RuleFile& file) {
  lines.Skip();
  const auto count = (lines.TakeValue().size() + 1) / 4;
  if (count == 0) return 0;
  lines.TakeNumber(file.version);
  lines.CheckFile(labels::kEndOfTop);
  return count;
}

template <typename Record>
std::string OrderOf(const std::vector<Record>& entries) {
  std::string order;
  for (const auto& entry : entries) {
    if (!order.empty()) order += ' ';
    order += entry.Id;
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
  rule.ActionsOrder = OrderOf(block.actions);
  rule.CriteriaOrder = OrderOf(block.criteria);
  tables.Actions[at] = static_cast<std::uint8_t>(block.actions.size());
  tables.Criteria[at] = static_cast<std::uint8_t>(block.criteria.size());
  tables.FirstCriteria[at] = {};
  for (const auto& criterion : block.criteria) {
    const int slot = tables.SlotOfType(criterion.Type);
    // The first criterion of a kind owns the slot.
    if (slot >= 0 && tables.SlotOf(row, slot).Id.empty()) tables.SlotOf(row, slot) = criterion;
  }
  rule.ActionsParam = std::move(block.actions);
  rule.CriteriaParam = std::move(block.criteria);
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

std::optional<RuleBlock> ReadBlock(std::string_view text, RuleFileKind kind) {
  Lines lines(text);
  RuleBlock block;
  try {
    RuleFromFile(lines, kind, block);
    lines.CheckFile(labels::kEndOfRule);
  } catch (const std::exception&) {
    return std::nullopt;
  }
  return lines.AtEnd() ? std::optional(std::move(block)) : std::nullopt;
}

}  // namespace morvelle
