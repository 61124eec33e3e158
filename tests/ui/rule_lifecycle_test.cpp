
#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;

constexpr auto kQuit = "Voulez-vous vraiment quitter Morvelle\u00A0?"_cp;
constexpr auto kReplaceChanged =
    "Un autre programme a modifié le fichier des règles depuis son ouverture.\r"
    "Voulez-vous le remplacer par ce que montre Morvelle ?"_cp;

struct Lifecycle : Window {
  /// "Publicités" open, with gamma and once more alpha added.
  void Edit() {
    StartWithTwoRules();
    Open(0);
    Add(kSender, u"gamma");
    Add(kSender, u"alpha");
  }
  void ExpectStillEdited() {
    EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta", "gamma", "alpha"));
    EXPECT_EQ(Count(kSender), "4 mots");
    EXPECT_TRUE(Can("mnuRegContent"));
    EXPECT_TRUE(Can("cmdRecord(0)"));
    EXPECT_FALSE(Can("mnuChange")) << "the rule is still open";
  }
  /// The order and the open rule's content wait to be saved, the rules having changed places.
  void EditBoth() {
    Edit();
    form->InitMod(true);
    SwapRules();
  }
  void SwapRules() {
    form->lstRules.SetItem(0, "  001 Famille");
    form->lstRules.SetItem(1, "* 000 Publicités"_cp);
  }
};

TEST_F(Lifecycle, AThirteenthCriterionIsRefusedAndTheRuleStaysOpen) {
  rules.Order("000").PlainRule("000", "Pleine", kTwelve);
  for (int i = 0; i < 11; ++i) rules.Criterion(ThreeDigitId(i), 15, 0, 1).Number(1);
  rules.Words("00B", 12, {"alpha"}, 0, 1);
  Start();
  Open(0);
  const auto before = Stored();
  Add(kSender, u"alpha");
  Add(kBody, u"beta");
  dialogs.Expect(
      "Cette règle ne peut être enregistrée : elle compterait plus de 12 critères ou actions"_cp);
  Save();
  EXPECT_EQ(Stored(), before);
  EXPECT_EQ(Count(kSender), "2 mots") << "as many as the list shows";
  EXPECT_TRUE(Can("cmdRecord(2)"));
  ClickWord(kBody, 0);
  Click("cmdDel(2)");
  Save();
  EXPECT_FALSE(Can("lstAct")) << "twelve are held";
}

TEST_F(Lifecycle, WhatIsNotStoredKeepsTheRuleOpenAndWhole) {
  Edit();
  state.editing.nCurRule = 1;  // The open rule is saved whatever the current row.
  const auto before = Stored();
  store.commitOutcome = CommitOutcome::ChangedMeanwhile;
  dialogs.Expect(kReplaceChanged, 292, kAppTitle, Button::No);
  Choose("mnuRegContent");
  ExpectStillEdited();
  EXPECT_EQ(Stored(), before);
  dialogs.Expect(kReplaceChanged, Button::Yes);
  Save();
  EXPECT_EQ(Stored(), Replaced(before, "alpha~beta~", "alpha~beta~gamma~"));
}

TEST_F(Lifecycle, WhatChangedIsAskedAboutBeforeAnythingIsCleared) {
  Edit();
  state.editing.bOrderChanged = true;
  dialogs.Expect(kLoseBoth, kBoxYesNo + kBoxSecondDefault, kAppTitle, Button::No);
  EXPECT_FALSE(form->NoChange());
  ExpectStillEdited();
  dialogs.Expect(kLoseBoth, Button::Yes);
  EXPECT_TRUE(form->NoChange());
  EXPECT_EQ(Which({"mnuRegContent", "mnuRegOrder", "lstAct", "txtBox(0)"}), "");
  EXPECT_TRUE(Can("mnuChange"));
  state.editing.bOrderChanged = true;
  form->lstRules.SetItem(0, "ordre");
  dialogs.Expect(kLoseOrder, Button::No);
  Open(1);
  EXPECT_FALSE(Can("lstAct"));
  EXPECT_EQ(form->lstRules.Item(0), "ordre");
  dialogs.Expect(kLoseOrder, Button::Yes);
  Open(1);
  EXPECT_EQ(form->statBar.Panel(9), "Famille");
  EXPECT_EQ(form->lstRules.Item(0), "* 000 Publicités"_cp);
}

TEST_F(Lifecycle, OpeningFindsTheRuleByItsIdAfterTheReload) {
  StartWithTwoRules();
  rules.PlainRule("002", "Nouvelle", "000").Order("002 000 001");
  Open(1);
  EXPECT_EQ(form->statBar.Panel(9), "Famille");
  EXPECT_EQ(form->lstRules.ListIndex(), 2);
  form->RuleMenu("mnuMod").onClick(7);
  EXPECT_EQ(form->statBar.Panel(9), "Famille") << "a row that is gone does nothing";
}

TEST_F(Lifecycle, QuittingAsksForTheWorkAndThenToQuit) {
  struct Case {
    bool changed, quiet;
    std::optional<Button> drop, quit;
  };
  const Case cases[] = {
      {false, false, {}, Button::Yes},
      {false, false, {}, Button::No},
      {false, true, {}, {}},
      {true, false, Button::No, {}},
      {true, false, Button::Yes, Button::No},
      {true, false, Button::Yes, Button::Yes},
      {true, true, Button::No, {}},
      {true, true, Button::Yes, {}},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(i);
    const auto& [changed, quiet, drop, quit] = cases[i];
    const bool closes = drop != Button::No && quit != Button::No;
    closed = false;
    WriteFile(environment.userFolder / "Morvelle.ini", quiet ? "\r\nSILENT\r\n" : "\r\n\r\n");
    changed ? Edit() : StartWithTwoRules();
    const auto before = Stored();
    if (drop) dialogs.Expect(kLoseContent, *drop);
    if (quit) dialogs.Expect(kQuit, kBoxYesNo + kBoxQuestion, kAppTitle, *quit);
    Choose("mnuQuit");
    dialogs.ExpectAllShown();
    EXPECT_EQ(closed, closes);
    if (!closes && changed) ExpectStillEdited();
    EXPECT_EQ(Stored(), before);
  }
}

TEST_F(Lifecycle, AnUnchangedOrderIsToldAndWrittenAllTheSame) {
  StartWithTwoRules();
  rules.PutText(kTestMailKey, "Order", "001");
  form->Menu("mnuRegOrder").SetEnabled(true);
  dialogs.Expect("L'ordre n'a pas été modifié"_cp, kBoxOk, kAppTitle);
  Choose("mnuRegOrder");
  EXPECT_THAT(Stored(), testing::StartsWith("Order = \"000 001\"\n"));
  const int commits = store.commits;
  dialogs.Expect("Le contenu de la règle n'a pas été modifié"_cp, kBoxOk, kAppTitle);
  form->Menu("mnuRegContent").onClick();
  EXPECT_EQ(store.commits, commits);
}

TEST_F(Lifecycle, ContentAndOrderAreSavedTogetherOrNotAtAll) {
  for (const auto* command : {"mnuRegContent", "mnuRegOrder"}) {
    SCOPED_TRACE(command);
    EditBoth();
    const auto before = Stored();
    dialogs.Expect(kSaveBoth, kBoxYesNo, kAppTitle, Button::No);
    Choose(command);
    EXPECT_EQ(Stored(), before);
    store.commitOutcome = CommitOutcome::Failed;
    dialogs.Expect(kSaveBoth, Button::Yes);
    dialogs.Expect(kNotStored);
    Choose(command);
    EXPECT_EQ(Stored(), before);
    EXPECT_TRUE(Can("mnuRegOrder"));
    ExpectStillEdited();
    EXPECT_EQ(state.tables.Mail.Order, "000 001");

    const int commits = store.commits;
    dialogs.Expect(kSaveBoth, Button::Yes);
    Choose(command);
    EXPECT_EQ(Stored(), Replaced(Replaced(before, "Order = \"000 001\"", "Order = \"001 000\""),
                                 "alpha~beta~", "alpha~beta~gamma~"));
    EXPECT_EQ(store.commits, commits + 1);
    EXPECT_THAT(form->lstRules.Items(), ElementsAre("  001 Famille", "* 000 Publicités"_cp));
    EXPECT_EQ(Which({"mnuRegContent", "mnuRegOrder", "lstAct"}), "");
    EXPECT_TRUE(form->NoChange());
  }
}

TEST_F(Lifecycle, BookMenusFollowTheRuleExceptAfterAContentSave) {
  rules.Order("000").PlainRule("000", "CARNET D'ADRESSES", "000").Words("000", 12, {"a@b.fr"});
  Start();
  const std::vector<std::string> menus = {"mnuChangeBook", "mnuAddBook", "mnuAutoUpdateBook"};
  EXPECT_EQ(Which(menus), "mnuChangeBook mnuAutoUpdateBook");
  rules.Rule("000", "Autre");
  Open(0);
  Click("cmdCancelRule(0)");
  EXPECT_EQ(Which(menus), "mnuAddBook");
  Open(0);
  Add(kSender, u"c@d.fr");
  Save();
  EXPECT_EQ(Which(menus), "mnuChangeBook mnuAutoUpdateBook");
  Open(0);
  Click("cmdCancelRule(0)");
  EXPECT_EQ(Which(menus), "mnuAddBook");
}

}  // namespace
}  // namespace morvelle
