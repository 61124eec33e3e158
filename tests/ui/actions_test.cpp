#include "core/deleted_items.h"
#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string MoveTo(const char* folderId) { return kStoreMark + folderId + "\0\0\0"s; }

struct Actions : Window {
  /// A rule of these actions, open, with one word.
  void OpenWith(const std::vector<std::uint32_t>& types, const std::string& moveValue) {
    rules.Order("000").WithActions("000", "Une", types, moveValue);
    Start();
    Open(0);
  }
  [[nodiscard]] std::string MoveLine() const { return ToUtf8(form->lstAct.Item(0)); }
};

TEST_F(Actions, AllOfARulesActionsAreShownAndAClickLeavesOne) {
  OpenWith({6, 12, 9, 11}, MoveTo("7"));
  EXPECT_THAT(SelectedActions(), ElementsAre(0, 2, 3));
  EXPECT_EQ(MoveLine(), "déplacer vers \"Spam\"") << "a folder that was never used";
  const auto before = Stored();
  form->lstAct.ClickItem(1);
  EXPECT_THAT(SelectedActions(), ElementsAre(1));
  EXPECT_TRUE(Can("mnuRegContent"));
  Save();
  EXPECT_EQ(Stored(), Replaced(before,
                               "Type = 6\n000\\Actions\\000\\Flags = 0\n"
                               "000\\Actions\\000\\ValueType = 65\n"
                               "000\\Actions\\000\\Value = 3:\"stored017~~~\"\n",
                               "Type = 8\n000\\Actions\\000\\Flags = 0\n"))
      << "the first action only";
}

TEST_F(Actions, TheMoveLineNamesTheFolderUntilTheEditorIsCleared) {
  OpenWith({6}, MoveTo("9"));
  form->lstAct.ClickItem(0);
  EXPECT_EQ(MoveLine(), "déplacer vers \"Famille\"") << "it tells what the rule did before";
  EXPECT_THAT(SelectedActions(), ElementsAre(0));
  Save();
  EXPECT_THAT(Stored("000\\Actions\\000"), HasSubstr("3:\"stored015~~~\""));
  EXPECT_EQ(MoveLine(), "déplacer vers \"Famille\"");
  form->ClearMod();
  EXPECT_EQ(MoveLine(), "déplacer vers \"Éléments supprimés\"");
}

TEST_F(Actions, AFolderIsNamedOnlyWhereItIsThisStoresAndKnown) {
  const std::string unknown = "déplacer vers un dossier inconnu";
  const std::string otherStore = "stored02";
  const std::pair<std::string, std::string> cases[] = {
      {kDeletedItems, "déplacer vers \"Éléments supprimés\""},
      {kDeletedItems.substr(0, 11), "déplacer vers \"Éléments supprimés\""},
      {MoveTo("8"), unknown},
      {otherStore + "9\0\0\0"s, unknown},
      {otherStore + "5\0\0\0"s, unknown},
      {kStoreMark + "9\0\0\x01"s, unknown},
      {kStoreMark + "9\0"s, unknown},
      {"", unknown}};
  for (const auto& [value, line] : cases) {
    OpenWith({6}, value);
    EXPECT_EQ(MoveLine(), line) << testing::PrintToString(value);
    EXPECT_THAT(SelectedActions(), ElementsAre(0));
  }
  // Of several moves, the last one to a known folder.
  rules.WithActions("000", "Une", {6, 6, 6}, MoveTo("7")).Action("002", 6).Bytes("");
  rules.Action("001", 6).Bytes(MoveTo("9"));
  Start();
  Open(0);
  EXPECT_EQ(MoveLine(), "déplacer vers \"Famille\"");
}

TEST_F(Actions, ChoosingWhatTheRuleDoesAlreadyChangesNothing) {
  struct Case {
    std::vector<std::uint32_t> types;
    std::string move;
    int chosen;
    bool changes;
  };
  const Case cases[] = {
      {{8}, "", 1, false},    {{9}, "", 2, false},
      {{12}, "", 3, false},   {{6}, kDeletedItems, 0, false},
      {{8}, "", 2, true},     {{6}, MoveTo("7"), 0, true},
      {{8, 12}, "", 1, true},  // The other action is not shown any more.
      {{11, 8}, "", 1, true},  // The first action is another one, which the list does not know.
  };
  for (const auto& [types, move, chosen, changes] : cases) {
    OpenWith(types, move);
    form->lstAct.ClickItem(chosen);
    EXPECT_THAT(SelectedActions(), ElementsAre(chosen));
    EXPECT_EQ(Can("mnuRegContent"), changes) << types.front() << ", " << chosen;
  }
}

TEST_F(Actions, WithoutTheFolderListNoMoveIsEverMade) {
  std::filesystem::remove(FoldersFile());
  dialogs.Expect(kUnreadableFolders, kBoxStop, "Folders");
  OpenWith({9}, "");
  const auto before = Stored();
  dialogs.Expect(kUnreadableFolders);
  form->lstAct.ClickItem(0);
  EXPECT_THAT(SelectedActions(), ElementsAre(2)) << "the rule's own action is shown again";
  EXPECT_FALSE(Can("mnuRegContent"));
  form->lstAct.ClickItem(3);
  Save();
  EXPECT_EQ(Stored(), Replaced(before, "Actions\\000\\Type = 9", "Actions\\000\\Type = 12"));
  dialogs.Expect(kUnreadableFolders, kBoxStop, "Folders");
  OpenWith({6}, MoveTo("9"));
  EXPECT_EQ(MoveLine(), "déplacer vers \"Éléments supprimés\"") << "nothing is known of it";
}

TEST_F(Actions, ARuleWithoutActionEndsTheProgramAsItOpens) {
  rules.Order("000").WithActions("000", "Une", {}, "");
  Start();
  const auto before = Stored();
  dialogs.Expect("Dépassement de capacité"_cp, kBoxOk, "InitMod");
  EXPECT_THROW(Open(0), ProgramEnd);
  EXPECT_THAT(Words(kSender), ElementsAre("alpha"));
  EXPECT_THAT(SelectedActions(), IsEmpty());
  EXPECT_EQ(Stored(), before);
}

TEST_F(Actions, TheActiveBoxTogglesWhatIsStored) {
  struct Case {
    std::uint32_t before;
    bool shown;
    const char* after;
    const char* line;
  };
  const Case cases[] = {
      {1, true, "0", "  000 Une"}, {0, false, "1", "* 000 Une"}, {2, true, "0", "  000 Une"}};
  for (const auto& [before, shown, after, line] : cases) {
    SCOPED_TRACE(before);
    rules.Order("000").WithActions("000", "Une", {12}, "", before);
    Start();
    Open(0);
    EXPECT_EQ(form->chkEnabled.Checked(), shown);
    form->chkEnabled.Click();
    EXPECT_EQ(form->lstRules.Item(0), line);
    EXPECT_EQ(form->lstRules.ListIndex(), 0) << "the rule stays selected";
    Save();
    EXPECT_THAT(Stored("000"), HasSubstr("Enabled = "s + after + "\n"));
  }
}

}  // namespace
}  // namespace morvelle
