#include "core/word_lists.h"

#include "app/messages/errors.h"
#include "tests/core/rule_model.h"

namespace morvelle {
namespace {

using namespace std::string_literals;
using Words = std::vector<std::string>;

TEST(WordValues, AreWordsEachWithAZeroAndTwoMore) {
  EXPECT_EQ(EncodeWords({"alpha", "beta"}), "alpha\0beta\0\0\0"s);
  EXPECT_EQ(EncodeWords({"x"}), "x\0\0\0"s);
  EXPECT_EQ(EncodeWords({std::string("été"_cp)}), "\xE9t\xE9\0\0\0"s);
  EXPECT_EQ(EncodeWords({}), "");
  EXPECT_EQ(DecodeWords("alpha\0beta\0\0\0"s), (Words{"alpha", "beta"}));
  EXPECT_EQ(DecodeWords("b\0a\0a\0\0\0"s), (Words{"b", "a", "a"})) << "in stored order";
}

TEST(WordValues, TooShortOnesHoldNoWordAndALastOneWithoutItsZeroIsKept) {
  for (const auto& none : {""s, "\0"s, "x"s, "\0\0"s}) EXPECT_EQ(DecodeWords(none), Words{});
  for (const auto& two : {"alpha\0beta\0\0"s, "alpha\0beta\0"s, "alpha\0beta"s}) {
    EXPECT_EQ(DecodeWords(two), (Words{"alpha", "beta"}));
  }
}

TEST(WordLists, TakeOverTheListBoxSortedAndOnce) {
  RuleModel model;
  model.display.lists[1] = {"b", "b", "c"};
  model.wordLists.FillTable(1);
  EXPECT_EQ(model.tables.Words1, (Words{"b", "c"}));
  EXPECT_EQ(model.tables.WordCount[1], 2);
  EXPECT_EQ(model.display.counts[1], "2 mots");
  EXPECT_EQ(model.wordLists.EnCodeValue(1), "b\0c\0\0\0"s);
  model.display.lists[1].clear();
  model.wordLists.FillTable(1);
  EXPECT_EQ(model.tables.Words1, (Words{"b", "c"})) << "an empty list box changes nothing";
  model.display.lists[1] = {"c", "a", "c"};
  model.wordLists.FillTable(1);
  EXPECT_EQ(model.tables.Words1, (Words{"a", "c"}));
}

TEST(WordLists, ShowWhatTheyDecodeAndCountIt) {
  RuleModel model;
  model.wordLists.DecodeValue("seul\0\0\0"s, 3);
  EXPECT_EQ(model.tables.Words3, Words{"seul"});
  EXPECT_EQ(model.display.counts[3], "1 mot");
  model.wordLists.DecodeValue("", 3);
  EXPECT_EQ(model.display.counts[3], "0 mot");
  EXPECT_EQ(model.wordLists.EnCodeValue(3), "");
}

TEST(WordLists, HoldAsManyWordsAsTheyCanCount) {
  RuleModel model;
  for (int i = 0; i < 32767; ++i) model.display.lists[2].push_back(std::to_string(100000 + i));
  model.wordLists.FillTable(2);
  EXPECT_EQ(model.display.counts[2], "32767 mots");
  model.display.lists[2].emplace_back("zz");
  model.dialogs.Expect("Dépassement de capacité"_cp, kBoxOk, "FillTable");
  EXPECT_THROW(model.wordLists.FillTable(2), ProgramEnd);
  EXPECT_EQ(model.tables.Words2.size(), 32767U);
}

}  // namespace
}  // namespace morvelle
