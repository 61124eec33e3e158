#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;

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

TEST_F(Options, AChosenAndOrReachesEveryCriterion) {
  rules.Order("000").PlainRule("000", "Mixte", "000 001 002").Criterion("000", 15, 0, 1).Number(9);
  rules.Words("001", 12, {"alpha"}, 0, 1).Words("002", 8, {"beta"}, 0, 1);
  Start();
  Open(0);
  EXPECT_TRUE(Checked("mnuCriteriaNo"));
  Choose("mnuCriteriaYes");
  EXPECT_TRUE(Checked("mnuCriteriaYes"));
  EXPECT_FALSE(Checked("mnuCriteriaNo"));
  EXPECT_TRUE(Can("mnuRegContent"));
  EXPECT_TRUE(Can("cmdRecord(0)"));
  Save();
  for (const auto* id : {"000", "001", "002"}) {
    EXPECT_THAT(Stored("000\\Criteria\\"s + id), testing::HasSubstr("Logic = 2\n")) << id;
  }
}

TEST_F(Options, AnAndOrThatWasNotChosenStays) {
  rules.Order("000").PlainRule("000", "Mixte", "000 001").Criterion("000", 15, 0, 7).Number(9);
  rules.Words("001", 12, {"alpha"}, 0, 2);
  Start();
  Open(0);
  Add(kSubject, u"beta");
  EXPECT_TRUE(Checked("mnuCriteriaYes")) << "the new list takes the rule's own";
  Save();
  EXPECT_THAT(Stored("000\\Criteria\\000"), testing::HasSubstr("Logic = 7\n"));
  EXPECT_THAT(Stored("000\\Criteria\\001"), testing::HasSubstr("Logic = 2\n"));
  EXPECT_THAT(Stored("000\\Criteria\\002"), testing::HasSubstr("Logic = 2\n"));
}

TEST_F(Options, AndOrOfOtherCriteriaServesWhenTheListsHaveNone) {
  rules.Order("000").PlainRule("000", "Mixte", "000 001").Criterion("000", 15, 0, 2).Number(9);
  rules.Words("001", 12, {"alpha"}, 0, 0);
  Start();
  Open(0);
  Add(kSender, u"beta");
  Save();
  EXPECT_THAT(Stored("000\\Criteria\\001"), testing::HasSubstr("Logic = 2\n"));
}

TEST_F(Options, ARuleLeftWithOneCriterionHasNoAndOr) {
  StartWithTwoRules();
  Open(1);
  ClickWord(kSubject, 0);
  Click("cmdDel(1)");
  Save();
  EXPECT_EQ(Stored("001\\Criteria"),
            "Order = \"000\"\n"
            "000\\Type = 9\n000\\Flags = 3\n000\\Logic = 0\n000\\ValueType = 65\n"
            "000\\Value = 3:\"bises~papa~~~\"\n");
}

}  // namespace
}  // namespace morvelle
