#include "files/rule_import.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "core/command_batch.h"
#include "core/entry_types.h"
#include "core/new_rule.h"
#include "files/text_files.h"

namespace morvelle {

namespace {

std::size_t Index(int row) { return static_cast<std::size_t>(row); }

/// The id after this one; 000 after the last.
std::string IdAfter(const std::string& id) { return ThreeDigitId(std::stoi(id, nullptr, 16) + 1); }

/// Whether a number's text comes back from the store as it is.
bool IsPlainNumber(const std::string& text) {
  const bool isShort = !text.empty() && text.size() <= 9;
  const bool isPlain = isShort && (text.front() != '0' || text.size() == 1);
  return isPlain && text.find_first_not_of("0123456789") == std::string::npos;
}

/// Whether an argument, just written to an empty key, is read as it stands in its record.
bool ReadsBack(Argument argument, const std::string& value, const std::string& valueType) {
  if (!CarriesValue(argument)) return value.empty() && valueType.empty();
  if (value.empty() || valueType != ValueTypeOf(argument)) return false;
  return argument != Argument::Number || IsPlainNumber(value);
}

bool ReadsBack(const ActionRecord& action) {
  return IsPlainNumber(action.Type) && IsPlainNumber(action.Flags) &&
         ReadsBack(ArgumentOfAction(action.Type), action.Value, action.ValueType);
}

bool ReadsBack(const CriterionRecord& criterion) {
  return IsPlainNumber(criterion.Type) && IsPlainNumber(criterion.Flags) &&
         IsPlainNumber(criterion.Logic) &&
         ReadsBack(ArgumentOfCriterion(criterion.Type), criterion.Value, criterion.ValueType);
}

/// Whether all of the first `count` entries are read back, under the ids of their order.
template <typename Records>
bool AllReadBack(const Records& records, std::size_t count, const std::string& order) {
  const auto ids = IdsOfOrder(order);
  if (ids.size() != count) return false;
  for (std::size_t i = 0; i < count; ++i) {
    if (records[i].Id != ids[i] || !ReadsBack(records[i])) return false;
  }
  return true;
}

}  // namespace

bool RuleImport::MailFromFile(const std::filesystem::path& path, RuleFileKind kind) {
  return Trap(registry_.Boxes().Boxes(), "MailFromFile", [&] {
    const auto text = ReadWholeFile(path);
    if (!text) return false;
    auto file = ReadRuleFile(*text, kind);
    if (file.verdict == RuleFileVerdict::BadlySaved) {
      registry_.Boxes().Msg(
          std::string("Le fichier "_cp) + PathText(path) + std::string(" a mal été enregistré"_cp),
          kBoxStop);
      throw ProgramEnd{};
    }
    if (file.verdict != RuleFileVerdict::Good) return false;
    if (kind == RuleFileKind::AllRules) tables_.Mail.Version = file.version;
    DropKnownRules(file);
    if (file.rules.empty()) {
      if (kind == RuleFileKind::AllRules) {
        registry_.Boxes().Msg("Toutes les règles existent déjà.\r\nAucune n'a été importée."_cp);
      }
      return true;
    }
    if (!NumberRules(file)) return true;
    const int first = tables_.RuleCount;
    AddRows(file);
    WriteRows(first);
    return true;
  });
}

bool RuleImport::ExistName(const std::string& name) const {
  return Trap(registry_.Boxes().Boxes(), "ExistName", [&] {
    registry_.Boxes().Msg(std::string("La règle "_cp) + name +
                          std::string(" existe déjà.\r\nElle ne sera pas importée."_cp));
    return true;
  });
}

void RuleImport::DropKnownRules(RuleFile& file) const {
  std::unordered_set<std::string> known;
  for (int row = 0; row < tables_.RuleCount; ++row) known.insert(tables_.RuleAt(row).Name);
  const auto kept = std::remove_if(file.rules.begin(), file.rules.end(), [&](const auto& block) {
    return known.count(block.rule.Name) != 0 && ExistName(block.rule.Name);
  });
  file.rules.erase(kept, file.rules.end());
}

bool RuleImport::NumberRules(RuleFile& file) const {
  std::string greatest;
  for (int row = 0; row < tables_.RuleCount; ++row) {
    const auto& id = tables_.RuleAt(row).Id;
    if (IsThreeDigitId(id)) greatest = std::max(greatest, id);
  }
  bool enough = Index(tables_.RuleCount) + file.rules.size() <= Index(kMaxRules);
  FreeRuleIds ids(tables_, registry_, mailKey_);
  auto wanted = greatest.empty() ? std::string("000") : IdAfter(greatest);
  for (std::size_t k = 0; enough && k < file.rules.size(); ++k) {
    const auto id = ids.Take(wanted);
    enough = id.has_value();
    if (!enough) break;
    file.rules[k].rule.Id = *id;
    wanted = IdAfter(*id);
  }
  if (!enough) registry_.Boxes().Msg(kTooManyRules);
  return enough;
}

void RuleImport::AddRows(RuleFile& file) {
  int row = tables_.RuleCount;
  tables_.RuleCount = Checked<std::int16_t>(Index(row) + file.rules.size());
  tables_.ReDimTables();
  for (auto& block : file.rules) {
    tables_.RuleAt(row) = std::move(block.rule);
    tables_.Actions[Index(row)] = block.actions;
    tables_.Criteria[Index(row)] = block.criteria;
    tables_.FirstCriteria[Index(row)] = {};
    ++row;
  }
  // From the rows, not from an order that may be damaged.
  std::vector<std::string> ids;
  for (row = 0; row < tables_.RuleCount; ++row) ids.push_back(tables_.RuleAt(row).Id);
  tables_.Mail.Order = JoinIds(ids);
}

void RuleImport::WriteRows(int first) {
  // On a store where each write is final, what was written before a refusal would stay.
  std::vector<PlannedRule> rules;
  for (int row = first; row < tables_.RuleCount; ++row) {
    rules.push_back(writer_.PlanRule(row, {}));
    if (rules.back().refusal.empty()) continue;
    registry_.Boxes().Msg(rules.back().refusal, kBoxStop);
    return;
  }
  CommandBatch batch(registry_.Store(), registry_.Boxes());
  auto status = kStatusSuccess;
  {
    ProgressOf work(progress_, std::string("Importation des règles ..."_cp),
                    static_cast<int>(rules.size()));
    int done = 0;
    for (auto& rule : rules) {
      status = RuleWriter::Apply(rule);
      if (status != kStatusSuccess) break;
      writer_.Settle(rule);
      work.Done(++done);
    }
  }
  if (status == kStatusSuccess) status = writer_.MailTopToBdR();
  if (batch.Commit(status)) MarkAsRead(first);
}

void RuleImport::MarkAsRead(int first) {
  for (int row = first; row < tables_.RuleCount; ++row) {
    auto& rule = tables_.RuleAt(row);
    const auto criteria = tables_.Criteria[Index(row)];
    if (!IsPlainNumber(rule.Enabled) || !IsPlainNumber(rule.Version) || criteria == 0 ||
        !AllReadBack(rule.ActionsParam, tables_.Actions[Index(row)], rule.ActionsOrder) ||
        !AllReadBack(rule.CriteriaParam, criteria, rule.CriteriaOrder)) {
      continue;
    }
    rule.blank = false;
    rule.readMark = registry_.Store().ChangeMark(mailKey_ + rule.Id).value_or(0);
  }
}

}  // namespace morvelle
