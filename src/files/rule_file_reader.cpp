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
  static std::string Numeric(const std::string& text) {
    if (text.empty()) return text;
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

std::string OrderOf(std::size_t count) {
  std::vector<std::string> ids;
  for (std::size_t k = 0; k < count; ++k) ids.push_back(ThreeDigitId(static_cast<int>(k)));
  return JoinIds(ids);
}

std::string CheckedValue(Argument argument, const std::string& value) {
  return argument == Argument::Number ? Lines::Numeric(value) : value;
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
  for (std::size_t k = 0; k < count; ++k) {
    auto action = ActionsParamFromFile(lines);
    // What was damaged when it was exported holds nothing.
    if (action.Type.empty()) continue;
    action.Id = ThreeDigitId(block.actions);
    block.rule.ActionsParam[block.actions++] = std::move(action);
  }
  block.rule.ActionsOrder = OrderOf(block.actions);
}

void CriteriaFromFile(Lines& lines, RuleBlock& block) {
  lines.Skip();
  const auto order = lines.TakeValue();
  // A rule without criteria has the order "000".
  const bool none = order == "000" && lines.Peek() == labels::kEndOfRule;
  const auto count = none ? 0 : CountOf(order);
  for (std::size_t k = 0; k < count; ++k) {
    auto criterion = CriteriaParamFromFile(lines);
    if (criterion.Type.empty()) continue;
    criterion.Id = ThreeDigitId(block.criteria);
    block.rule.CriteriaParam[block.criteria++] = std::move(criterion);
  }
  block.rule.CriteriaOrder = OrderOf(block.criteria);
}

void RuleFromFile(Lines& lines, RuleFileKind kind, RuleBlock& block) {
  if (kind == RuleFileKind::AllRules) lines.TakeValue();
  block.rule.blank = false;
  block.rule.Name = lines.TakeValue();
  block.rule.Version = lines.TakeNumber();
  block.rule.Enabled = lines.TakeNumber();
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

}  // namespace

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
