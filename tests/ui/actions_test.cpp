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
  OpenWith({6, 12, 9, 11}, MoveTo("\x07"));
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
                               "000\\Actions\\000\\Value = 3:\"\x01\x02\x03\x04\x05\x06\x07"
                               "\x08\x07~~~\"\n",
                               "Type = 8\n000\\Actions\\000\\Flags = 0\n"))
      << "the first action only";
}

TEST_F(Actions, TheMoveLineNamesTheFolderUntilTheEditorIsCleared) {
  OpenWith({6}, MoveTo("\x09"));
  form->lstAct.ClickItem(0);
  EXPECT_EQ(MoveLine(), "déplacer vers \"Famille\"") << "it tells what the rule did before";
  EXPECT_THAT(SelectedActions(), ElementsAre(0));
  Save();
  EXPECT_THAT(Stored("000\\Actions\\000"),
              HasSubstr("3:\"\x01\x02\x03\x04\x05\x06\x07\x08\x05~~~\""));
  EXPECT_EQ(MoveLine(), "déplacer vers \"Famille\"");
  form->ClearMod();
  EXPECT_EQ(MoveLine(), "déplacer vers \"Éléments supprimés\"");
  OpenWith({6}, kStoreMark + "\x09\0\0\x01"s);
  EXPECT_EQ(MoveLine(), "déplacer vers \"Éléments supprimés\"") << "a fourth byte: another folder";
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
