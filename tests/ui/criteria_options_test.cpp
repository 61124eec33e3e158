#include "tests/ui/window.h"

namespace morvelle {
namespace {

struct Options : Window {
  /// The answers that are checked: those of the two content questions.
  [[nodiscard]] std::string Answers() const {
    std::string checked;
    for (const auto* name : {"mnuContentYes", "mnuContentNo", "mnuContentAll", "mnuContentOne"}) {
      if (Checked(name)) checked += (checked.empty() ? "" : " ") + std::string(name).substr(10);
    }
    return checked;
  }
  void StartWithFlags(std::uint32_t flags) {
    rules.Order("000").PlainRule("000", "Une", "000").Words("000", 12, {"alpha"}, flags);
    Start();
    Open(0);
  }
};

TEST_F(Options, ClickingAnOptionShowsItsListAlone) {
  StartWithTwoRules();
  Open(1);
  EXPECT_TRUE(form->optCriteria[kSubject].Chosen()) << "the first list with words";
  for (int slot = 0; slot < kSlotCount; ++slot) {
    Show(slot);
    for (int other = 0; other < kSlotCount; ++other) {
      EXPECT_EQ(form->fraEdit[Index(other)].Visible(), other == slot);
    }
    const bool hasWords = slot == kSubject || slot == kBody;
    EXPECT_EQ(Can("mnuContent(0)"), hasWords);
    EXPECT_EQ(Can("mnuContent(1)"), hasWords);
  }
  EXPECT_FALSE(Can("mnuRegContent")) << "looking changes nothing";
  Choose("mnuCriteriaNo");
  EXPECT_TRUE(Can("mnuRegContent")) << "an and/or does";
}

TEST_F(Options, ContentAnswersAreThisRulesOwn) {
  StartWithTwoRules();
  Open(0);
  EXPECT_EQ(Answers(), "Yes One");
  Click("cmdCancelRule(0)");
  Open(1);
  EXPECT_EQ(Answers(), "No One");
  Show(kBody);
  EXPECT_EQ(Answers(), "No All");
  Show(kSender);
  Add(kSender, u"gamma");
  EXPECT_EQ(Answers(), "Yes One") << "a list that gains its first word has no answer of its own";
  EXPECT_TRUE(Can("mnuContent(0)"));
  ClickWord(kSender, 0);
  Click("cmdDel(0)");
  EXPECT_FALSE(Can("mnuContent(0)"));
}

TEST_F(Options, ContentAnswersMakeTheFlags) {
  struct Case {
    std::uint32_t before;
    const char* choice;
    const char* after;
    const char* answers;
  };
  const Case cases[] = {
      {1, "mnuContentYes", "0", "Yes One"}, {3, "mnuContentYes", "2", "Yes All"},
      {0, "mnuContentNo", "1", "No One"},   {2, "mnuContentNo", "3", "No All"},
      {0, "mnuContentAll", "2", "Yes All"}, {1, "mnuContentAll", "3", "No All"},
      {2, "mnuContentOne", "0", "Yes One"}, {3, "mnuContentOne", "1", "No One"},
  };
  for (const auto& [before, choice, after, answers] : cases) {
    SCOPED_TRACE(std::to_string(before) + " " + choice);
    StartWithFlags(before);
    Choose(choice);
    EXPECT_EQ(Answers(), answers);
    Save();
    EXPECT_EQ(Stored("000\\Criteria\\000"), "Type = 12\nFlags = "s + after +
                                                "\nLogic = 0\nValueType = 65\n"
                                                "Value = 3:\"alpha~~~\"\n");
  }
}

TEST_F(Options, FlagsOfNoKnownMeaningStayUntilBothQuestionsAreAnswered) {
  StartWithFlags(4);
  EXPECT_EQ(Answers(), "");
  Choose("mnuContentAll");
  EXPECT_EQ(Answers(), "All");
  EXPECT_EQ(state.tables.FirstCriteria[0][kSender].Flags, "4");
  Choose("mnuContentNo");
  EXPECT_EQ(state.tables.FirstCriteria[0][kSender].Flags, "3");
}

TEST_F(Options, AListThatCannotBeReadIsKeptUntilItIsGivenWords) {
  const std::pair<ValueKind, std::string> values[] = {{ValueKind::None, "no text"},
                                                      {ValueKind::Dword, "123"},
                                                      {ValueKind::Dword, "12345"},
                                                      {ValueKind::MultiString, "missing"}};
  for (const auto& [kind, data] : values) {
    SCOPED_TRACE(data);
    rules.Order("000").PlainRule("000", "Une", "000 001").Words("001", 8, {"beta"}, 0, 2);
    rules.Words("000", 12, {}, 3, 2).Raw("Value", kind, data);
    if (data == "missing") rules.Without("Value");
    dialogs.AllowAnyBox();
    Start();
    const auto kept = Stored("000\\Criteria\\000");
    Open(0);
    EXPECT_EQ(Words(kSender).size(), 0U);
    ClickWord(kSubject, 0);
    Click("cmdDel(1)");
    Save();
    EXPECT_EQ(Stored("000\\Criteria\\000"), kept);
    EXPECT_THAT(Stored("000\\Criteria"), testing::StartsWith("Order = \"000\"\n"))
        << "the list that was emptied goes, and it alone";
    Open(0);
    Add(kSender, u"alpha");
    Save();
    EXPECT_THAT(Stored("000\\Criteria\\000"), testing::HasSubstr("Value = 3:\"alpha~~~\"\n"));
  }
}

TEST_F(Options, AndOrNeedsTwoListsWithWords) {
  StartWithTwoRules();
  Open(0);
  EXPECT_FALSE(Can("mnuCritères"));
  Add(kSubject, u"gamma");
  EXPECT_TRUE(Can("mnuCritères"));
  EXPECT_TRUE(Checked("mnuCriteriaNo")) << "a rule that has no and/or is one of 'at least one'";
  ClickWord(kSubject, 0);
  Click("cmdDel(1)");
  EXPECT_FALSE(Can("mnuCritères"));
}

TEST_F(Options, AndOrIsTheRulesOwnUntilItIsChosen) {
  struct Case {
    std::uint32_t sizeLogic;
    std::uint32_t senderLogic;
    std::uint32_t bodyLogic;
    const char* shown;
    bool choose;
    const char* stored;  ///< Of the size, of the sender, of the new list, of the body.
  };
  const Case cases[] = {
      {7, 2, 2, "mnuCriteriaYes", false, "7222"}, {7, 0, 0, "mnuCriteriaNo", false, "7111"},
      {2, 0, 0, "mnuCriteriaYes", false, "2222"}, {1, 1, 1, "mnuCriteriaNo", true, "2222"},
      {7, 2, 1, "mnuCriteriaYes", false, "7221"}, {7, 2, 1, "mnuCriteriaYes", true, "2222"}};
  for (const auto& [sizeLogic, senderLogic, bodyLogic, shown, choose, stored] : cases) {
    SCOPED_TRACE(stored);
    rules.Order("000").PlainRule("000", "Mixte", "000 001 002");
    rules.Criterion("000", 15, 0, sizeLogic).Number(9).Words("001", 12, {"alpha"}, 0, senderLogic);
    rules.Words("002", 9, {"papa"}, 0, bodyLogic);
    Start();
    Open(0);
    Add(kSubject, u"beta");
    EXPECT_TRUE(Checked(shown));
    if (choose) Choose("mnuCriteriaYes");
    EXPECT_EQ(Checked("mnuCriteriaYes"), !Checked("mnuCriteriaNo"));
    Save();
    std::string logics;
    for (const auto& criterion : state.tables.RuleAt(0).CriteriaParam) logics += criterion.Logic;
    EXPECT_EQ(logics, stored);
  }
}

}  // namespace
}  // namespace morvelle
