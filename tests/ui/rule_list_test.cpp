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
const std::string kWithOneRule =
    "mnuImpOneRule mnuImpAllRules mnuExpOneRule mnuExpAllRules mnuPrintOneRule mnuPrintAllRules "
    "mnuRename mnuChangeContent mnuMergeContent mnuAdd mnuDelete mnuAddBook";
const std::string kWithTwoRules =
    "mnuImpOneRule mnuImpAllRules mnuExpOneRule mnuExpAllRules mnuPrintOneRule mnuPrintAllRules "
    "mnuRename mnuChangeContent mnuMergeContent mnuChangeOrder mnuArrange mnuAdd mnuDelete "
    "mnuAddBook";
const std::string kEditor = "lstAct chkEnabled optCriteria(0) lstBox(0) txtBox(0) txtCop(0)";

TEST_F(RuleList, WithoutRulesOnlyMakingAndImportingIsPossible) {
  rules.PutNumber(kTestMailKey, "Version", 327680);
  dialogs.Expect("Il n'existe pas encore de règle de courrier"_cp, kBoxOk, kAppTitle);
  Start();
  form->LoadRules();
  EXPECT_EQ(dialogs.shown.size(), 1U) << "told once a run";
  rules.Order("");
  form->LoadRules();
  EXPECT_EQ(Which(kCommands), kWithoutRules);
  EXPECT_EQ(Which(kControls), "");
}

TEST_F(RuleList, OneRuleCannotBeOrdered) {
  rules.Order("000").PlainRule("000", "Seule", "000").Words("000", 12, {"alpha"});
  Start();
  EXPECT_EQ(Which(kCommands), kWithOneRule);
  state.editing.bOrderChanged = true;
  form->EnableMnu();
  EXPECT_EQ(Which(kCommands), kWithOneRule) << "an order of one rule has nothing to save";
}

TEST_F(RuleList, CommandsFollowTheRuleFromOpeningToLeaving) {
  StartWithTwoRules();
  EXPECT_EQ(Which(kCommands), kWithTwoRules);
  EXPECT_EQ(Which(kControls), "");

  Open(0);
  EXPECT_EQ(Which(kCommands), "mnuOptions") << "opened";
  EXPECT_EQ(Which(kControls), kEditor + " cmdCancelRule(0) chkFilter(0)");
  EXPECT_EQ(form->lstRules.ListIndex(), 0);
  EXPECT_EQ(form->statBar.Panel(9), "Publicités"_cp);

  Type(kSender, u"gamma");
  EXPECT_EQ(Which(kControls), kEditor + " cmdAdd(0) cmdRestore(0) cmdCancelRule(0) chkFilter(0)");
  Click("cmdAdd(0)");
  EXPECT_EQ(Which(kCommands), "mnuRegContent mnuOptions") << "edited";
  EXPECT_EQ(Which(kControls),
            kEditor + " cmdRestore(0) cmdRecord(0) cmdCancelRule(0) chkFilter(0)");

  Click("cmdRestore(0)");
  EXPECT_EQ(Which(kCommands), "mnuOptions") << "put back";
  EXPECT_EQ(Which(kControls), kEditor + " cmdCancelRule(0) chkFilter(0)");

  Click("cmdCancelRule(0)");
  EXPECT_EQ(Which(kCommands), kWithTwoRules) << "abandoned";
  EXPECT_EQ(Which(kControls), "");

  Open(1);
  EXPECT_EQ(form->lstRules.ListIndex(), 1);
  Add(kSender, u"gamma");
  Save();
  EXPECT_EQ(Which(kCommands),
            Replaced(Replaced(kWithTwoRules, "mnuArrange", "mnuArrange mnuChangeBook"),
                     " mnuAddBook", "") +
                " mnuAutoUpdateBook")
      << "saved";
  EXPECT_EQ(Which(kControls), "");
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
  EXPECT_EQ(form->RuleMenus().size(), 6U);
  for (const auto* menu : form->RuleMenus()) {
    ASSERT_EQ(menu->Count(), 2);
    EXPECT_EQ(menu->CaptionOf(0), " \t00A Spam");
    EXPECT_EQ(menu->CaptionOf(1), "*\t001 Famille");
  }
  form->LoadMnu(0, "00A Courrier", false);
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("  00A Courrier", "* 001 Famille"));
}

TEST_F(RuleList, FillRulesListCanExchangeTheEnds) {
  rules.Order("000 001 002");
  for (const auto* id : {"000", "001", "002"}) rules.PlainRule(id, "R"s + id, "000");
  Start();
  state.editing.nCurRule = 1;
  form->FillRulesList(false);
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("*\t000 R000", "*\t001 R001", "*\t002 R002"));
  EXPECT_EQ(form->lstRules.ListIndex(), 1);
  EXPECT_TRUE(Can("lstRules"));
  form->FillRulesList(true);
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("* 002 R002", "*\t001 R001", "* 000 R000"));
  EXPECT_EQ(form->lstRules.ListIndex(), 0);
  EXPECT_FALSE(Can("lstRules"));
}

TEST_F(RuleList, ARulesKeyMadeNowLeavesAUsableWindow) {
  dialogs.Expect("La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp,
                 kBoxInformation, kAppTitle);
  Start();
  EXPECT_EQ(Which(kCommands), kWithoutRules);
  EXPECT_EQ(Which(kControls), "");
  EXPECT_TRUE(form->fraEdit[0].Visible());
  for (std::size_t slot = 1; slot < kSlotCount; ++slot) EXPECT_FALSE(form->fraEdit[slot].Visible());
  EXPECT_FALSE(form->Menu("mnuWhiteListK9").Visible());
  EXPECT_EQ(Stored(), "Version = 327680\n");
  Choose("mnuAdd");
  Choose("mnuHelp");
}

TEST_F(RuleList, ADamagedRuleIsToldOncePerLoadAndTheOthersStay) {
  rules.Order("000 001 002");
  rules.PlainRule("000", "Sans nom", "000").RuleWithout("Name");
  rules.PlainRule("001", "Bonne", "000").Words("000", 12, {"alpha"});
  const auto report =
      "La règle \"000\" a mal été enregistrée.\rIl est conseillé de la supprimer."_cp;
  dialogs.Expect(report, kBoxOk, kAppTitle);
  Start();
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("* 000 ", "* 001 Bonne", "  002 "));
  const auto before = Stored();
  dialogs.Expect(report);
  Open(1);
  EXPECT_THAT(Words(kSender), ElementsAre("alpha"));
  dialogs.Expect(report);
  Click("cmdCancelRule(0)");
  EXPECT_EQ(Stored(), before) << "reading makes no key";
}

TEST_F(RuleList, ARuleBeyondTheTablesIsListedAndNeverOpened) {
  rules.Order("000 001");
  rules.PlainRule("000", "Trop", "000 001 002 003 004 005 006 007 008 009 00A 00B 00C");
  for (int i = 0; i < 13; ++i) rules.Words(ThreeDigitId(i), 12, {"mot"});
  rules.PlainRule("001", "Famille", "000").Words("000", 12, {"alpha"});
  const auto report =
      "La règle \"000 - Trop\" a mal été enregistrée.\rIl est conseillé de la supprimer."_cp;
  dialogs.Expect(report);
  Start();
  EXPECT_EQ(form->lstRules.Item(0), "* 000 Trop");
  Open(0);
  EXPECT_EQ(Which(kControls), "");
  EXPECT_FALSE(form->RuleMenu("mnuMerge").EnabledOf(0));
  for (const auto* other : {"mnuRen", "mnuDel"}) EXPECT_TRUE(form->RuleMenu(other).EnabledOf(0));

  const auto before = Stored("000");
  dialogs.Expect(report);
  Open(1);
  dialogs.Expect(report);
  Add(kSender, u"beta");
  Save();
  EXPECT_EQ(Stored("000"), before);
}

TEST_F(RuleList, OnlyRulesWithWordListsOrNoCriterionAreOffered) {
  rules.Order("000 001 002");
  rules.PlainRule("000", "Taille", "000").Criterion("000", 15).Number(100);
  rules.PlainRule("001", "Taille et mots", "000 001").Criterion("000", 15).Number(100);
  rules.Words("001", 9, {"alpha"});
  rules.PlainRule("002", "Vide", "000");
  Start();
  std::vector<bool> editable;
  for (int row = 0; row < 3; ++row) editable.push_back(form->RuleMenu("mnuMod").EnabledOf(row));
  EXPECT_THAT(editable, ElementsAre(false, true, true));
}

TEST_F(RuleList, TheLoadRunsWithTheSettings) {
  WriteFile(environment.userFolder / "Morvelle.ini", "Auto\r\nsilent\r\n");
  environment.fileVersions[environment.programFile] = "1.2.3.0";
  StartWithTwoRules();
  EXPECT_EQ(form->form.Caption(), "Éditeur de règles Brisquet - Version 1.2.3.0"_cp);
  EXPECT_TRUE(Checked("mnuSilent"));
  EXPECT_TRUE(Checked("mnuAutoUpdateBook"));
  EXPECT_EQ(form->statBar.Panel(2), "0A1B2C3D");
}

}  // namespace
}  // namespace morvelle
