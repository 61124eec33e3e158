
#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto kOverwrite =
    "La règle \"Carnet d'adresses\" actuelle va être écrasée par les données de votre carnet "
    "d'adresses.\rVous pouvez encore annuler cette opération !"_cp;
constexpr auto kUpdate = "Votre règle \"Carnet d'adresses\" va être mise à jour"_cp;
constexpr auto kNotMade =
    "La règle \"Carnet d'adresses\" ne peut être mise à jour.\rCette règle n'a pas été créée"_cp;
constexpr auto kNextStart = "Cette nouvelle option sera prise en charge au prochain démarrage"_cp;
constexpr auto kUnreadable = "Impossible de lire le carnet d'adresses";
constexpr auto kEmpty = "Le carnet d'adresses est vide";

struct BookWindow : Window {
  void Book(const std::vector<std::string>& addresses) {
    addressBook.addresses.assign(addresses.begin(), addresses.end());
  }
  void Settings(std::string_view content) {
    WriteFile(environment.userFolder / "Morvelle.ini", content);
  }
  [[nodiscard]] std::string Ini() const {
    return ReadFile(environment.userFolder / "Morvelle.ini");
  }
  /// The rule "Carnet d'adresses" with its sender words under criterion 001 and words of its own
  /// for the subject under 000; another rule before it.
  void BookRule() {
    rules.Order("000 004").PlainRule("000", "Autre", "000").Words("000", 12, {"alpha"});
    rules.Rule("004", "Carnet d'adresses").Actions("000").Action("000", 6).Bytes(kDeletedItems);
    rules.Criteria("000 001").Words("000", 8, {"sujet"}, 0, 2);
    rules.Words("001", 12, {"vieux@b.fr"}, 1, 2);
  }
};

TEST_F(BookWindow, TheRuleIsMadeSavedAndRefreshed) {
  rules.Order("000 00F").PlainRule("000", "Un", "000").Words("000", 12, {"alpha"});
  rules.PlainRule("00F", "Deux", "000").Words("000", 8, {"beta"});
  Book({"zoe@b.fr", "a@b.fr", "zoe@b.fr"});
  Start();
  const auto before = Stored();
  Choose("mnuAddBook");
  Click("cmdRestore(0)");
  EXPECT_THAT(Words(kSender), ElementsAre("a@b.fr", "zoe@b.fr"));
  EXPECT_EQ(Count(kSender), "2 mots");
  EXPECT_EQ(form->statBar.Panel(9), "Carnet d'adresses");
  EXPECT_EQ(form->lstRules.Item(2), "* 010 Carnet d'adresses");
  EXPECT_THAT(SelectedActions(), ElementsAre(0));
  EXPECT_TRUE(Checked("mnuContentNo"));
  EXPECT_EQ(Stored(), before) << "nothing is stored before it is saved";
  dialogs.Expect(kSaveBoth, Button::Yes);
  Save();
  EXPECT_THAT(Stored(), testing::StartsWith("Order = \"000 00F 010\"\n"));
  EXPECT_EQ(Stored("010"), ReadFile(MORVELLE_STORED "/book_rule.txt"));
  EXPECT_EQ(Which({"mnuAddBook", "mnuChangeBook", "mnuAutoUpdateBook"}),
            "mnuChangeBook mnuAutoUpdateBook");

  const auto saved = Stored();
  Book({"nouveau@b.fr"});
  dialogs.Expect(kOverwrite, 49, kAppTitle);
  Choose("mnuChangeBook");
  EXPECT_THAT(Words(kSender), ElementsAre("nouveau@b.fr"));
  EXPECT_EQ(Count(kSender), "1 mot");
  Save();
  EXPECT_EQ(Stored(), Replaced(saved, "a@b.fr~zoe@b.fr~", "nouveau@b.fr~"));
}

TEST_F(BookWindow, TheRefreshKeepsTheOtherListsAndAsksFirst) {
  BookRule();
  Start();
  dialogs.Expect(kOverwrite, Button::Cancel);
  Choose("mnuChangeBook");
  EXPECT_THAT(Words(kSender), IsEmpty());
  dialogs.Expect(kOverwrite);
  Choose("mnuChangeBook");
  EXPECT_THAT(Words(kSubject), ElementsAre("sujet"));
  EXPECT_TRUE(Can("mnuRegContent"));
  EXPECT_FALSE(state.editing.bOrderChanged);
  dialogs.Expect(kLoseContent, Button::No);
  EXPECT_FALSE(form->NoChange()) << "it counts as modified";
  Save();
  EXPECT_EQ(Stored("004\\Criteria").find("vieux"), std::string::npos);
  EXPECT_THAT(Stored("004\\Criteria"), HasSubstr("\"a@b.fr~~~\""));
  EXPECT_THAT(Stored("004\\Criteria"), HasSubstr("\"sujet~~~\""));
}

TEST_F(BookWindow, ABookThatGivesNothingChangesNothing) {
  BookRule();
  Start();
  const auto before = Stored();
  for (const auto* trouble : {kUnreadable, kEmpty, ""}) {
    SCOPED_TRACE(trouble);
    addressBook.readable = trouble != kUnreadable;
    addressBook.addresses.assign(trouble == kEmpty ? 0 : 1, std::nullopt);
    dialogs.Expect(kOverwrite);
    if (*trouble != '\0') dialogs.Expect(trouble, kBoxStop, kAppTitle);
    Choose("mnuChangeBook");
    EXPECT_FALSE(Can("mnuRegContent"));
    EXPECT_THAT(Words(kSender), IsEmpty());
    EXPECT_EQ(Stored(), before);
  }
  rules.Order("000");
  rules.Rule("004", "Autre nom");
  Open(0);
  Click("cmdCancelRule(0)");
  const auto without = Stored();
  dialogs.ExpectAllShown();
  Choose("mnuAddBook");
  EXPECT_EQ(form->lstRules.Count(), 1);
  EXPECT_FALSE(Can("lstAct"));
  EXPECT_EQ(Stored(), without);
}

TEST_F(BookWindow, WithoutTheFolderOfDeletedItemsNoRuleIsMade) {
  std::filesystem::remove(FoldersFile());
  rules.Order("000").PlainRule("000", "Un", "000").Words("000", 12, {"alpha"});
  dialogs.Expect(kUnreadableFolders, kBoxStop, "Folders");
  Start();
  dialogs.Expect(kUnreadableFolders, kBoxStop, kAppTitle);
  Choose("mnuAddBook");
  EXPECT_EQ(form->lstRules.Count(), 1);
  EXPECT_FALSE(Can("cmdRecord(0)"));
}

TEST_F(BookWindow, ARefreshNeverTurnsTheRuleAround) {
  rules.Order("000").PlainRule("000", "Carnet d'adresses", "000").Words("000", 8, {"sujet"}, 0);
  Start();
  dialogs.Expect(kOverwrite);
  Choose("mnuChangeBook");
  EXPECT_TRUE(Checked("mnuContentNo")) << "a list that was empty says: none of these senders";
  Save();
  EXPECT_THAT(Stored(), HasSubstr("Flags = 1\n"));
}

TEST_F(BookWindow, TheCommandsFollowTheRuleThatIsThereNow) {
  BookRule();
  Start();
  store.DeleteKey(kTestMailKey + "004");
  rules.Order("000");
  Open(0);
  Click("cmdCancelRule(0)");
  form->Menu("mnuChangeBook").SetEnabled(true);
  Choose("mnuChangeBook");
  EXPECT_EQ(form->statBar.Panel(9), "Carnet d'adresses") << "none there: it is made";
  Click("cmdCancelRule(0)");
  rules.Order("000 004").PlainRule("004", "CARNET d'adresses", "000").Words("000", 12, {"x@b.fr"});
  form->Menu("mnuChangeBook").SetEnabled(true);
  dialogs.Expect(kOverwrite);
  Choose("mnuChangeBook");
  EXPECT_EQ(form->lstRules.Count(), 2) << "made by another program since: there is one alone";
  dialogs.AllowAnyBox();
}

TEST_F(BookWindow, AtStartTheRuleIsUpdatedOnlyWhereItStands) {
  BookRule();
  Settings("Auto\r\n\r\n");
  const auto before = Stored();
  dialogs.Expect(kUpdate, 33, kAppTitle, Button::Cancel);
  Start();
  EXPECT_EQ(Stored(), before);
  EXPECT_TRUE(Checked("mnuAutoUpdateBook"));
  Book({"zoe@b.fr", "a@b.fr"});
  dialogs.Expect(kUpdate, Button::Ok);
  Start();
  EXPECT_EQ(Stored(), Replaced(before, "vieux@b.fr~", "a@b.fr~zoe@b.fr~"));
  EXPECT_THAT(Words(kSender), IsEmpty()) << "no rule is open";
  Open(1);
  EXPECT_THAT(Words(kSender), ElementsAre("a@b.fr", "zoe@b.fr"));
}

TEST_F(BookWindow, WithoutTheRuleTheStartAsksNothing) {
  rules.Order("000").PlainRule("000", "Un", "000").Words("000", 12, {"alpha"});
  Settings("Auto\r\n\r\n");
  const auto before = Stored();
  Start();
  EXPECT_EQ(Stored(), before);
  addressBook.readable = false;
  dialogs.Expect(kUnreadable, kBoxStop, kAppTitle);
  dialogs.Expect(kNotMade, kBoxExclamation, kAppTitle);
  Start();
  Settings("auto\r\n\r\n");
  dialogs.Expect(kUnreadable);
  Start();
  EXPECT_TRUE(Can("mnuAddBook"));
  EXPECT_EQ(form->lstRules.Count(), 1) << "the start goes on";
}

TEST_F(BookWindow, TheSettingsGoToAndFro) {
  BookRule();
  Start();
  for (const auto* expected : {"Auto\r\n\r\n", "Manu\r\n\r\n", "Auto\r\n\r\n"}) {
    dialogs.Expect(kNextStart, kBoxInformation, kAppTitle);
    Choose("mnuAutoUpdateBook");
    EXPECT_EQ(Ini(), expected);
    EXPECT_EQ(Checked("mnuAutoUpdateBook"), *expected == 'A');
  }
  const auto ini = environment.userFolder / "Morvelle.ini";
  std::filesystem::permissions(ini, std::filesystem::perms{0400});
  dialogs.Expect("Permission refusée"_cp);
  Choose("mnuAutoUpdateBook");
  EXPECT_TRUE(Checked("mnuAutoUpdateBook")) << "what was not written does not come";
  std::filesystem::permissions(ini, std::filesystem::perms{0600});
  for (const auto* expected : {"Auto\r\nSilent\r\n", "Auto\r\n\r\n"}) {
    Choose("mnuSilent");
    EXPECT_EQ(Ini(), expected);
    EXPECT_EQ(Checked("mnuSilent"), std::string_view(expected).size() > 8);
  }
}

TEST_F(BookWindow, K9sEntryIsThereWithItsFileAlone) {
  StartWithTwoRules();
  EXPECT_FALSE(form->Menu("mnuWhiteListK9").Visible());
  const auto file = environment.HostPath("C:\\K9\\DB\\whitelist.txt");
  WriteFile(file, "");
  rules.PutText("Software\\KeirNet\\K9", "EmailsPath", "C:\\K9");
  Start();
  Open(0);
  dialogs.Expect("La 'whitelist' de K9 a été mise à jour !"_cp, kBoxInformation, kAppTitle);
  Choose("mnuWhiteListK9");
  EXPECT_THAT(ReadFile(file), HasSubstr("\r\nFrom :a@b.fr\r\n"));
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta")) << "the open rule is left alone";
}

TEST_F(BookWindow, ToolsOpenTheirFolders) {
  const auto carnet = environment.HostPath("C:\\Carnet");
  std::filesystem::create_directory(carnet);
  StartWithTwoRules();
  Choose("mnuStore");
  Choose("mnuWab");
  Choose("mnufiles");
  EXPECT_THAT(shell.folders, ElementsAre(environment.HostPath("C:\\Courrier"), carnet,
                                         environment.userFolder / "Fichiers VLX"));
  std::filesystem::remove(carnet);
  WriteFile(carnet, "");
  dialogs.Expect("Fichier " + carnet.string() + std::string(" introuvable ou endommagé"_cp));
  Choose("mnuWab");
  environment.finder = [](const auto&) { return std::filesystem::path(); };
  dialogs.Expect("Fichier C:\\Courrier introuvable ou endommagé"_cp);
  Choose("mnuStore");
  environment.finder = {};
  rules.Remove(std::string(kTestBookKey), "");
  Start();
  EXPECT_FALSE(Can("mnuWab"));
  form->Menu("mnuWab").onClick();
  EXPECT_EQ(shell.folders.size(), 3U);
}

}  // namespace
}  // namespace morvelle
