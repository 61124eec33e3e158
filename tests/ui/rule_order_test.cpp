#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

struct RuleOrder : Window {
  /// Rules 000, 001 … named A, B …, each with the actions of its types; odd ones are not active.
  void StartWith(const std::vector<std::vector<std::uint32_t>>& actions) {
    std::vector<std::string> ids;
    for (const auto& types : actions) {
      const auto number = static_cast<int>(ids.size());
      ids.push_back(ThreeDigitId(number));
      const std::string name(1, static_cast<char>('A' + number));
      rules.WithActions(ids.back(), name, types, kDeletedItems, number % 2 == 0);
    }
    rules.Order(JoinIds(ids));
    Start();
  }
  void StartWithThree() { StartWith({{12}, {12}, {12}}); }
  /// The names in the order shown, an active rule marked.
  [[nodiscard]] std::string Shown() const {
    std::string shown;
    for (const auto& line : form->lstRules.Items()) {
      if (line[0] == '*') shown += '*';
      shown += line.back();
    }
    return shown;
  }
  void ExpectOrder(const std::string& order) {
    EXPECT_THAT(Stored(), StartsWith("Order = \"" + order + "\"\n"));
  }
};

TEST_F(RuleOrder, RulesAreMovedByHandAndSaved) {
  StartWithThree();
  const auto before = Stored();
  Choose("mnuChangeOrder");
  const std::vector<std::string> panel = {"lstRules", "picUp", "picDown", "cmdCancelOrder"};
  EXPECT_EQ(Which(panel), "lstRules picUp picDown cmdCancelOrder");
  for (const auto* arrow : {"picUp", "picDown"}) Click(arrow);  // Nothing is selected.
  form->lstRules.ClickItem(0);
  Click("picUp");
  form->lstRules.ClickItem(2);
  Click("picDown");
  EXPECT_EQ(Shown(), "*AB*C");
  EXPECT_FALSE(Can("mnuRegOrder")) << "nothing has moved";

  Click("picUp");
  Click("picUp");
  EXPECT_EQ(Shown(), "*C*AB");
  EXPECT_EQ(form->lstRules.ListIndex(), 0);
  Click("picDown");
  EXPECT_EQ(Shown(), "*A*CB");
  EXPECT_EQ(form->lstRules.ListIndex(), 1);
  EXPECT_TRUE(Can("mnuRegOrder"));
  EXPECT_EQ(Stored(), before);
  EXPECT_EQ(form->RuleMenu("mnuMod").CaptionOf(1), " \t001 B") << "the tables are untouched";
  const int commits = store.commits;
  Choose("mnuRegOrder");
  EXPECT_EQ(Stored(), Replaced(before, "000 001 002", "000 002 001"));
  EXPECT_EQ(store.commits, commits + 1);
  EXPECT_EQ(form->RuleMenu("mnuMod").CaptionOf(1), "*\t002 C");
  EXPECT_FALSE(Can("mnuRegOrder"));
  EXPECT_EQ(form->lstRules.ListIndex(), 1) << "the moved rule stays selected";
  EXPECT_EQ(Which(panel), "lstRules picUp picDown cmdCancelOrder") << "and can be moved on";
  Open(0);
  EXPECT_EQ(Which(panel), "") << "an open rule ends it";
}

TEST_F(RuleOrder, CancellingBringsTheFormerOrderBack) {
  for (const auto* command : {"mnuChangeOrder", "mnuArrange"}) {
    StartWith({{6}, {12}, {12}});
    // From then on the store has seen the rules change at once.
    store.BeginBatch();
    rules.Rule("000", "Autre");
    store.AbandonBatch();
    form->LoadRules();
    Choose(command);
    form->lstRules.ClickItem(2);
    Click("picUp");
    Click("picUp");
    const auto moved = IdOfLine(form->lstRules.Item(0));
    Click("cmdCancelOrder");
    EXPECT_EQ(Shown(), "*AB*C");
    EXPECT_EQ(IdOfLine(form->lstRules.Item(form->lstRules.ListIndex())), moved) << "the same rule";
    EXPECT_EQ(form->RuleMenu("mnuDel").CaptionOf(0), "*\t000 A");
    EXPECT_FALSE(Can("mnuRegOrder"));
    EXPECT_TRUE(form->NoChange());
    ExpectOrder("000 001 002");
  }
}

TEST_F(RuleOrder, ArrangingGroupsTheRulesByTheirActions) {
  StartWith({{6}, {12}, {8}, {9}, {6, 12}, {}});
  const auto before = Stored();
  form->lstRules.SetListIndex(3);
  Choose("mnuArrange");
  // A rule without action is in no group: the last row keeps its own.
  EXPECT_THAT(form->lstRules.Items(),
              ElementsAre("001 B", "004 E", "002 C", "003 D", "000 A", "005 F"));
  EXPECT_EQ(form->lstRules.ListIndex(), 3);
  EXPECT_EQ(form->RuleMenu("mnuDel").CaptionOf(0), "*\t000 A") << "the menus follow the reload";
  Click("picUp");
  Choose("mnuRegOrder");
  EXPECT_EQ(Stored(), Replaced(before, "000 001 002 003 004 005", "001 004 003 002 000 005"));
  EXPECT_EQ(Shown(), "B*ED*C*AF") << "each rule with its own mark again";
  Open(1);
  EXPECT_THAT(SelectedActions(), ElementsAre(0, 3));
}

TEST_F(RuleOrder, AnEntryIsTheRuleItShowsWhateverMovedTheRows) {
  StartWith({{6}, {12}});
  for (auto* menu : form->RuleMenus()) {
    SCOPED_TRACE(menu->Name());
    rules.Order("000 001");
    form->LoadRules();
    Choose("mnuArrange");
    rules.Order("001 000");
    dialogs.Expect(kLoseOrder, Button::Yes);
    if (menu->Name() == "mnuDel") {
      dialogs.Expect("Êtes-vous sûr de vouloir détruire la règle A ?"_cp, Button::No);
    } else if (menu->Name() == "mnuRen") {
      dialogs.ExpectText("Nom actuel de la règle : A\r\rNouveau nom ?"_cp, std::nullopt);
    } else if (menu->Name() == "mnuWhatRuleToFile") {
      fileDialogs.Choose(std::nullopt);
    }
    menu->Choose(0);
    if (menu->Name() == "mnuMod" || menu->Name() == "mnuMerge") {
      EXPECT_EQ(form->statBar.Panel(9), "A");
      Click("cmdCancelRule(0)");
    }
  }
  EXPECT_EQ(fileDialogs.asked.back().proposal, "A.roe");
  EXPECT_EQ(printer.titles.back(), "A");
}

TEST_F(RuleOrder, ARuleThatAnArrangementPushesOutIsNotLost) {
  StartWith({{9, 6}, {}});
  Choose("mnuArrange");
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("000 A", "000 A"));
  Choose("mnuRegOrder");
  ExpectOrder("000 001");
  EXPECT_EQ(Shown(), "*AB");
}

TEST_F(RuleOrder, AnArrangementBeyondTheRowsEndsTheProgram) {
  StartWith({{9, 6}, {8}});
  const auto before = Stored();
  dialogs.Expect("L'indice n'appartient pas à la sélection"_cp, kBoxOk, "mnuArrange_Click");
  EXPECT_THROW(Choose("mnuArrange"), ProgramEnd);
  EXPECT_EQ(Stored(), before);
}

TEST_F(RuleOrder, AnOrderThatIsNotStoredStaysOnTheScreen) {
  StartWithThree();
  Choose("mnuChangeOrder");
  form->lstRules.ClickItem(1);
  Click("picUp");
  store.commitOutcome = CommitOutcome::Failed;
  dialogs.Expect(kNotStored);
  Choose("mnuRegOrder");
  EXPECT_EQ(Shown(), "B*A*C");
  EXPECT_EQ(state.tables.Mail.Order, "000 001 002");
  EXPECT_TRUE(Can("mnuRegOrder"));
  Choose("mnuRegOrder");
  ExpectOrder("001 000 002");
}

TEST_F(RuleOrder, ALeftRuleHasNoPartInOrdering) {
  StartWithThree();
  Open(1);
  Add(kSender, u"beta");
  Click("cmdCancelRule(0)");
  form->txtBox[0].SetText("mot");
  EXPECT_FALSE(form->cmdRestore[0].Enabled());
  // The list as its own routine fills it, whatever rule was opened last.
  form->FillRulesList(false);
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("*\t000 A", " \t001 B", "*\t002 C"));
  EXPECT_EQ(form->lstRules.ListIndex(), 1);
  EXPECT_TRUE(Can("picUp"));
  Click("picUp");
  EXPECT_EQ(Shown(), "B*A*C") << "no rule is open: the rule moves, not the selection";
  EXPECT_EQ(form->lstRules.ListIndex(), 0);
  form->txtBox[0].SetText("autre");
  EXPECT_FALSE(form->cmdRestore[0].Enabled());
  Choose("mnuRegOrder");
  ExpectOrder("001 000 002");
}

TEST_F(RuleOrder, WithARuleOpenMovingUpOnlyMovesTheSelection) {
  StartWithThree();
  Open(1);
  form->OrderEnable(true);
  Click("picUp");
  EXPECT_EQ(Shown(), "*AB*C");
  EXPECT_EQ(form->lstRules.ListIndex(), 0);
  EXPECT_EQ(state.editing.nCurRule, 0);
  Add(kSender, u"beta");
  dialogs.Expect(kSaveBoth, Button::Yes);
  const auto before = Stored();
  Save();
  EXPECT_EQ(Stored(), Replaced(before, "001\\Criteria\\000\\Value = 3:\"alpha~",
                               "001\\Criteria\\000\\Value = 3:\"alpha~beta~"))
      << "the open rule, whatever line is selected";
}

}  // namespace
}  // namespace morvelle
