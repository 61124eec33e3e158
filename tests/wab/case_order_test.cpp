#include "wab/case_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "app/messages/text.h"

namespace morvelle {
namespace {

using testing::ElementsAre;

using Texts = std::vector<std::string>;

Texts Sorted(Texts texts) {
  SortByLowerCase(texts);
  return texts;
}

/// The order as it is defined, step by step.
void SelectionSort(Texts& texts) {
  const auto less = [](const std::string& left, const std::string& right) {
    return std::is_lt(CompareBinary(LowerCase(left), LowerCase(right)));
  };
  for (std::size_t i = 0; i + 1 < texts.size(); ++i) {
    auto smallest = i;
    for (std::size_t k = i + 1; k < texts.size(); ++k) {
      if (less(texts[k], texts[smallest])) smallest = k;
    }
    if (smallest != i) std::swap(texts[i], texts[smallest]);
  }
}

TEST(CaseOrder, WhatDiffersInCaseAloneIsNotKeptInItsOrder) {
  EXPECT_THAT(Sorted({"Ba", "bA", "a"}), ElementsAre("a", "bA", "Ba"));
  EXPECT_THAT(Sorted({"b", "B", "A", "a"}), ElementsAre("A", "a", "b", "B"));
  const std::string euro(1, static_cast<char>(0x80));
  const std::string capitalE(1, static_cast<char>(0xC9));
  EXPECT_THAT(Sorted({euro, capitalE, "z", "Z", ""}), ElementsAre("", "z", "Z", capitalE, euro));
}

TEST(CaseOrder, IsThatOfTheStepByStepSort) {
  std::mt19937 random(20260101);
  constexpr std::string_view kLetters = "abABéÉœŒ"_cp;
  for (int round = 0; round < 5000; ++round) {
    Texts texts(random() % 14);
    for (auto& text : texts) {
      for (auto length = random() % 3; length > 0; --length) {
        text += kLetters[random() % kLetters.size()];
      }
    }
    auto expected = texts;
    SelectionSort(expected);
    ASSERT_EQ(Sorted(texts), expected) << testing::PrintToString(texts);
  }
}

TEST(CaseOrder, TheLastOfARunStays) {
  Texts texts = {"a", "A", "b", "c", "C", "c"};
  KeepLastOfEach(texts);
  EXPECT_THAT(texts, ElementsAre("A", "b", "c"));
  texts.clear();
  KeepLastOfEach(texts);
  EXPECT_TRUE(texts.empty());
}

}  // namespace
}  // namespace morvelle
