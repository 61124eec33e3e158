#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/new_rule.h"
#include "core/word_lists.h"
#include "ui/frm_morvelle.h"
#include "wab/book_rule.h"

/// The rule "Carnet d'adresses" and K9's whitelist.
namespace morvelle {

namespace {

constexpr int kSenderSlot = 0;

constexpr std::string_view kOverwriteQuestion =
    "La règle \"Carnet d'adresses\" actuelle va être écrasée par les données de votre carnet "
    "d'adresses.\rVous pouvez encore annuler cette opération !"_cp;
constexpr std::string_view kNotEditable = "La règle \"Carnet d'adresses\" ne peut être modifiée"_cp;
constexpr std::string_view kAtNextStart =
    "Cette nouvelle option sera prise en charge au prochain démarrage"_cp;

}  // namespace

void frmMorvelle::ShowBookWords(std::vector<std::string> words) {
  const auto count = Checked<std::int16_t>(words.size());
  tables_.Words0 = std::move(words);
  tables_.WordCount[kSenderSlot] = count;
  FillWordsList(kSenderSlot);
  ShowWordCount(kSenderSlot, WordCountText(count));
  ShowCopy(kSenderSlot);
  EnableCmdADCR(false, false, false, false, kSenderSlot);
}

void frmMorvelle::AddRuleFromWab() {
  const auto id = BookRuleId(tables_, program_.registry, state_.identity.MailKey);
  if (tables_.RuleCount >= kMaxRules || !id) {
    messages_.Msg(kTooManyRules);
    return;
  }
  const auto& deletedItems = program_.deletedItems.DeletedItems();
  if (!IsDeletedItems(deletedItems)) {
    messages_.Msg(kFoldersUnreadable, kBoxStop);
    return;
  }
  auto words = program_.addressReader.ReadWords();
  // A rule without words would send all mail to the bin.
  if (words.empty()) return;
  const int row = AddBookRule(tables_, *id, deletedItems);
  EnableMnu();
  ShowBookWords(std::move(words));
  OpenNewRule(row);
}

void frmMorvelle::LeaveForBook() {
  editing_.modes.addressBook = true;
  fraMerge.SetVisible(false);
  ClearMod();
  EnableAll(false);
  ShowBookMenus();
}

void frmMorvelle::mnuAddBook_Click() {
  if (bFilling) return;
  Ending("mnuAddBook_Click", [&] {
    if (!MayLeave()) return;
    LeaveForBook();
    // Another program may have made the rule meanwhile: there is one of that name at the most.
    if (RowOfBookRule(tables_) >= 0) {
      ChangeBook();
    } else {
      AddRuleFromWab();
    }
  });
}

void frmMorvelle::mnuChangeBook_Click() {
  if (bFilling) return;
  Ending("mnuChangeBook_Click", [&] {
    if (!MayLeave()) return;
    if (RowOfBookRule(tables_) < 0) LeaveForBook();
    // Leaving reads the rules again: another program may have made it meanwhile.
    if (RowOfBookRule(tables_) >= 0) {
      ChangeBook();
    } else {
      AddRuleFromWab();
    }
  });
}

void frmMorvelle::ChangeBook() {
  if (messages_.Msg(kOverwriteQuestion, kBoxOkCancel + kBoxExclamation) != Button::Ok) return;
  auto words = program_.addressReader.ReadWords();
  if (words.empty()) return;
  LeaveForBook();
  const int row = RowOfBookRule(tables_);
  if (row < 0 || !RuleMenu("mnuMod").EnabledOf(row)) {
    messages_.Msg(kNotEditable, kBoxExclamation);
    return;
  }
  OpenRule(row, false);
  auto& slot = tables_.SlotOf(row, kSenderSlot);
  // With the flags of an empty list the rule would bin the mail of those whom the book names.
  if (slot.Id.empty()) slot.Flags = kBookRuleFlags;
  ShowBookWords(std::move(words));
  optCriteria[kSenderSlot].Choose();
  InitOptions();
  ShowContentQuestions();
  ContentEdited();
}

void frmMorvelle::mnuAutoUpdateBook_Click() {
  Ending("mnuAutoUpdateBook_Click", [&] {
    auto& mode = state_.settings.BookMode;
    const auto before = mode;
    mode = EqualIgnoringCase(mode, "Auto") ? "Manu" : "Auto";
    const bool written = program_.settingsFile.Write();
    // What is not in the file will not be so at the next start.
    if (!written) mode = before;
    TickAutoUpdateBook(state_.settings.BookIsAutomatic());
    if (written) messages_.Msg(kAtNextStart, kBoxInformation);
  });
}

void frmMorvelle::mnuWhiteListK9_Click() { program_.k9.UpDateWhiteListK9(state_.EmailsFile); }

}  // namespace morvelle
