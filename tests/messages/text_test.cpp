#include "app/messages/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <compare>
#include <vector>

namespace morvelle {
namespace {

std::string AllBytes() {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  return all;
}

TEST(Text, EveryByteSurvivesARoundTrip) {
  const auto all = AllBytes();
  const auto wide = ToUtf16(all);
  EXPECT_EQ(FromUtf16(wide), all);
  EXPECT_EQ(FromUtf8(ToUtf8(all)), all);
  auto units = wide;
  std::sort(units.begin(), units.end());
  EXPECT_EQ(std::unique(units.begin(), units.end()), units.end()) << "two bytes, one character";
  EXPECT_EQ(wide[0x80], u'€');
  EXPECT_EQ(wide[0x9C], u'œ');
  EXPECT_EQ(wide[0x81], u'\x81');
  EXPECT_EQ(wide[0xE9], u'é');
}

TEST(Text, WhatTheCodePageLacksIsRefusedOrShownAsAMark) {
  EXPECT_EQ(FromUtf16(u"a\u0107"), std::nullopt);
  EXPECT_EQ(FromUtf16(u"\u0080"), std::nullopt) << "byte 80 is the euro";
  EXPECT_EQ(FromUtf16Lossy(u"a\u0107é"), "a?\xE9");
  for (const auto* const bad : {"\xE9", "a\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80",
                                "\xF0\x9F\x98\x80", "\xF8\x88\x80\x80\x80", "\x80", "ć"}) {
    EXPECT_EQ(FromUtf8(bad), std::nullopt) << testing::PrintToString(bad);
  }
}

TEST(Text, LowerCaseKnowsTheLettersOfTheCodePage) {
  EXPECT_EQ(LowerCase("AZ[ÀÖ×ØÞßŠŒŽŸ€÷É"_cp), "az[àö×øþßšœžÿ€÷é"_cp);
  for (const char byte : AllBytes()) EXPECT_EQ(LowerCase(LowerCase(byte)), LowerCase(byte));
  EXPECT_TRUE(EqualIgnoringCase("Éric"_cp, "éRIC"_cp));
  EXPECT_FALSE(EqualIgnoringCase("abc", "ab"));
  EXPECT_FALSE(EqualIgnoringCase("ab", "abc"));
}

TEST(Text, BinaryOrderIsThatOfCodeUnits) {
  constexpr std::string_view kOrdered[] = {"",     "Zebra",  "apple", "apples", "zebra",
                                           "à"_cp, "été"_cp, "ÿ"_cp,  "œuf"_cp, "Š"_cp,
                                           "š"_cp, "ƒ"_cp,   "–"_cp,  "€"_cp,   "™"_cp};
  for (std::size_t i = 1; i < std::size(kOrdered); ++i) {
    EXPECT_TRUE(std::is_lt(CompareBinary(kOrdered[i - 1], kOrdered[i])) &&
                std::is_gt(CompareBinary(kOrdered[i], kOrdered[i - 1])))
        << ToUtf8(kOrdered[i - 1]) << " before " << ToUtf8(kOrdered[i]);
    EXPECT_TRUE(std::is_eq(CompareBinary(kOrdered[i], kOrdered[i])));
  }
}

TEST(Text, IdsAreThreeHexadecimalDigits) {
  EXPECT_EQ(ThreeDigitId(0), "000");
  EXPECT_EQ(ThreeDigitId(10), "00A");
  EXPECT_EQ(ThreeDigitId(4095), "FFF");
  EXPECT_EQ(ThreeDigitId(4096), "000") << "the last three characters";
  for (const auto* const good : {"000", "FFF", "0aB"}) EXPECT_TRUE(IsThreeDigitId(good));
}

}  // namespace
}  // namespace morvelle
