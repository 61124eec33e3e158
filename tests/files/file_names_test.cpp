#include "files/file_names.h"

#include <gtest/gtest.h>

#include "app/messages/text.h"

namespace morvelle {
namespace {

TEST(FileNamesTest, NamesLoseWhatWindowsRefuses) {
  EXPECT_EQ(SafeFileName("Le \"beau\" <a/b>\t?"), "Le 'beau' -a-b---");
  EXPECT_EQ(SafeFileName("été €"_cp), "été €"_cp);
  EXPECT_EQ(WindowsFileName("C:\\a\\b.txt"), "b.txt");
  EXPECT_EQ(WindowsFileName("b.txt"), "b.txt");
}

}  // namespace
}  // namespace morvelle
