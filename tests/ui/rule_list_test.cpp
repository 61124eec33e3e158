#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using RuleList = Window;

const std::vector<std::string> kCommands = {
    "mnuRegContent", "mnuRegOrder",      "mnuImpOneRule",    "mnuImpAllRules",
    "mnuExpOneRule", "mnuExpAllRules",   "mnuPrintOneRule",  "mnuPrintAllRules",
    "mnuRename",     "mnuChangeContent", "mnuMergeContent",  "mnuChangeOrder",
    "mnuArrange",    "mnuChangeBook",    "mnuAdd",           "mnuDelete",
    "mnuAddBook",    "mnuOptions",       "mnuAutoUpdateBook"};
const std::vector<std::string> kControls = {
    "lstRules",         "lstAct",       "chkEnabled",    "optCriteria(0)",
    "lstBox(0)",        "txtBox(0)",    "txtCop(0)",     "cmdAdd(0)",
    "cmdDel(0)",        "cmdChange(0)", "cmdRestore(0)", "cmdRecord(0)",
    "cmdCancelRule(0)", "chkFilter(0)", "cmdFiltres",    "fraMerge"};

const std::string kWithoutRules = "mnuImpOneRule mnuImpAllRules mnuAdd mnuAddBook";
const std::string kWithTwoRules =
    "mnuImpOneRule mnuImpAllRules mnuExpOneRule mnuExpAllRules mnuPrintOneRule mnuPrintAllRules "
    "mnuRename mnuChangeContent mnuMergeContent mnuChangeOrder mnuArrange mnuAdd mnuDelete "
    "mnuAddBook";
const std::string kEditor = "lstAct chkEnabled optCriteria(0) lstBox(0) txtBox(0) txtCop(0)";

TEST_F(RuleList, OneRuleCannotBeOrdered) {
  rules.Order("000").PlainRule("000", "Seule", "000").Words("000", 12, {"alpha"});
  Start();
  state.editing.bOrderChanged = true;
  form->EnableMnu();
  EXPECT_EQ(Which(kCommands), Replaced(kWithTwoRules, " mnuChangeOrder mnuArrange", ""));
}

TEST_F(RuleList, CommandsFollowTheRuleFromOpeningToLeaving) {
  const auto expect = [this](const std::string& when, const std::string& commands,
                             const std::string& controls) {
    EXPECT_EQ(Which(kCommands), commands) << when;
    EXPECT_EQ(Which(kControls), controls) << when;
  };
  const auto opened = kEditor + " cmdCancelRule(0) chkFilter(0)";
  StartWithTwoRules();
  expect("started", kWithTwoRules, "");
  Open(0);
  expect("opened", "mnuOptions", opened);
  EXPECT_EQ(form->lstRules.ListIndex(), 0);
  EXPECT_EQ(form->statBar.Panel(9), "Publicités"_cp);
  Type(kSender, u"gamma");
  expect("typed", "mnuOptions", Replaced(opened, " cmdC", " cmdAdd(0) cmdRestore(0) cmdC"));
  Click("cmdAdd(0)");
  expect("edited", "mnuRegContent mnuOptions",
         Replaced(opened, " cmdC", " cmdRestore(0) cmdRecord(0) cmdC"));
  Click("cmdRestore(0)");
  expect("put back", "mnuOptions", opened);
  Click("cmdCancelRule(0)");
  expect("abandoned", kWithTwoRules, "");
  Open(1);
  EXPECT_EQ(form->lstRules.ListIndex(), 1);
  Add(kSender, u"gamma");
  Save();
  expect("saved",
         Replaced(kWithTwoRules, " mnuAdd mnuDelete mnuAddBook",
                  " mnuChangeBook mnuAdd mnuDelete mnuAutoUpdateBook"),
         "");
  EXPECT_EQ(Count(kSender) + Typed(kSender) + form->statBar.Panel(9), "");
  EXPECT_THAT(Words(kSender), IsEmpty());
  EXPECT_FALSE(form->chkEnabled.Checked());
  EXPECT_THAT(state.tables.WordCount, testing::Each(0));
}

TEST_F(RuleList, ListAndMenusMarkActiveRulesDifferently) {
  rules.Order("00A 001");
  rules.Rule("00A", "Spam", 0).Actions("000").Action("000", 12).Criteria("000");
  rules.PlainRule("001", "Famille", "000");
  Start();
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("  00A Spam", "* 001 Famille"));
  for (const auto* menu : form->RuleMenus()) {
    EXPECT_EQ(menu->CaptionOf(0), " \t00A Spam");
    EXPECT_EQ(menu->CaptionOf(1), "*\t001 Famille");
  }
}

TEST_F(RuleList, ARulesKeyMadeNowLeavesAUsableWindow) {
  std::filesystem::remove(FoldersFile());  // It is read when it is first needed.
  dialogs.Expect("La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp,
                 kBoxInformation, kAppTitle);
  Start();
  EXPECT_EQ(Which(kCommands), kWithoutRules);
  EXPECT_EQ(Which(kControls), "");
  EXPECT_TRUE(form->fraEdit[0].Visible());
  for (std::size_t slot = 1; slot < kSlotCount; ++slot) EXPECT_FALSE(form->fraEdit[slot].Visible());
  EXPECT_FALSE(form->Menu("mnuWhiteListK9").Visible());
  EXPECT_EQ(Stored(), "Version = 327680\n");
  EXPECT_EQ(store.commits, 1);
  rules.PlainRule("000", "Une", "000").Order("000");
  form->LoadRules();
  Open(0);
  for (int times = 0; times < 2; ++times) {
    if (times == 0) dialogs.Expect(kUnreadableFolders, kBoxStop, "Folders");
    dialogs.Expect(kUnreadableFolders);
    form->lstAct.ClickItem(0);
  }
}

TEST_F(RuleList, ARuleBeyondTheTablesIsListedAndNeverOpened) {
  rules.Order("000 001");
  rules.PlainRule("000", "Trop", "000 001 002 003 004 005 006 007 008 009 00A 00B 00C");
  for (int i = 0; i < 13; ++i) rules.Words(ThreeDigitId(i), 12, {"mot"});
  rules.PlainRule("001", "Famille", "000").Words("000", 12, {"alpha"});
  const auto report =
      "La règle \"000 - Trop\" a mal été enregistrée.\rIl est conseillé de la supprimer."_cp;
  dialogs.Expect(report, kBoxOk, kAppTitle);
  Start();
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("* 000 Trop", "* 001 Famille"));
  Open(0);
  EXPECT_EQ(Which(kControls), "");
  EXPECT_FALSE(form->RuleMenu("mnuMerge").EnabledOf(0));
  for (const auto* other : {"mnuRen", "mnuDel"}) EXPECT_TRUE(form->RuleMenu(other).EnabledOf(0));
}

TEST_F(RuleList, TheLoadRunsWithTheSettings) {
  const auto ini = environment.userFolder / "Morvelle.ini";
  WriteFile(ini, "Auto\r\nsilent");
  environment.fileVersions[environment.programFile] = "1.2.3.0";
  StartWithTwoRules();
  EXPECT_EQ(form->form.Caption(), "Éditeur de règles Brisquet - Version 1.2.3.0"_cp);
  EXPECT_TRUE(Checked("mnuSilent"));
  EXPECT_TRUE(Checked("mnuAutoUpdateBook"));
  EXPECT_EQ(form->statBar.Panel(2), "0A1B2C3D");
  EXPECT_EQ(ReadFile(ini), "Auto\r\nsilent\r\n");
  const auto& settings = state.settings;
  EXPECT_EQ(environment.currentFolder, settings.AppPath);
  EXPECT_TRUE(settings.AppPath.filename().empty()) << "ends with one separator";
  EXPECT_EQ(settings.helpFile, environment.userFolder / "Morvelle.chm");
  EXPECT_EQ(settings.UserFilesFolder, environment.userFolder / "Fichiers VLX");
  EXPECT_TRUE(std::filesystem::is_directory(settings.UserFilesFolder));
}

}  // namespace
}  // namespace morvelle
