#include "files/rule_import.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "core/command_batch.h"
#include "core/new_rule.h"
#include "files/text_files.h"

namespace morvelle {

namespace {

std::size_t Index(int row) { return static_cast<std::size_t>(row); }

/// The id after this one; 000 after the last.
std::string IdAfter(const std::string& id) { return ThreeDigitId(std::stoi(id, nullptr, 16) + 1); }

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
    for (const auto& rule : rules) {
      status = RuleWriter::Apply(rule);
      if (status != kStatusSuccess) break;
      work.Done(++done);
    }
  }
  if (status == kStatusSuccess) status = writer_.MailTopToBdR();
  batch.Commit(status);
}

}  // namespace morvelle
