#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kKeyTab = 9;

struct WordListTest : Window {
  /// The rule "Publicités" is open, its words alpha and beta on show.
  void OpenFirst() {
    StartWithTwoRules();
    Open(0);
  }
  [[nodiscard]] std::string Buttons(int slot) const {
    const auto index = "(" + std::to_string(slot) + ")";
    return Which({"cmdAdd" + index, "cmdDel" + index, "cmdChange" + index, "cmdRestore" + index});
  }
};

TEST_F(WordListTest, ATypedWordIsShownForCopyingAndAddedByEnter) {
  OpenFirst();
  EXPECT_EQ(Count(kSender), "2 mots");
  Press(kSender, kKeyReturn);
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta")) << "nothing is typed";
  Type(kSender, u" Été ");
  EXPECT_EQ(form->txtCop[0].Text(), "' Été '"_cp);
  Press(kSender, kKeyTab);
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta")) << "only Enter adds";
  Press(kSender, kKeyReturn);
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta", " Été "_cp)) << "blanks are kept";
  EXPECT_EQ(Count(kSender), "3 mots");
  EXPECT_EQ(Typed(kSender) + form->txtCop[0].Text(), "");
  Add(kSender, u"alpha");
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta", " Été "_cp, "alpha"))
      << "the list keeps repeats until it is saved";
}

TEST_F(WordListTest, ButtonsFollowWhatIsTypedAndClicked) {
  OpenFirst();
  EXPECT_EQ(Buttons(0), "");
  Type(kSender, u"x");
  EXPECT_EQ(Buttons(0), "cmdAdd(0) cmdRestore(0)");
  Type(kSender, u"");
  EXPECT_EQ(Buttons(0), "");
  ClickWord(kSender, 1);
  EXPECT_EQ(Typed(kSender), "beta");
  EXPECT_EQ(form->txtCop[0].Text(), "'beta'");
  EXPECT_EQ(Buttons(0), "cmdDel(0)");
  Press(kSender, kKeyReturn);
  EXPECT_EQ(Words(kSender).size(), 2U) << "a clicked word is not typed";
  Type(kSender, u"betas");
  EXPECT_EQ(Buttons(0), "cmdAdd(0) cmdChange(0) cmdRestore(0)");
  Type(kSender, u"");
  EXPECT_EQ(form->lstBox[0].ListIndex(), -1);
}

TEST_F(WordListTest, ChangingReplacesTheSelectedWordOnly) {
  OpenFirst();
  ClickWord(kSender, 0);
  Type(kSender, u"omega");
  Click("cmdChange(0)");
  EXPECT_THAT(Words(kSender), ElementsAre("omega", "beta"));
  EXPECT_EQ(Count(kSender) + Typed(kSender), "2 mots");
  for (const auto& button : form->cmdRestore) EXPECT_TRUE(button.Enabled());
  EXPECT_TRUE(Can("mnuRegContent"));
}

TEST_F(WordListTest, DeletingNeedsASelectedWord) {
  OpenFirst();
  form->cmdDel[0].SetEnabled(true);
  Click("cmdDel(0)");
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta"));
  EXPECT_FALSE(Can("mnuRegContent"));
  ClickWord(kSender, 0);
  Click("cmdDel(0)");
  EXPECT_THAT(Words(kSender), ElementsAre("beta"));
  EXPECT_EQ(form->lstBox[0].ListIndex(), -1);
  EXPECT_EQ(Count(kSender) + Typed(kSender), "1 mot");
  EXPECT_EQ(Buttons(0), "cmdRestore(0)");
  EXPECT_TRUE(Can("mnuRegContent"));
}

TEST_F(WordListTest, AWordGoesToTheListInWhoseBoxItWasTyped) {
  OpenFirst();
  Type(kSender, u"sender");
  Show(kBody);
  Press(kBody, kKeyReturn);
  EXPECT_THAT(Words(kBody), IsEmpty()) << "this box is empty";
  Type(kBody, u"body");
  Press(kBody, kKeyReturn);
  EXPECT_THAT(Words(kBody), ElementsAre("body"));
  Show(kSender);
  EXPECT_TRUE(Can("cmdAdd(0)"));
  Click("cmdAdd(0)");
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta", "sender"))
      << "a word that waits is still added by the button that is on";
}

TEST_F(WordListTest, WhatAWordCannotHoldIsRefusedWhole) {
  OpenFirst();
  Type(kSender, u"\u0153\u00A0uf");
  for (const char16_t refused :
       {u'\u03BB', u'\0', u'\t', u'\n', u'\r', u'\x1F', u'\x7F', u'\x81', u'\x9D'}) {
    dialogs.Expect("Ce caractère ne peut être enregistré dans une règle d'Outlook Express"_cp,
                   kBoxExclamation, kAppTitle);
    Type(kSender, u"\u0153\u00A0uf"s + refused + u"dur");
    EXPECT_EQ(Typed(kSender), "œ\u00A0uf"_cp) << static_cast<unsigned>(refused);
  }
}

TEST_F(WordListTest, AStoredWordKeepsItsControlCharactersAndTakesInNoOther) {
  rules.Order("000").PlainRule("000", "Une", "000").Words("000", 12, {"a\r\nb\tc", "x"});
  Start();
  Open(0);
  const auto before = Stored();
  const auto edit = [this](std::u16string_view text) {
    ClickWord(kSender, 0);
    Type(kSender, text);
  };
  edit(u"a\r\nb\tcd");
  EXPECT_EQ(Typed(kSender), "a\r\nb\tcd") << "what is beside them can be edited";
  dialogs.Expect("Ce caractère ne peut être enregistré dans une règle d'Outlook Express"_cp);
  Type(kSender, u"a\r\nb\tc\td");
  Type(kSender, u"a\r\nb\tc");
  Click("cmdChange(0)");
  Save();
  EXPECT_EQ(Stored(), before);
  Open(0);
  edit(u"ab\tc");
  Click("cmdChange(0)");
  Save();
  EXPECT_EQ(Stored(), Replaced(before, "a\r\nb\tc", "ab\tc"));
}

TEST_F(WordListTest, RestoringPutsTheStoredRuleBackAndKeepsItOpen) {
  OpenFirst();
  Add(kSender, u"gamma");
  Add(kBody, u"delta");
  form->chkEnabled.Click();
  Click("cmdRestore(2)");
  EXPECT_THAT(Words(kSender), ElementsAre("alpha", "beta"));
  EXPECT_THAT(Words(kBody), IsEmpty());
  EXPECT_EQ(Count(kSender), "2 mots");
  EXPECT_TRUE(form->chkEnabled.Checked());
  EXPECT_EQ(form->lstRules.Item(0), "* 000 Publicités"_cp);
  EXPECT_TRUE(form->fraEdit[kSender].Visible()) << "the rule's first list is on show again";
  EXPECT_FALSE(Can("mnuRegContent"));
  EXPECT_FALSE(Can("mnuChange")) << "the rule is still open";
}

TEST_F(WordListTest, AbandoningDropsTheEditAndFreesTheWindow) {
  OpenFirst();
  const auto before = Stored();
  Add(kSender, u"gamma");
  Type(kSender, u"delta");
  Click("cmdCancelRule(0)");
  EXPECT_THAT(Words(kSender), IsEmpty());
  EXPECT_EQ(Count(kSender) + Typed(kSender) + form->txtCop[0].Text() + form->statBar.Panel(9), "");
  EXPECT_EQ(Stored(), before);
  EXPECT_TRUE(form->NoChange()) << "nothing is left to ask about";
  EXPECT_FALSE(state.editing.bWordReady);
  Open(1);
  Show(kSender);
  Press(kSender, kKeyReturn);
  EXPECT_THAT(Words(kSender), IsEmpty()) << "the word typed for the first rule is forgotten";
  Add(kSender, u"epsilon");
  EXPECT_EQ(Count(kSender), "1 mot") << "the first rule's count is forgotten too";
}

TEST_F(WordListTest, RulesThatAnotherProgramTookAwayCloseTheEditor) {
  const std::vector<std::string> editor = {"lstAct", "chkEnabled", "txtBox(0)", "mnuOptions"};
  OpenFirst();
  Add(kSender, u"gamma");
  rules.Order("001");
  Click("cmdRestore(0)");
  EXPECT_EQ(Which(editor), "");
  EXPECT_THAT(form->lstRules.Items(), ElementsAre("  001 Famille"));
  EXPECT_EQ(form->RuleMenu("mnuRen").Count(), 1) << "the menus shrink with the list";
  rules.Rule("001", "Carnet d'adresses").Criteria(kTwelve + " 00C");
  dialogs.Expect(DamagedRule("001 - Carnet d'adresses"));
  Open(0);
  EXPECT_EQ(Which(editor), "") << "it has grown beyond the tables";
  EXPECT_TRUE(Can("mnuChangeBook")) << "and become the address book's";
  StartWithTwoRules();
  rules.Order("");
  Open(0);
  EXPECT_EQ(Which({"lstAct", "txtBox(0)", "mnuChange", "mnuAdd", "mnuImpOneRule"}),
            "mnuAdd mnuImpOneRule");
}

}  // namespace
}  // namespace morvelle
