#include "dbx/hex.h"

#include <gtest/gtest.h>

#include "app/messages/errors.h"

namespace morvelle {
namespace {

TEST(Hex, SpellsEveryByteAndReadsItBack) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  const auto hex = StrToHex(all);
  EXPECT_EQ(hex.substr(0, 6), "000102");
  EXPECT_EQ(hex.substr(506), "FDFEFF");
  EXPECT_EQ(HexToStr(hex), all);
  EXPECT_EQ(StrToHex(""), "");
  EXPECT_EQ(HexToStr("41424"), "AB") << "a digit without its pair";
  EXPECT_THROW(HexToStr("4G"), RuntimeError);
}

TEST(Hex, ReadsNumbersLeastSignificantByteFirst) {
  EXPECT_EQ(HexToLong("78563412"), 0x12345678);
  EXPECT_EQ(HexToLong("FFFFFF7F"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(HexToLong24("050000"), 5);
  EXPECT_EQ(HexToLong24("FFFF7F"), 0x7FFFFF);
  EXPECT_THROW(HexToLong("785634"), RuntimeError);
  // The top byte has a sign of its own.
  EXPECT_EQ(HexToLong("000000FF"), -127 * 0x1000000);
  EXPECT_EQ(HexToLong("01000080"), 1) << "80 counts as 0";
  EXPECT_EQ(HexToLong("FFFFFF81"), -1);
  EXPECT_EQ(HexToLong24("0000FF"), -127 * 0x10000);
  EXPECT_EQ(HexToLong24("FEFF81"), -2);
}

}  // namespace
}  // namespace morvelle
