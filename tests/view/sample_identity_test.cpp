#include <wx/defs.h>

#include "tests/view/sample_fixture.h"

namespace morvelle {
namespace {

TEST_F(SampleIdentityTest, AWordIsAddedSavedAndReadByAnotherProgram) {
  const auto before = folder_ / "avant.reg";
  std::filesystem::copy_file(file_, before);
  Start();
  EXPECT_TRUE(driver_->LastBox().empty()) << "a first start shows no box";

  driver_->ChooseRule("mnuMod", RowOf("Publicités"_cp));
  const auto words = Lines("lstBox(1)");
  EXPECT_EQ(words.front(), "100 % gratuit");
  EXPECT_TRUE(IsSelected(0) && !IsSelected(1) && !IsSelected(2) && IsSelected(3));
  EXPECT_EQ(driver_->Find("lblNb(1)").GetLabel(), "9 mots");

  driver_->Click("txtBox(1)");
  driver_->Type("bonne affaire");
  driver_->Press(WXK_RETURN);
  EXPECT_EQ(Lines("lstBox(1)").back(), "bonne affaire");
  driver_->Click("cmdRecord(1)");
  EXPECT_TRUE(Lines("lstBox(1)").empty());
  EXPECT_FALSE(driver_->Find("cmdRecord(1)").IsEnabled());

  Quit();

  const auto check = std::string("sh '" MORVELLE_READER "' '" MORVELLE_HIVE_MAKER "' '") +
                     before.string() + "' '" + file_.string() + "'";
  EXPECT_EQ(std::system(check.c_str()), 0);
}

}  // namespace
}  // namespace morvelle
