#include <filesystem>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "disk/dates.h"
#include "disk/whole_file.h"
#include "files/rule_import.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

namespace {

constexpr std::string_view kCannotImport = "Ce fichier ne peut être importé"_cp;

}  // namespace

void frmMorvelle::ConnectFiles() {
  RuleMenu("mnuWhatRuleToFile").onClick = [this](int index) { mnuWhatRuleToFile_Click(index); };
  Menu("mnuExpAllRules").onClick = [this] { mnuAllRulesToFile_Click(); };
  Menu("mnuImpOneRule").onClick = [this] {
    ImportRules("mnuTransOneRule_Click", RuleFileKind::OneRule);
  };
  Menu("mnuImpAllRules").onClick = [this] {
    ImportRules("mnuTransAllRules_Click", RuleFileKind::AllRules);
  };
  RuleMenu("mnuWhatRuleToPrint").onClick = [this](int index) { mnuWhatRuleToPrint_Click(index); };
  Menu("mnuPrintAllRules").onClick = [this] { mnuPrintAllRules_Click(); };
  Menu("mnuExpSign").onClick = [this] { mnuExpSign_Click(); };
  Menu("mnuImpSign").onClick = [this] { mnuImpSign_Click(); };
  for (std::size_t i = 0; i < chkFilter.size(); ++i) {
    chkFilter[i].onClick = [=, this] { chkFilter_Click(static_cast<int>(i)); };
  }
  cmdFiltres.onClick = [this] { cmdFilters_Click(); };
  RuleMenu("mnuMerge").onClick = [this](int index) { mnuMerge_Click(index); };
  cmdFileToMerge.onClick = [this] { cmdFileToMerge_Click(); };
}

FileChoice frmMorvelle::Files() {
  return {messages_, ports_.fileDialogs, ports_.environment, state_.settings.AppPath};
}

void frmMorvelle::mnuWhatRuleToFile_Click(int index) {
  if (bFilling || index >= tables_.RuleCount) return;
  Ending("mnuWhatRuleToFile_Click", [&] {
    const auto id = RuleOfEntry(index);
    if (!NoChange()) return;
    const int row = tables_.RowOfId(id);
    if (row < 0) return;
    MailToFile(true, row);
    // What stands in an open rule's controls would not survive.
    if (editing_.openRuleId.empty()) Reload();
  });
}

void frmMorvelle::mnuAllRulesToFile_Click() {
  Ending("mnuAllRulesToFile_Click", [&] {
    if (NoChange()) MailToFile(false, 0);
  });
}

void frmMorvelle::MailToFile(bool oneRule, int row) {
  Continuing("MailToFile", [&] {
    LineSink sink(LineSink::Output::File);
    RuleExport writers(messages_, tables_, program_.deletedItems, sink);
    if (oneRule && tables_.RuleAt(row).overfull) {
      writers.MailToFile(oneRule, row, ports_.progress);
      TellLeftOut(writers);
      return;
    }
    const auto name = oneRule ? tables_.RuleAt(row).Name
                              : std::string("Règles OE "_cp) + LongDate(ports_.environment.Now());
    const auto file =
        Files().ToSave(oneRule ? "roe" : "moe", state_.settings.UserFilesFolder, name);
    if (!file) return;
    writers.MailToFile(oneRule, row, ports_.progress);
    WriteWholeFile(*file, sink.FileText());
    TellLeftOut(writers);
    messages_.MsgNamed(
        "Le fichier est enregistré mais ne pourra pas être importé :\r"
        "un saut de ligne ou une valeur illisible se trouve dans la règle"_cp,
        writers.NotReadable());
    messages_.MsgNamed(
        "Le fichier est enregistré mais la règle sera inactive une fois importée\u00A0:\r"
        "une action ou un critère ne peut être lu dans la règle"_cp,
        writers.Damaged());
  });
}

void frmMorvelle::TellLeftOut(const RuleExport& writers) {
  messages_.MsgNamed("Cette règle est endommagée : elle n'est ni exportée ni imprimée"_cp,
                     writers.LeftOut());
}

void frmMorvelle::ImportRules(const char* procedure, RuleFileKind kind) {
  Ending(procedure, [&] {
    if (!MayLeave()) return;
    CloseRule();
    const auto file = Files().ToOpen(ExtensionOf(kind), state_.settings.UserFilesFolder);
    RuleImport import(program_.registry, state_.identity.MailKey, tables_, writer_,
                      ports_.progress);
    if (!file || !import.MailFromFile(*file, kind)) messages_.Msg(kCannotImport);
    Reload();
    ShowBookMenus();
  });
}

}  // namespace morvelle
