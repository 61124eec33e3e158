#include "app/messages/text.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(Text, LiteralsAreConvertedByTheCompiler) {
  static_assert("été €"_cp == "\xE9t\xE9 \x80");
  static_assert("ÿœŠ’…"_cp == "\xFF\x9C\x8A\x92\x85");
  static_assert(""_cp.empty());
  EXPECT_EQ(ToUtf8("Éléments supprimés"_cp), "Éléments supprimés");
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
  const std::vector<std::string_view> ordered = {"",     "Zebra",  "apple", "apples", "zebra",
                                                 "à"_cp, "été"_cp, "ÿ"_cp,  "œuf"_cp, "Š"_cp,
                                                 "š"_cp, "ƒ"_cp,   "–"_cp,  "€"_cp,   "™"_cp};
  for (std::size_t i = 1; i < ordered.size(); ++i) {
    EXPECT_TRUE(CompareBinary(ordered[i - 1], ordered[i]) < 0 &&
                CompareBinary(ordered[i], ordered[i - 1]) > 0)
        << ToUtf8(ordered[i - 1]) << " before " << ToUtf8(ordered[i]);
    EXPECT_TRUE(CompareBinary(ordered[i], ordered[i]) == 0);
  }
}

TEST(Text, IdsAreThreeHexadecimalDigits) {
  EXPECT_EQ(ThreeDigitId(0), "000");
  EXPECT_EQ(ThreeDigitId(10), "00A");
  EXPECT_EQ(ThreeDigitId(4095), "FFF");
  EXPECT_EQ(ThreeDigitId(4096), "000") << "the last three characters";
  for (const auto* const good : {"000", "FFF", "0aB"}) EXPECT_TRUE(IsThreeDigitId(good));
  for (const auto* const bad : {"", "00", "0000", "00G", " 00", "0\\1"}) {
    EXPECT_FALSE(IsThreeDigitId(bad)) << bad;
  }
}

}  // namespace
}  // namespace morvelle
