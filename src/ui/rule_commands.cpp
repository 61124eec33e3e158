#include "core/new_rule.h"

#include <algorithm>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/command_batch.h"
#include "ui/frm_morvelle.h"

/// Adding, renaming and deleting rules.
namespace morvelle {

namespace {

constexpr std::string_view kNewNameQuestion = "Entrer le nom de la règle à créer"_cp;
constexpr std::string_view kCharactersRefused = "Utilisation de caractères non autorisés"_cp;
constexpr std::string_view kNameReserved = "Ce nom de règle est réservé"_cp;
constexpr std::string_view kNewNameUsed = "Ce nom de règle est déjà utilisé"_cp;
constexpr std::string_view kOtherNameUsed = "Ce nom est déjà utilisé"_cp;
constexpr std::string_view kOtherNameTitle = "Renommer une règle de courrier"_cp;
constexpr std::string_view kPresentName = "Nom actuel de la règle : "_cp;
constexpr std::string_view kOtherNameQuestion = "\r\rNouveau nom ?";
constexpr std::string_view kRenameTitle = "Renommer une règle"_cp;
constexpr std::string_view kRenameQuestion = "Changer le nom de la règle   \r\n'"_cp;
constexpr std::string_view kDeleteQuestion = "Êtes-vous sûr de vouloir détruire la règle "_cp;

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

}  // namespace

void frmMorvelle::ConnectLifecycle() {
  Menu("mnuAdd").onClick = [this] { mnuAdd_Click(); };
  RuleMenu("mnuDel").onClick = [this](int index) { mnuDel_Click(index); };
  RuleMenu("mnuRen").onClick = [this](int index) { mnuRen_Click(index); };
}

std::optional<std::string> frmMorvelle::AskRuleName(const NameQuestion& question) {
  auto name = question.proposal;
  for (;;) {
    auto answer = messages_.Boxes().AskText(question.prompt, question.title, name);
    if (!answer || answer->empty()) return std::nullopt;
    // What was refused is proposed again, to be put right.
    name = std::move(*answer);
    switch (FaultOfName(tables_, name, question.ownRow)) {
      case NameFault::Characters:
        messages_.Msg(kCharactersRefused, kBoxStop);
        break;
      case NameFault::Reserved:
        messages_.Msg(kNameReserved, kBoxStop);
        break;
      case NameFault::Used:
        messages_.Msg(question.usedMessage, question.usedStyle);
        break;
      case NameFault::None:
        return name;
    }
  }
}

void frmMorvelle::mnuAdd_Click() {
  if (bFilling) return;
  Ending("mnuAdd_Click", [&] {
    if (!MayLeave()) return;
    editing_.modes.adding = true;
    if (tables_.RuleCount >= kMaxRules) {
      messages_.Msg(kTooManyRules);
      return;
    }
    ClearMod();
    EnableAll(false);
    ShowBookMenus();
    fraMerge.SetVisible(false);
    {
      const Filling filling(*this);
      lstRules.SetListIndex(-1);
      lstAct.SetListIndex(-1);
    }
    const auto id =
        FreeRuleIds(tables_, program_.registry, state_.identity.MailKey).Take(UsualRuleId(tables_));
    if (!id) {
      messages_.Msg(kTooManyRules);
      return;
    }
    const auto name = AskRuleName(
        {std::string(kNewNameQuestion), std::string(kAppTitle), "", -1, kNewNameUsed, kBoxStop});
    if (!name) return;
    const auto row = AddRow(tables_, *id, *name);
    GiveDefaultAction(tables_, row, program_.deletedItems);
    EnableMnu();
    OpenNewRule(row);
  });
}

void frmMorvelle::OpenNewRule(int row) {
  created_ = {tables_.RuleAt(row),
              tables_.Actions[Index(row)],
              tables_.Criteria[Index(row)],
              tables_.FirstCriteria[Index(row)],
              {}};
  for (int slot = 0; slot < kSlotCount; ++slot) {
    const auto& words = tables_.Words(slot);
    const auto count = std::min(words.size(), Index(tables_.WordCount[Index(slot)]));
    created_.words[Index(slot)].assign(words.begin(),
                                       words.begin() + static_cast<std::ptrdiff_t>(count));
  }
  LoadMnu(row, RuleText(row), row >= lstRules.Count());
  OpenRule(row, true);
  editing_.openRuleIsNew = true;
}

bool frmMorvelle::SettleNewId(int row) {
  const auto& mailKey = state_.identity.MailKey;
  auto& rule = tables_.RuleAt(row);
  if (!OpenedKey(program_.registry, mailKey + rule.Id, false).IsOpen()) return true;
  const auto id = FreeRuleIds(tables_, program_.registry, mailKey).Take();
  if (!id) {
    messages_.Msg(kTooManyRules);
    return false;
  }
  rule.Id = *id;
  created_.rule.Id = *id;
  editing_.openRuleId = *id;
  // The other program's rule keeps its place in the order too.
  tables_.Mail.Order += " " + *id;
  LoadMnu(row, RuleText(row), false);
  return true;
}

void frmMorvelle::RestoreNewRule() {
  const int row = tables_.RowOfId(editing_.openRuleId);
  if (row < 0) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  ClearEditor();
  EnableCmdADCR(false, false, false, false, -1);
  tables_.RuleAt(row) = created_.rule;
  tables_.Actions[Index(row)] = created_.actions;
  tables_.Criteria[Index(row)] = created_.criteria;
  tables_.FirstCriteria[Index(row)] = created_.slots;
  for (int slot = 0; slot < kSlotCount; ++slot) {
    const auto& words = created_.words[Index(slot)];
    if (words.empty()) continue;
    tables_.Words(slot) = words;
    tables_.WordCount[Index(slot)] = Checked<std::int16_t>(words.size());
    FillWordsList(slot);
    ShowWordCount(slot, WordCountText(static_cast<int>(words.size())));
  }
  LoadMnu(row, RuleText(row), false);
  OpenRule(row, true);
  editing_.openRuleIsNew = true;
}

void frmMorvelle::mnuDel_Click(int index) {
  if (bFilling || index >= tables_.RuleCount) return;
  Ending("mnuDel_Click", [&] {
    const auto id = RuleOfEntry(index);
    if (!MayLeave()) return;
    editing_.modes.deleting = true;
    fraMerge.SetVisible(false);
    ClearMod();
    EnableAll(false);
    ShowBookMenus();
    const int row = tables_.RowOfId(id);
    // Another program may have deleted the rule meanwhile.
    if (row < 0) return;
    MakeCurrent(id);
    const auto name = tables_.RuleAt(row).Name;
    if (!messages_.TestOui(std::string(kDeleteQuestion) + name + " ?")) return;
    Menu("mnuOptions").SetEnabled(false);
    if (!DeleteRule(row)) {
      // Where every write is final the rule can be gone although the order still names it.
      const OpenedKey key(program_.registry, state_.identity.MailKey + id, false);
      if (!key.IsOpen()) Reload();
      return;
    }
    editing_.modes.reloading = true;
    loader_.MailFromBdR();
    ShowBookMenus();
    if (EqualIgnoringCase(name, kBookRule) && !HasBookRule()) TickAutoUpdateBook(false);
    const Filling filling(*this);
    lstRules.SetListIndex(std::min(row, lstRules.Count() - 1));
  });
}

bool frmMorvelle::DeleteRule(int row) {
  const auto orderBefore = tables_.Mail.Order;
  CommandBatch batch(ports_.store, messages_);
  auto status = writer_.DeleteRule(row);
  if (status == kStatusSuccess) status = DelMailOrder_Click(row);
  if (batch.Commit(status)) return true;
  tables_.Mail.Order = orderBefore;
  return false;
}

RegistryStatus frmMorvelle::DelMailOrder_Click(int row) {
  return Ending("DelMailOrder_Click", [&] {
    tables_.Mail.Order = SettledOrder({}, tables_, tables_.RuleAt(row).Id);
    return tables_.Mail.Order.empty() ? writer_.DeleteOrder() : writer_.MailTopToBdR();
  });
}

void frmMorvelle::mnuRen_Click(int index) {
  if (bFilling || index >= tables_.RuleCount) return;
  Ending("mnuRen_Click", [&] {
    const auto id = RuleOfEntry(index);
    if (!MayLeave()) return;
    CloseRule();
    const int row = tables_.RowOfId(id);
    if (row < 0) return;
    editing_.nCurRule = static_cast<std::int16_t>(row);
    MakeCurrent(id);
    const auto present = tables_.RuleAt(row).Name;
    const auto name =
        AskRuleName({std::string(kPresentName) + present + std::string(kOtherNameQuestion),
                     std::string(kOtherNameTitle), present, row, kOtherNameUsed, kBoxExclamation});
    if (!name) return;
    std::string title(kRenameTitle);
    const auto question =
        std::string(kRenameQuestion) + tables_.RuleAt(row).Name + "'\r\nen\r\n'" + *name + "' ?";
    if (messages_.Msg(question, kBoxYesNo + kBoxQuestion, title) != Button::Yes) return;
    if (!RenameRule(row, *name)) return;
    LoadMnu(row, RuleText(row), false);
    ShowBookMenus();
  });
}

bool frmMorvelle::RenameRule(int row, const std::string& name) {
  auto& rule = tables_.RuleAt(row);
  if (!IsThreeDigitId(rule.Id)) {
    messages_.Msg(kBadRuleId, kBoxStop);
    return false;
  }
  CommandBatch batch(ports_.store, messages_);
  if (!batch.Commit(writer_.NameToBdR(row, name))) return false;
  rule.Name = name;
  return true;
}

}  // namespace morvelle
