#include "files/file_names.h"

#include <gtest/gtest.h>

#include "app/messages/text.h"

namespace morvelle {
namespace {

TEST(FileNamesTest, NamesLoseWhatWindowsRefuses) {
  EXPECT_EQ(SafeFileName("Le \"beau\" <a/b>\t?"), "Le 'beau' -a-b---");
  EXPECT_EQ(SafeFileName("été €"_cp), "été €"_cp);
  EXPECT_EQ(SafeFileName(" a. ."), " a");
  for (const auto* name : {"", "con", "Nul.sgn", "CONIN$", "com1 .a.b", "LPT\xB2.txt", ".cache"}) {
    EXPECT_EQ(SafeFileName(name), "_" + std::string(name));
  }
  EXPECT_EQ(SafeFileName(".. "), "_");
  for (const auto* name : {"console", "COM10", "comA", "lpt", "a.con", "aux-.txt"}) {
    EXPECT_EQ(SafeFileName(name), name);
  }
  EXPECT_EQ(WindowsFileName("C:\\a\\b.txt"), "b.txt");
  EXPECT_EQ(WindowsFileName("b.txt"), "b.txt");
}

}  // namespace
}  // namespace morvelle
