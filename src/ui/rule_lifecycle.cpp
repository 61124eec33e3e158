#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/command_batch.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

bool frmMorvelle::AgreesToDrop() {
  const bool content = editing_.bContentChanged;
  const bool order = editing_.bOrderChanged;
  if (!content && !order) return true;
  const auto what = content && order
                        ? "Vous avez modifié la règle en cours et l'ordre des règles"_cp
                    : content ? "Vous avez modifié la règle en cours"_cp
                              : "Vous avez modifié l'ordre des règles"_cp;
  return messages_.Msg(std::string(what) +
                           std::string("\rÊtes-vous d'accord pour annuler ces modifications ?"_cp),
                       kBoxYesNo + kBoxSecondDefault) == Button::Yes;
}

bool frmMorvelle::NoChange() {
  return Ending("NoChange", [&] {
    if (!editing_.bContentChanged && !editing_.bOrderChanged) return true;
    if (!AgreesToDrop()) return false;
    CancelChange();
    return true;
  });
}

bool frmMorvelle::MayLeave() {
  if (!NoChange()) return false;
  editing_.modes = {};
  return true;
}

bool frmMorvelle::SaveOpenRule(bool withOrder) {
  if (WriteOpenRule(withOrder)) return true;
  // The save counted each word once; the list boxes still show them all.
  RecountWords();
  return false;
}

bool frmMorvelle::WriteOpenRule(bool withOrder) {
  const int row = tables_.RowOfId(editing_.openRuleId);
  if (row < 0) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  if (editing_.openRuleIsNew && !SettleNewId(row)) return false;
  auto planned = writer_.PlanRule(row, {.contentEdit = true});
  if (!planned.refusal.empty()) {
    messages_.Msg(planned.refusal, kBoxStop);
    return false;
  }
  const auto orderBefore = tables_.Mail.Order;
  CommandBatch batch(ports_.store, messages_);
  auto status = kStatusSuccess;
  if (withOrder) {
    tables_.Mail.Order = SettledOrder(lstRules.Items(), tables_);
    status = writer_.MailTopToBdR();
  }
  if (status == kStatusSuccess) status = RuleWriter::Apply(planned);
  if (!batch.Commit(status)) {
    tables_.Mail.Order = orderBefore;
    return false;
  }
  writer_.Settle(planned);
  if (withOrder) editing_.bOrderChanged = false;
  return true;
}

bool frmMorvelle::SaveOrder() {
  const auto orderBefore = tables_.Mail.Order;
  CommandBatch batch(ports_.store, messages_);
  tables_.Mail.Order = SettledOrder(lstRules.Items(), tables_);
  if (batch.Commit(writer_.MailTopToBdR())) {
    editing_.bOrderChanged = false;
    editing_.modes.arranging = false;
    return true;
  }
  tables_.Mail.Order = orderBefore;
  return false;
}

void frmMorvelle::mnuRegContent_Click() {
  if (bFilling) return;
  Ending("mnuRegContent_Click", [&] {
    if (editing_.modes.bMergeFile) EnableMerge(false);
    if (!editing_.bContentChanged) {
      messages_.Msg("Le contenu de la règle n'a pas été modifié"_cp);
      return;
    }
    if (editing_.bOrderChanged) {
      OkForAll();
      return;
    }
    if (!SaveOpenRule(false)) return;
    Menu("mnuOptions").SetEnabled(false);
    Menu("mnuChangeBook").SetEnabled(true);
    Menu("mnuAddBook").SetEnabled(false);
    Menu("mnuAutoUpdateBook").SetEnabled(true);
    TickAutoUpdateBook(state_.settings.BookIsAutomatic());
    ChangeContent(false);
    EnableAll(false);
    Reload();
  });
}

void frmMorvelle::mnuRegOrder_Click() {
  Ending("mnuRegOrder_Click", [&] {
    if (!editing_.bOrderChanged) messages_.Msg("L'ordre n'a pas été modifié"_cp);
    if (editing_.bContentChanged) {
      OkForAll();
      return;
    }
    if (bFilling || !SaveOrder()) return;
    Menu("mnuOptions").SetEnabled(false);
    Menu("mnuRegOrder").SetEnabled(false);
    Reload();
  });
}

void frmMorvelle::OkForAll() {
  Ending("OkForAll", [&] {
    const auto answer = messages_.Msg(
        "Pour cette fonction,\rle contenu de la règle en cours et l'ordre des règles doivent être "
        "enregistrés simultanément\rÊtes-vous d'accord pour enregistrer ces modifications ?"_cp,
        kBoxYesNo);
    if (answer == Button::No) return;
    if (!SaveOpenRule(true)) return;
    ChangeContent(false);
    EnableAll(false);
    Reload();
    ShowBookMenus();
  });
}

void frmMorvelle::Reload() {
  const auto id = CurrentRule();
  loader_.MailFromBdR();
  MakeCurrent(id);
}

bool frmMorvelle::Form_QueryUnload() {
  return Ending("Form_QueryUnload", [&] {
    if (!AgreesToDrop()) return false;
    if (state_.settings.IsQuiet()) return true;
    // The blank before "?" does not break.
    return messages_.Msg("Voulez-vous vraiment quitter Morvelle\u00A0?"_cp,
                         kBoxYesNo + kBoxQuestion) == Button::Yes;
  });
}

void frmMorvelle::mnuQuit_Click() {
  if (Form_QueryUnload() && onClose) onClose();
}

}  // namespace morvelle
