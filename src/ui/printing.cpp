#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

void frmMorvelle::mnuWhatRuleToPrint_Click(int index) {
  if (bFilling || index >= tables_.RuleCount) return;
  Ending("mnuWhatRuleToPrint_Click", [&] {
    const auto id = RuleOfEntry(index);
    if (!NoChange()) return;
    const int row = tables_.RowOfId(id);
    if (row >= 0) PrintRules(true, row);
  });
}

void frmMorvelle::mnuPrintAllRules_Click() {
  Ending("mnuPrintAllRules_Click", [&] {
    if (NoChange()) PrintRules(false, 0);
  });
}

void frmMorvelle::PrintRules(bool oneRule, int row) {
  LineSink sink(LineSink::Output::Paper);
  RuleExport writers(messages_, tables_, program_.deletedItems, sink);
  writers.MailToFile(oneRule, row, ports_.progress);
  TellLeftOut(writers);
  if (sink.PaperLines().empty()) return;
  const auto title = oneRule ? tables_.RuleAt(row).Name : std::string("Règles de message"_cp);
  if (ports_.printer.Print(title, sink.PaperLines()) == PrintOutcome::Failed) {
    messages_.Msg("L'impression n'a pas abouti", kBoxStop);
  }
}

}  // namespace morvelle
