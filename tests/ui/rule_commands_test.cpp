
#include "core/new_rule.h"
#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr auto kNewName = "Entrer le nom de la règle à créer"_cp;
constexpr auto kCharacters = "Utilisation de caractères non autorisés"_cp;
constexpr auto kReserved = "Ce nom de règle est réservé"_cp;
constexpr auto kDelete = "Êtes-vous sûr de vouloir détruire la règle Famille ?"_cp;
constexpr auto kOtherName = "Nom actuel de la règle : Famille\r\rNouveau nom ?"_cp;
constexpr auto kRenameTitle = "Renommer une règle"_cp;
constexpr auto kRenameHead = "Changer le nom de la règle   \r\n'"_cp;

std::string RenameToAmis() { return std::string(kRenameHead) + "Famille'\r\nen\r\n'Amis' ?"; }

struct RuleCommands : Window {
  /// "Ajouter une règle", the name given at once.
  void AddRule(std::string_view name) {
    dialogs.ExpectText(kNewName, std::string(name));
    Choose("mnuAdd");
  }
  /// Saves the open rule and the order that has become longer.
  void SaveBoth() {
    dialogs.Expect(kSaveBoth, Button::Yes);
    Save();
  }
  /// A command, on the second rule where it is one's; whether it can be chosen or not.
  void Run(std::string_view command) {
    for (const auto* menu : form->RuleMenus()) {
      if (menu->Name() == command) return menu->onClick(1);
    }
    form->Menu(command).onClick();
  }
  void Delete(int row) { form->RuleMenu("mnuDel").Choose(row); }
  void Rename(int row) { form->RuleMenu("mnuRen").Choose(row); }
  void ExpectIdle() {
    EXPECT_EQ(Which({"mnuRegContent", "mnuRegOrder", "mnuOptions", "lstRules", "lstAct",
                     "txtBox(0)", "chkFilter(0)", "cmdRecord(0)", "cmdCancelRule(0)"}),
              "");
    EXPECT_TRUE(Can("mnuAdd"));
    EXPECT_TRUE(form->NoChange());
    for (const auto* menu : form->RuleMenus()) {
      EXPECT_EQ(menu->Count(), std::max(1, form->lstRules.Count()));
    }
  }
};

// --- Adding --------------------------------------------------------------------------------------

TEST_F(RuleCommands, ANewRuleOpensModifiedAndIsStoredWithItsOrder) {
  StartWithTwoRules();
  const auto before = Stored();
  AddRule("Été"_cp);
  EXPECT_EQ(Stored(), before) << "nothing is written yet";
  EXPECT_EQ(form->lstRules.Item(2), "* 002 Été"_cp);
  EXPECT_EQ(form->lstRules.ListIndex(), 2);
  for (const auto* menu : form->RuleMenus()) EXPECT_EQ(menu->CaptionOf(2), "*\t002 Été"_cp);
  EXPECT_EQ(form->statBar.Panel(9), "Été"_cp);
  EXPECT_TRUE(form->chkEnabled.Checked());
  EXPECT_THAT(SelectedActions(), ElementsAre(0));
  Add(kSubject, u"soleil");
  Add(kBody, u"plage");
  Choose("mnuCriteriaYes");
  SaveBoth();
  EXPECT_EQ(Stored(), ReadFile(MORVELLE_STORED "/new_rule.txt"));
  ExpectIdle();
  EXPECT_EQ(form->lstRules.ListIndex(), 2);
}

TEST_F(RuleCommands, ABadNameIsRefusedAndAskedForAgain) {
  StartWithTwoRules();
  const auto before = Stored();
  constexpr auto kUsed = "Ce nom de règle est déjà utilisé"_cp;
  for (const std::string refused :
       {"\\", "/", ":", "*", "?", "\"", "<", ">", "|", "\r\n", "\x1F", "\x7F"}) {
    dialogs.ExpectText(kNewName, "a" + refused + "b");
    dialogs.Expect(kCharacters, kBoxStop, kAppTitle);
  }
  const std::pair<std::string_view, std::string_view> refusals[] = {
      {"  \xA0\t", kCharacters},
      {"CARNET D'adresses", kReserved},
      {"fAMILLE", kUsed},
      {"pUBLICITÉS"_cp, kUsed}};
  for (const auto& [name, message] : refusals) {
    dialogs.ExpectText(kNewName, std::string(name));
    dialogs.Expect(message, kBoxStop, kAppTitle);
  }
  dialogs.ExpectText(kNewName, "");
  Choose("mnuAdd");
  EXPECT_EQ(dialogs.proposals.front(), "");
  EXPECT_EQ(dialogs.proposals.back(), "pUBLICITÉS"_cp) << "what was refused can be put right";
  ExpectIdle();
  EXPECT_EQ(form->lstRules.ListIndex(), -1);
  dialogs.ExpectText(kNewName, std::nullopt);
  Choose("mnuAdd");
  ExpectIdle();
  EXPECT_EQ(Stored(), before);
}

TEST_F(RuleCommands, ARuleMadeMeanwhileByAnotherProgramIsNotWrittenOver) {
  StartWithTwoRules();
  AddRule("Neuve");
  rules.PlainRule("002", "Autre", "000").Order("000 001 002");
  SaveBoth();
  EXPECT_EQ(Stored(), ReadFile(MORVELLE_STORED "/beside_another.txt"));
  EXPECT_THAT(form->lstRules.Items(),
              ElementsAre("* 000 Publicités"_cp, "  001 Famille", "* 003 Neuve", "* 002 Autre"));
}

TEST_F(RuleCommands, TheFirstRuleOfAll) {
  rules.Order("").Remove(kTestMailKey, "Version");
  Start();
  AddRule("Neuve");
  Click("cmdCancelRule(0)");
  EXPECT_EQ(Which({"mnuDelete", "mnuChange", "mnuExpAllRules", "mnuImpOneRule", "mnuAdd"}),
            "mnuImpOneRule mnuAdd");
  AddRule("Neuve");
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("* 000 Neuve"));
  dialogs.Expect(kSaveBoth, Button::Yes);
  Choose("mnuRegOrder");
  EXPECT_EQ(Stored(), ReadFile(MORVELLE_STORED "/first_rule.txt"));
  EXPECT_EQ(Which({"mnuDelete", "mnuChangeContent", "mnuChangeOrder"}),
            "mnuDelete mnuChangeContent");
}

TEST_F(RuleCommands, ThatThereIsNoRuleYetIsSaidAtTheStartAlone) {
  dialogs.Expect("La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp);
  Start();
  form->LoadRules();  // As a command does; the key was made by this start.
  dialogs.Expect("Il n'existe pas encore de règle de courrier"_cp, kBoxOk, kAppTitle);
  Start();
  form->LoadRules();
  rules.Order("");
  Start();
}

TEST_F(RuleCommands, WithoutTheFolderListANewRuleStopsProcessing) {
  std::filesystem::remove(FoldersFile());
  dialogs.Expect(kUnreadableFolders, kBoxStop, "Folders");
  StartWithTwoRules();
  AddRule("Neuve");
  EXPECT_THAT(SelectedActions(), ElementsAre(3));
  SaveBoth();
  EXPECT_EQ(Stored("002\\Actions"), "Order = \"000\"\n000\\Flags = 0\n000\\Type = 12\n");
}

TEST_F(RuleCommands, NoRuleIsAddedBeyondTheLimit) {
  std::vector<std::string> ids;
  for (int i = 0; i < kMaxRules; ++i) {
    ids.push_back(ThreeDigitId(i));
    rules.PlainRule(ids.back(), "R" + ids.back(), "000");
  }
  for (const auto& order : {JoinIds(ids), "7FF"s}) {
    rules.Order(order);
    Start();
    const int commits = store.commits;
    for (const auto* command : {"mnuAdd", "mnuAddBook"}) {
      dialogs.Expect(kTooManyRules, kBoxOk, kAppTitle);
      Choose(command);
      ExpectIdle();
    }
    EXPECT_EQ(state.tables.Mail.Order, order) << "every id is taken, if only by a key";
    EXPECT_EQ(store.commits, commits);
  }
}

TEST_F(RuleCommands, PuttingANewRuleBackNeedsNoReload) {
  StartWithTwoRules();
  AddRule("Neuve");
  rules.Rule("000", "Autre");
  Add(kSender, u"alpha");
  form->lstAct.ClickItem(2);
  form->chkEnabled.Click();
  EXPECT_EQ(form->lstRules.Item(2), "  002 Neuve");
  for (int times = 0; times < 2; ++times) {
    Click("cmdRestore(0)");
    EXPECT_THAT(form->lstRules.Items(),
                ElementsAre("* 000 Publicités"_cp, "  001 Famille", "* 002 Neuve"));
    EXPECT_THAT(Words(kSender), IsEmpty());
    EXPECT_EQ(Count(kSender), "");
    EXPECT_THAT(SelectedActions(), ElementsAre(0));
    EXPECT_TRUE(form->chkEnabled.Checked());
    EXPECT_FALSE(Can("cmdRestore(0)"));
    EXPECT_FALSE(Can("mnuChange"));
    Add(kSender, u"beta");
  }
  SaveBoth();
  EXPECT_THAT(Stored("002\\Criteria\\000"), HasSubstr("Value = 3:\"beta~~~\""));
  EXPECT_EQ(form->lstRules.Item(0), "* 000 Autre");
}

TEST_F(RuleCommands, AnAbandonedNewRuleLeavesNothing) {
  StartWithTwoRules();
  const auto before = Stored();
  AddRule("Neuve");
  Add(kSender, u"alpha");
  Click("cmdCancelRule(0)");
  ExpectIdle();
  EXPECT_EQ(form->lstRules.Count(), 2);
  EXPECT_EQ(state.tables.Mail.Order, "000 001");
  EXPECT_EQ(Stored(), before);
  AddRule("Neuve");
  dialogs.Expect(kLoseBoth, Button::Yes);
  form->RuleMenu("mnuMod").onClick(2);
  ExpectIdle();
}

// --- Deleting ------------------------------------------------------------------------------------

TEST_F(RuleCommands, ARuleIsDeletedWithItsPlaceInTheOrder) {
  StartWithTwoRules();
  rules.PlainRule("002", "Listes", "000").Order("002 000 001");
  rules.Rule("003", "Hors liste");
  const auto before = Stored();
  dialogs.Expect(kDelete, kBoxYesNo + kBoxQuestion + kBoxSecondDefault, kAppTitle, Button::No);
  Delete(1);
  EXPECT_EQ(Stored(), before);
  ExpectIdle();
  EXPECT_EQ(form->lstRules.ListIndex(), 2) << "the rule that was clicked, wherever it stands now";
  store.commitOutcome = CommitOutcome::Failed;
  dialogs.Expect(kDelete, Button::Yes);
  dialogs.Expect(kNotStored);
  Delete(2);
  EXPECT_EQ(Stored(), before);
  EXPECT_EQ(state.tables.Mail.Order, "002 000 001");
  EXPECT_EQ(form->lstRules.Count(), 3);
  dialogs.Expect(kDelete, Button::Yes);
  const int commits = store.commits;
  Delete(2);
  EXPECT_EQ(store.commits, commits + 1);
  const auto from = before.find("001\\");
  EXPECT_EQ(Stored(), Replaced(before.substr(0, from) + before.substr(before.find("002\\", from)),
                               "\"002 000 001\"", "\"002 000\""));
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("* 002 Listes", "* 000 Publicités"_cp));
  EXPECT_EQ(form->lstRules.ListIndex(), 1) << "the rule nearest to its place";
  ExpectIdle();
  form->RuleMenu("mnuDel").onClick(2);
}

TEST_F(RuleCommands, TheLastRuleTakesTheOrderWithIt) {
  rules.Order("000").PlainRule("000", "Famille", "000").Words("000", 12, {"alpha"});
  Start();
  dialogs.Expect(kDelete, Button::Yes);
  Delete(0);
  EXPECT_EQ(Stored(), "Version = 327680\n");
  ExpectIdle();
  EXPECT_EQ(Which({"mnuDelete", "mnuRename", "mnuExpAllRules", "mnuChangeContent", "mnuImpOneRule",
                   "mnuImpAllRules"}),
            "mnuImpOneRule mnuImpAllRules");
  EXPECT_EQ(form->RuleMenu("mnuDel").CaptionOf(0), "");
  AddRule("Famille");
  EXPECT_EQ(form->lstRules.Item(0), "* 000 Famille");
}

TEST_F(RuleCommands, DamagedOrdersDeleteNothingElse) {
  // A key that is gone, one rule twice, an id that leads to the rules key itself.
  rules.Order("005 001 000 001 \\\\\\").PlainRule("000", "Une", "000").Criterion("000", 20);
  rules.PlainRule("001", "Famille", "000").Criterion("000", 20);
  const auto before = Stored();
  constexpr auto kNoName = "Êtes-vous sûr de vouloir détruire la règle  ?"_cp;
  const auto report = [this](const std::string& id) { dialogs.Expect(DamagedRule(id)); };
  report("005");
  Start();
  EXPECT_THAT(form->lstRules.Items(),
              ElementsAre("  005 ", "* 001 Famille", "* 000 Une", "  \\\\\\ "));
  report("005");
  dialogs.Expect(kNoName, Button::Yes);
  report("\\\\\\");
  Delete(0);
  report("\\\\\\");
  dialogs.Expect(kNoName, Button::Yes);
  Delete(2);
  EXPECT_EQ(Stored(), Replaced(before, "005 001 000 001 \\\\\\", "001 000"));
  dialogs.Expect(kDelete, Button::Yes);
  Delete(0);
  EXPECT_THAT(Stored(), StartsWith("Order = \"000\"\nVersion = 327680\n000\\"));
  EXPECT_THAT(Stored(), Not(HasSubstr("\n001\\")));
}

TEST_F(RuleCommands, WhereEveryWriteIsFinalADeletionHalfDoneIsReadAgain) {
  StartWithTwoRules();
  store.tellsChanges = false;
  store.hasBatches = false;
  store.writeStatus = kStatusAccessDenied;
  dialogs.Expect(kDelete, Button::Yes);
  dialogs.Expect(std::string(kNotStored) + std::string("\rPermission refusée"_cp));
  dialogs.Expect(DamagedRule("001"));
  Delete(1);
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("* 000 Publicités"_cp, "  001 "));
  EXPECT_EQ(Stored("001"), "(no such key)");
  store.writeStatus = kStatusSuccess;
  dialogs.Expect(DamagedRule("001"));
  dialogs.Expect("Êtes-vous sûr de vouloir détruire la règle  ?"_cp, Button::Yes);
  Delete(1);
  EXPECT_THAT(Stored(), StartsWith("Order = \"000\"\n"));
}

// --- Renaming ------------------------------------------------------------------------------------

TEST_F(RuleCommands, RenamingWritesTheNameAndNothingElse) {
  StartWithTwoRules();
  rules.Remove(kTestMailKey, "Version");
  const auto before = Stored();
  const auto rename = [this](Button answer) {
    dialogs.ExpectText(kOtherName, "Amis");
    dialogs.Expect(RenameToAmis(), kBoxYesNo + kBoxQuestion, kRenameTitle, answer);
    if (store.commitOutcome == CommitOutcome::Failed) dialogs.Expect(kNotStored);
    Rename(1);
  };
  rename(Button::No);
  EXPECT_EQ(dialogs.proposals.back(), "Famille");
  EXPECT_EQ(dialogs.shown.front().title, "Renommer une règle de courrier"_cp);
  store.commitOutcome = CommitOutcome::Failed;
  rename(Button::Yes);
  EXPECT_EQ(Stored(), before);
  EXPECT_EQ(form->lstRules.Item(1), "  001 Famille");
  rename(Button::Yes);
  EXPECT_EQ(Stored(), Replaced(Replaced(before, "\"Famille\"", "\"Amis\""), "\"000 001\"\n",
                               "\"000 001\"\nVersion = 327680\n"));
  EXPECT_EQ(form->lstRules.Item(1), "  001 Amis");
  EXPECT_EQ(form->lstRules.ListIndex(), 1);
  for (const auto* menu : form->RuleMenus()) EXPECT_EQ(menu->CaptionOf(1), " \t001 Amis");
  ExpectIdle();
  form->RuleMenu("mnuRen").onClick(2);
}

TEST_F(RuleCommands, AnotherNameIsCheckedAsANewOneIsSaveForTheRulesOwn) {
  StartWithTwoRules();
  dialogs.ExpectText(kOtherName, "a|b");
  dialogs.Expect(kCharacters, kBoxStop, kAppTitle);
  dialogs.ExpectText(kOtherName, std::string("pUBLICITÉS"_cp));
  dialogs.Expect("Ce nom est déjà utilisé"_cp, kBoxExclamation, kAppTitle);
  dialogs.ExpectText(kOtherName, "FAMILLE");
  dialogs.Expect(std::string(kRenameHead) + "Famille'\r\nen\r\n'FAMILLE' ?", Button::Yes);
  Rename(1);
  EXPECT_THAT(Stored("001"), StartsWith("Name = \"FAMILLE\"\n"));
  dialogs.ExpectText("Nom actuel de la règle : FAMILLE\r\rNouveau nom ?"_cp, std::nullopt);
  Rename(1);
  ExpectIdle();
}

TEST_F(RuleCommands, WhatCannotBeOpenedIsRenamedAndWhatIsGoneIsNot) {
  rules.Order("000 005 0 1").PlainRule("000", "Famille", kTwelve + " 00C");
  dialogs.Expect(DamagedRule("000 - Famille"));
  Start();
  const auto before = Stored();
  Open(0);
  EXPECT_EQ(Which({"lstAct", "chkEnabled", "txtBox(0)"}), "");
  EXPECT_FALSE(form->RuleMenu("mnuMerge").EnabledOf(0));
  EXPECT_TRUE(form->RuleMenu("mnuDel").EnabledOf(0));
  dialogs.ExpectText(kOtherName, "Amis");
  dialogs.Expect(RenameToAmis(), Button::Yes);
  Rename(0);
  EXPECT_EQ(Stored(), Replaced(before, "\"Famille\"", "\"Amis\""));
  const std::pair<int, std::string> failures[] = {
      {1, std::string(kNotStored) + std::string("\rErreur du registre n° 2"_cp)},
      {2, std::string("Cette règle ne peut être enregistrée : son numéro n'est pas valable"_cp)}};
  for (const auto& [row, message] : failures) {
    dialogs.ExpectText("Nom actuel de la règle : \r\rNouveau nom ?"_cp, "Cousins");
    dialogs.Expect(std::string(kRenameHead) + "'\r\nen\r\n'Cousins' ?", Button::Yes);
    dialogs.Expect(message);
    Rename(row);
  }
  EXPECT_EQ(Stored(), Replaced(before, "\"Famille\"", "\"Amis\""));
}

TEST_F(RuleCommands, BookMenusFollowDeletionAndRenaming) {
  const std::vector<std::string> menus = {"mnuChangeBook", "mnuAddBook", "mnuAutoUpdateBook"};
  const std::string book = "Carnet d'Adresses";
  for (const bool deletes : {true, false}) {
    WriteFile(environment.userFolder / "Morvelle.ini", "Auto\r\n\r\n");
    rules.Order("000 001").PlainRule("000", book, "000").PlainRule("001", "Famille", "000");
    dialogs.Expect("Votre règle \"Carnet d'adresses\" va être mise à jour"_cp, Button::Cancel);
    Start();
    EXPECT_EQ(Which(menus), "mnuChangeBook mnuAutoUpdateBook");
    if (deletes) {
      dialogs.Expect(std::string("Êtes-vous sûr de vouloir détruire la règle "_cp) + book + " ?",
                     Button::Yes);
      Delete(0);
      EXPECT_FALSE(Checked("mnuAutoUpdateBook"));
    } else {
      dialogs.ExpectText(std::string("Nom actuel de la règle : "_cp) + book + "\r\rNouveau nom ?",
                         "Amis");
      dialogs.Expect(std::string(kRenameHead) + book + "'\r\nen\r\n'Amis' ?", Button::Yes);
      Rename(0);
    }
    EXPECT_EQ(Which(menus), "mnuAddBook");
    rules.Rule("001", book);
    Open(0);
    Click("cmdCancelRule(0)");
    EXPECT_TRUE(Checked("mnuAutoUpdateBook")) << "the mode was never another";
  }
}

// --- The guard -----------------------------------------------------------------------------------

TEST_F(RuleCommands, EveryCommandAsksBeforeAnythingIsCleared) {
  StartWithTwoRules();
  addressBook.addresses = {std::nullopt};
  struct Command {
    const char* name;
    /// What it asks for once it goes ahead.
    std::function<void()> ask = [] {};
    bool closesUnchanged = true;
  };
  const auto cancel = [this] { fileDialogs.Choose(std::nullopt); };
  const auto cannotImport = [=, this] {
    cancel();
    dialogs.Expect("Ce fichier ne peut être importé"_cp);
  };
  const Command commands[] = {{"mnuAdd", [this] { dialogs.ExpectText(kNewName, std::nullopt); }},
                              {"mnuDel", [this] { dialogs.Expect(kDelete, Button::No); }},
                              {"mnuRen", [this] { dialogs.ExpectText(kOtherName, std::nullopt); }},
                              {"mnuAddBook"},
                              {"mnuChangeBook"},
                              {"mnuChangeOrder"},
                              {"mnuArrange"},
                              {"mnuImpOneRule", cannotImport},
                              {"mnuImpAllRules", cannotImport},
                              {"mnuExpAllRules", cancel, false},
                              {"mnuWhatRuleToFile", cancel, false},
                              {"mnuPrintAllRules", [] {}, false},
                              {"mnuWhatRuleToPrint", [] {}, false}};
  for (const auto& [name, ask, closesUnchanged] : commands) {
    SCOPED_TRACE(name);
    printer.titles.clear();
    Choose("mnuChangeOrder");
    form->lstRules.ClickItem(1);
    form->picUp.Click();
    dialogs.Expect(kLoseOrder, kBoxYesNo + kBoxSecondDefault, kAppTitle, Button::No);
    Run(name);
    EXPECT_EQ(form->lstRules.Item(0), "  001 Famille");
    EXPECT_TRUE(Can("mnuRegOrder"));
    form->cmdCancelOrder.Click();

    for (const bool edited : {true, false}) {
      if (!edited && !closesUnchanged) continue;
      Open(0);
      if (edited) {
        Add(kSender, u"gamma");
        dialogs.Expect(kLoseContent, Button::No);
        Run(name);
        EXPECT_EQ(Words(kSender).size(), 3U);
        EXPECT_TRUE(Can("cmdRecord(0)") && printer.titles.empty());
        dialogs.Expect(kLoseContent, Button::Yes);
      }
      ask();
      Run(name);
      EXPECT_EQ(
          Which({"txtBox(0)", "lstAct", "chkFilter(0)", "cmdRecord(0)", "mnuOptions", "mnuChange"}),
          "mnuChange")
          << "the rule is closed";
      if (Can("cmdCancelOrder")) form->cmdCancelOrder.Click();
    }
  }
}

TEST_F(RuleCommands, WhatHappensWhileTheListIsFilledIsNoGesture) {
  StartWithTwoRules();
  Open(0);
  Add(kSender, u"gamma");
  for (const auto* command : {"mnuAdd", "mnuDel", "mnuRen", "mnuAddBook", "mnuChangeBook"}) {
    // The view looks on.
    struct Eye : ControlObserver {
      void ControlChanged(Control& /*control*/, Aspect /*aspect*/) override { click(); }
      std::function<void()> click;
    } eye;
    eye.click = [&] { Run(command); };
    form->lstRules.Observe(&eye);
    form->LoadRules();
    form->lstRules.Observe(nullptr);
  }
}

}  // namespace
}  // namespace morvelle
