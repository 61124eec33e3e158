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
#include "core/new_rule_keys.h"
#include "disk/whole_file.h"

namespace morvelle {

namespace {

std::size_t Index(int row) { return static_cast<std::size_t>(row); }

/// The id after this one; 000 after the last.
std::string IdAfter(const std::string& id) { return ThreeDigitId(std::stoi(id, nullptr, 16) + 1); }

std::vector<std::string> DamagedRules(const RuleFile& file) {
  std::vector<std::string> names;
  for (const auto& block : file.rules) {
    if (block.damaged) names.push_back(block.Name);
  }
  return names;
}

}  // namespace

bool RuleImport::MailFromFile(const std::filesystem::path& path, RuleFileKind kind) {
  return Trap(registry_.Boxes().Boxes(), "MailFromFile", [&] {
    FileFault fault;
    const auto text = ReadWholeFile(path, kTextFileLimit, &fault);
    if (!text) {
      TellTooLarge(registry_.Boxes(), path, fault);
      return false;
    }
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
    const auto ids = NewIds(file.rules.size());
    if (!ids) return true;
    const int first = tables_.RuleCount;
    const auto damaged = DamagedRules(file);
    AddRows(file, *ids);
    if (WriteRows(first)) TellDamaged(damaged);
    return true;
  });
}

void RuleImport::ExistName(BoxSeries& boxes, const std::string& name) const {
  Trap(registry_.Boxes().Boxes(), "ExistName", [&] {
    boxes.Say(std::string("La règle "_cp) + name +
                  std::string(" existe déjà.\r\nElle ne sera pas importée."_cp),
              "\"" + name + "\"");
  });
}

void RuleImport::DropKnownRules(RuleFile& file) const {
  std::unordered_set<std::string> known;
  for (int row = 0; row < tables_.RuleCount; ++row) known.insert(tables_.RuleAt(row).Name);
  BoxSeries boxes(registry_.Boxes());
  const auto kept = std::remove_if(file.rules.begin(), file.rules.end(), [&](const auto& block) {
    const bool exists = known.count(block.Name) != 0;
    if (exists) ExistName(boxes, block.Name);
    return exists;
  });
  file.rules.erase(kept, file.rules.end());
  boxes.Finish("Autres règles qui existent déjà et ne seront pas importées\u00A0:"_cp);
}

void RuleImport::TellDamaged(const std::vector<std::string>& names) const {
  BoxSeries boxes(registry_.Boxes());
  for (const auto& name : names) {
    const auto quoted = "\"" + name + "\"";
    boxes.Say(std::string("La règle "_cp) + quoted +
                  std::string(" de ce fichier est endommagée\u00A0: "
                              "elle a été importée inactive."_cp),
              quoted);
  }
  boxes.Finish("Autres règles endommagées de ce fichier, importées inactives\u00A0:"_cp);
}

std::optional<std::vector<std::string>> RuleImport::NewIds(std::size_t count) const {
  std::string greatest;
  for (int row = 0; row < tables_.RuleCount; ++row) {
    const auto& id = tables_.RuleAt(row).Id;
    if (IsThreeDigitId(id)) greatest = std::max(greatest, id);
  }
  bool enough = Index(tables_.RuleCount) + count <= Index(kMaxRules);
  FreeRuleIds free(tables_, registry_, mailKey_);
  auto wanted = greatest.empty() ? std::string("000") : IdAfter(greatest);
  std::vector<std::string> ids;
  while (enough && ids.size() < count) {
    const auto id = free.Take(wanted);
    enough = id.has_value();
    if (!enough) break;
    ids.push_back(*id);
    wanted = IdAfter(*id);
  }
  if (enough) return ids;
  registry_.Boxes().Msg(kTooManyRules);
  return std::nullopt;
}

void RuleImport::AddRows(RuleFile& file, const std::vector<std::string>& ids) {
  int row = tables_.RuleCount;
  tables_.RuleCount = Checked<std::int16_t>(Index(row) + ids.size());
  tables_.ReDimTables();
  for (std::size_t k = 0; k < ids.size(); ++k) {
    FillRow(tables_, row++, ids[k], std::move(file.rules[k]));
  }
  // From the rows, not from an order that may be damaged.
  std::vector<std::string> order;
  for (row = 0; row < tables_.RuleCount; ++row) order.push_back(tables_.RuleAt(row).Id);
  tables_.Mail.Order = JoinIds(order);
}

bool RuleImport::WriteRows(int first) {
  // On a store where each write is final, what was written before a refusal or an error would stay.
  std::vector<PlannedRule> planned;
  for (int row = first; row < tables_.RuleCount; ++row) {
    auto refusal = writer_.RefusalOf(row);
    if (refusal.empty() && !NewRuleKeys::IsAsRead(tables_, row)) {
      planned.push_back(writer_.PlanRule(row, {}));
      refusal = planned.back().refusal;
    }
    if (refusal.empty()) continue;
    registry_.Boxes().Msg(refusal, kBoxStop);
    return false;
  }
  CommandBatch batch(registry_.Store(), registry_.Boxes());
  std::vector<int> asRead;
  auto status = WriteKeys(first, planned, asRead);
  if (status == kStatusSuccess) status = writer_.MailTopToBdR();
  if (!batch.Commit(status)) return false;
  // Spares the load that follows the reading of these rows.
  for (const int row : asRead) {
    auto& rule = tables_.RuleAt(row);
    rule.readMark = registry_.Store().ChangeMark(mailKey_ + rule.Id).value_or(0);
  }
  return true;
}

RegistryStatus RuleImport::WriteKeys(int first, std::vector<PlannedRule>& planned,
                                     std::vector<int>& asRead) {
  ProgressOf work(progress_, std::string("Importation des règles ..."_cp),
                  tables_.RuleCount - first);
  NewRuleKeys keys(registry_, mailKey_);
  auto status = writer_.VersionToBdR();
  auto plan = planned.begin();
  for (int row = first; row < tables_.RuleCount && status == kStatusSuccess; ++row) {
    if (plan != planned.end() && plan->row == row) {
      status = RuleWriter::Apply(*plan++);
    } else {
      status = keys.Write(tables_, row);
      asRead.push_back(row);
    }
    work.Done(row - first + 1);
  }
  return status;
}

}  // namespace morvelle
