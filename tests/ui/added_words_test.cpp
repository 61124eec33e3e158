
#include "app/messages/path_text.h"
#include "disk/host_files.h"
#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;

constexpr std::string_view kType = "Type de critère\n"_cp;
constexpr std::string_view kUnreadable = " introuvable ou endommagé"_cp;
const std::string kEnglish = "Brisquet_anglais.oe";

/// Words that come from files: prefilters and another rule.
struct AddedWordsTest : Window {
  void Filter(const std::filesystem::path& file, const std::string& type,
              const std::string& words) const {
    WriteFile(file, std::string(kType) + type + "\n" + words + "EOF\nEOR\n");
  }
  [[nodiscard]] std::filesystem::path Own(const std::string& name) const {
    return environment.userFolder / name;
  }
  void Check(int i) { form->chkFilter[Index(i)].Click(); }
  [[nodiscard]] bool Checked(int i) const { return form->chkFilter[Index(i)].Checked(); }

  /// Exports the rule of a row and has it chosen in the merge panel next.
  std::filesystem::path Exported(int row) {
    const auto file = folder / ("regle" + std::to_string(row) + ".roe");
    fileDialogs.Choose(file);
    form->RuleMenu("mnuWhatRuleToFile").Choose(row);
    return file;
  }
  void Merge(int row) { form->RuleMenu("mnuMerge").Choose(row); }
  void Browse(const std::filesystem::path& file) {
    fileDialogs.Choose(file);
    Click("cmdFileToMerge");
  }
};

TEST_F(AddedWordsTest, CheckedPrefiltersAreAddedToWhatTheListsShow) {
  StartWithTwoRules();
  Filter(Own("Brisquet_asiatique.oe"), "12", "zeta\nalpha\n");
  Filter(environment.programFile.parent_path() / "../share/morvelle/prefiltres" / kEnglish, "9",
         "corps\n");
  Open(0);
  Add(kSender, u"omega");
  form->lstBox[0].ClickItem(1);
  form->cmdDel[0].Click();
  EXPECT_FALSE(Can("cmdFiltres"));
  Check(0);
  Check(1);
  Click("cmdFiltres");
  // The word that was typed is there, the deleted one is not, and a word may stand twice.
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "alpha", "omega", "zeta"));
  EXPECT_THAT(Words(kBody), ElementsAre("corps"));
  EXPECT_EQ(Count(kSender), "4 mots");
  EXPECT_FALSE(Checked(0) || Can("cmdFiltres"));
  EXPECT_TRUE(Can("mnuRegContent") && Can("chkFilter(0)"));
}

TEST_F(AddedWordsTest, AFilterThatCannotBeReadIsNamedAndAddsNothing) {
  StartWithTwoRules();
  WriteFile(Own(kEnglish), std::string(kType) + "12\nmot\nEOR\n");
  Filter(Own("Brisquet_sexe.oe"), "8", "mot\n");
  WriteFile(Own("Brisquet_asiatique.oe"), "");
  std::filesystem::resize_file(Own("Brisquet_asiatique.oe"), kSmallFileLimit + 1);
  Open(0);
  Check(1);
  ClickWord(kSender, 1);
  dialogs.Expect("Fichier " + kEnglish + std::string(kUnreadable));
  Click("cmdFiltres");
  EXPECT_EQ(Which({"mnuRegContent", "cmdDel(0)", "cmdRestore(0)", "cmdFiltres"}),
            "cmdDel(0) cmdFiltres")
      << "nothing read, nothing changed";
  for (const int i : {0, 3}) Check(i);
  dialogs.Expect(FileFailure(Own("Brisquet_asiatique.oe"), "ne peut être ouvert"_cp,
                             "il dépasse la taille permise, 1 Mo"_cp));
  dialogs.Expect("Fichier " + kEnglish + std::string(kUnreadable));
  Click("cmdFiltres");
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta"));
  EXPECT_THAT(Words(kSubject), ElementsAre("mot"));
}

TEST_F(AddedWordsTest, TheUsersOwnFilterIsChosenWhenItsBoxIsChecked) {
  StartWithTwoRules();
  Open(0);
  fileDialogs.Choose(std::nullopt);
  Check(4);
  EXPECT_FALSE(Checked(4) || Can("cmdFiltres"));
  EXPECT_EQ(fileDialogs.asked.at(0).title, "Nom et emplacement du fichier personnalisé ?"_cp);
  EXPECT_EQ(fileDialogs.asked.at(0).filterLabel, "Fichiers de filtres OE (*.oe)");
  EXPECT_EQ(fileDialogs.asked.at(0).proposal, "Brisquet_orvic.oe");
  const auto own = folder / "ailleurs" / "mien.oe";
  Filter(own, "22", "moi@x\n");
  fileDialogs.Choose(own);
  Check(4);
  Check(0);
  Check(0);
  EXPECT_EQ(fileDialogs.asked.size(), 2U) << "another box asks for nothing";
  Click("cmdFiltres");
  EXPECT_THAT(Words(kRecipients), ElementsAre("moi@x"));
  // A box that was cleared with the rule does not come back.
  Check(4 - 1);
  EXPECT_TRUE(Can("cmdFiltres"));
  Check(4 - 1);
  EXPECT_FALSE(Can("cmdFiltres"));
  std::filesystem::remove(own);
  fileDialogs.Choose(own);
  Check(4);
  dialogs.Expect("Fichier mien.oe" + std::string(kUnreadable));
  Click("cmdFiltres");
}

TEST_F(AddedWordsTest, AListThatCouldNotBeCountedIsLeftAlone) {
  constexpr auto kTooMany = "Une liste de mots dépasserait 32 767 mots : rien n'a été ajouté"_cp;
  std::vector<std::string> most;
  for (int k = 0; k < 32767; ++k) most.push_back(std::to_string(k));
  rules.Order("000 001 002").PlainRule("000", "Base", "000").Words("000", 12, most);
  rules.PlainRule("001", "Mêmes mots"_cp, "000").Words("000", 12, most);
  rules.PlainRule("002", "Un de plus", "000").Words("000", 12, {"plus"});
  Filter(Own(kEnglish), "12", "plus\n");
  Start();
  const auto same = Exported(1);
  const auto oneMore = Exported(2);
  Merge(0);
  Browse(same);
  EXPECT_EQ(form->txtMerge.Text(), "regle1.roe") << "what both have counts once";
  dialogs.Expect(kTooMany);
  Browse(oneMore);
  Check(1);
  dialogs.Expect(kTooMany);
  Click("cmdFiltres");
  dialogs.Expect("Dépassement de capacité"_cp, kBoxOk, "cmdAdd_Click");
  Add(kSender, u"plus");
  EXPECT_EQ(Words(kSender).size(), 32767U);
  EXPECT_EQ(Count(kSender), "32767 mots");
}

TEST_F(AddedWordsTest, WordsFromOutsideLeaveNothingSelectedAndCanBeSaved) {
  StartWithTwoRules();
  Filter(Own("Brisquet_asiatique.oe"), "12", "zeta\n");
  Open(1);
  Show(kBody);
  ClickWord(kBody, 1);
  Show(kSubject);
  ClickWord(kSubject, 0);
  Type(kSubject, u"noces");
  Check(0);
  EXPECT_FALSE(Can("mnuRegContent"));
  Click("cmdFiltres");
  EXPECT_TRUE(Can("mnuRegContent") && Can("cmdRecord(0)"));
  const auto shown = [&](int slot) {
    Show(slot);
    std::string text = Typed(slot) + form->txtCop[Index(slot)].Text();
    for (const auto* button : {"cmdAdd", "cmdDel", "cmdChange", "cmdRestore"}) {
      if (Can(button + ("(" + std::to_string(slot) + ")"))) text.append(" ").append(button);
    }
    return text + " " + std::to_string(form->lstBox[Index(slot)].ListIndex());
  };
  EXPECT_EQ(shown(kSender), " cmdRestore -1");
  EXPECT_EQ(shown(kBody), " cmdRestore -1") << "its text came from the list";
  EXPECT_EQ(shown(kSubject), "noces'noces' cmdAdd cmdRestore -1") << "its text was typed";
  form->cmdAdd[1].Click();
  EXPECT_THAT(Words(kSubject), ElementsAre("anniversaire", "noces"));
  Check(0);
  Click("cmdRestore(1)");
  EXPECT_FALSE(Checked(0) || Can("cmdFiltres"));
}

TEST_F(AddedWordsTest, AMergedRuleJoinsItsListsAndIsSaved) {
  rules.Order("000 001 002").PlainRule("002", "Vide", "000");
  rules.PlainRule("000", "Base", "000 001").Words("000", 12, {"beta", "alpha"}, 1, 1);
  rules.Words("001", 9, {"zut", "bof"}, 0, 1);
  // An empty word, which every message holds, stays where it is.
  rules.PlainRule("001", "Autre", "000 001").Words("000", 12, {"gamma", "", "beta"}, 1, 2);
  rules.Words("001", 8, {"objet"}, 3, 2);
  Start();
  const auto other = Exported(1);
  EXPECT_FALSE(form->fraMerge.Visible());
  Merge(0);
  EXPECT_TRUE(form->fraMerge.Visible());
  EXPECT_THAT(form->lstCrit.Items(), ElementsAre("Expéditeur (2 mots)"_cp, "Corps (2 mots)"));
  Add(kSender, u"omega");
  Browse(other);
  EXPECT_EQ(fileDialogs.asked.back().pattern, "*.roe");
  EXPECT_EQ(form->txtMerge.Text(), "regle1.roe");
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta", "gamma", "omega"));
  EXPECT_THAT(Words(kSubject), ElementsAre("objet"));
  EXPECT_THAT(Words(kBody), ElementsAre("zut", "bof")) << "a list that nothing joins is left alone";
  dialogs.Expect(kSaveBoth, Button::Yes);
  Choose("mnuRegContent");
  EXPECT_THAT(Stored("000\\Criteria"),
              testing::AllOf(testing::HasSubstr("\"alpha~beta~gamma~omega~~~\""),
                             testing::HasSubstr("\\Flags = 3\n001\\Logic = 1\n001\\Type = 8\n"
                                                "001\\Value = 3:\"objet~~~\"")));
  Open(0);
  EXPECT_FALSE(form->fraMerge.Visible());
  // What has no criterion yet takes the and/or of the file, too.
  Click("cmdCancelRule(0)");
  Merge(2);
  Browse(other);
  EXPECT_TRUE(Window::Checked("mnuCriteriaYes"));
  dialogs.Expect(kSaveBoth, Button::Yes);
  Choose("mnuRegContent");
  EXPECT_THAT(Stored("002\\Criteria"), testing::HasSubstr("000\\Logic = 2\n"));
  EXPECT_THAT(Stored("002\\Criteria"), testing::HasSubstr("001\\Logic = 2\n"));
}

TEST_F(AddedWordsTest, AMergeThatWouldReverseAMeaningIsRefused) {
  rules.Order("000 001 002");
  rules.PlainRule("000", "Base", "000").Words("000", 12, {"alpha"}, 0);
  rules.PlainRule("001", "Contraire", "000 001").Words("000", 8, {"objet"}, 0, 2);
  rules.Words("001", 12, {"beta"}, 1, 2);
  rules.PlainRule("002", "Sans mots", "000").Criterion("000", 14);
  Start();
  const auto contrary = Exported(1);
  const auto wordless = Exported(2);
  Merge(0);
  dialogs.Expect(
      "Les mots de cette règle n'ont pas le même sens dans la liste Expéditeur (contient, ne "
      "contient pas, tous les mots) :\rrien n'a été fusionné"_cp);
  Browse(contrary);
  dialogs.Expect("La règle de ce fichier n'a pas de liste de mots : rien n'a été fusionné"_cp);
  Browse(wordless);
  const auto cut = ReadFile(contrary).substr(0, 200);
  WriteFile(contrary, cut);
  dialogs.Expect("Fichier " + contrary.string() + std::string(kUnreadable));
  Browse(contrary);
  fileDialogs.Choose(std::nullopt);
  Click("cmdFileToMerge");
  EXPECT_THAT(Words(kSender), ElementsAre("alpha"));
  EXPECT_THAT(Words(kSubject), testing::IsEmpty());
  EXPECT_FALSE(Can("mnuRegContent"));
  EXPECT_EQ(form->txtMerge.Text(), "");
  // "Rétablir" leaves the panel there, "Abandonner" does not.
  Add(kSender, u"omega");
  Click("cmdRestore(0)");
  EXPECT_TRUE(form->fraMerge.Visible());
  Click("cmdCancelRule(0)");
  EXPECT_FALSE(form->fraMerge.Visible());
}

}  // namespace
}  // namespace morvelle
