#include "files/prefilter_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "app/messages/text.h"

namespace morvelle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::array<std::string, kSlotCount> kTypes = {"12", "8", "9", "22"};
constexpr std::string_view kTypeLabel = "Type de critère\n"_cp;
constexpr std::string_view kValueTypeLabel = "Type de valeur de critère\n"_cp;
constexpr std::string_view kValueLabel = "Valeur de critère\n"_cp;

std::string Block(const std::string& type, const std::string& rest) {
  return std::string(kTypeLabel) + type + "\n" + rest;
}

std::string Replaced(std::string text, char from, char to) {
  std::replace(text.begin(), text.end(), from, to);
  return text;
}

TEST(PrefilterFileTest, WordsComeUnderTheirTypeCode) {
  const auto typed = std::string(kValueTypeLabel) + "65\n" + std::string(kValueLabel);
  const auto text = "MAIL\ntête\nCRITERIA\n" +
                    Block("8", typed + "promo\na\tb\nc\x01\n\x7F\nd\x81\ngratuit\nEOF\n") +
                    "Flags\n0\n" + Block("12", "spam@x\nEOF\n") + Block("99", "rien\nEOF\n") +
                    Block("8", std::string(kValueLabel) + "encore\nEOF\n") + "EOR\nreste";
  std::string spaced;
  for (const char character : text)
    spaced += character == '\n' ? "\n\n \t\n" : std::string(1, character);
  for (const auto& content : {text, spaced}) {
    const auto words = ReadPrefilter(content, kTypes);
    ASSERT_TRUE(words);
    EXPECT_THAT((*words)[0], ElementsAre("spam@x"));
    EXPECT_THAT((*words)[1], ElementsAre("promo", "d\x81", "gratuit", "encore"));
    EXPECT_THAT((*words)[2], IsEmpty());
  }
}

TEST(PrefilterFileTest, AFileWithoutItsEndIsDamaged) {
  const auto whole = Block("8", "un\r\nEOF\r\n") + Block("9", "deux\r\nEOF\r\n") + "EOR\r\n";
  ASSERT_TRUE(ReadPrefilter(whole, kTypes));
  for (std::size_t length = 0; length + 2 < whole.size(); ++length) {
    EXPECT_FALSE(ReadPrefilter(whole.substr(0, length), kTypes)) << length;
  }
  EXPECT_FALSE(ReadPrefilter(Block("8", "un\nEOR\n"), kTypes)) << "a block without its end";
  EXPECT_FALSE(ReadPrefilter("un\nEOF\nEOR\n", kTypes)) << "no list";
  EXPECT_FALSE(ReadPrefilter(Replaced(whole, 'u', '\0'), kTypes)) << "a word that would be two";
}

TEST(PrefilterFileTest, WhatIsWrittenIsRead) {
  const SlotWords words = {{{"a b"}, {}, {"Valeur", "é"}, {"z"}}};
  const auto text = PrefilterText("Filtre", words, kTypes);
  EXPECT_EQ(ReadPrefilter(text, kTypes), words);
  EXPECT_THAT(text, testing::EndsWith("\r\nz\r\nEOF\r\nEOR\r\n"));
}

}  // namespace
}  // namespace morvelle
