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

  // Quitting asks; "Non" keeps the window.
  driver_->Answer("Non");
  EXPECT_FALSE(window_->Close());
  driver_->Answer("Oui");
  closed_ = window_->Close();
  EXPECT_TRUE(closed_);

  const auto check = std::string("sh '" MORVELLE_READER "' '" MORVELLE_HIVE_MAKER "' '") +
                     before.string() + "' '" + file_.string() + "'";
  EXPECT_EQ(std::system(check.c_str()), 0);
}

TEST_F(SampleIdentityTest, UnsavedWorkIsGivenUpOnlyAfterBothQuestions) {
  const auto before = ReadFile(file_);
  Start();
  driver_->ChooseRule("mnuMod", RowOf("Famille"));
  const auto words = Lines("lstBox(0)");
  driver_->ClickLine("lstBox(0)", 0);
  driver_->Click("cmdDel(0)");
  EXPECT_EQ(Lines("lstBox(0)").size(), words.size() - 1);
  driver_->Answer("Oui");
  driver_->Answer("Non");
  EXPECT_FALSE(window_->Close());
  EXPECT_EQ(Lines("lstBox(0)").size(), words.size() - 1);
  driver_->Click("cmdRestore(0)");
  EXPECT_EQ(Lines("lstBox(0)"), words);
  driver_->Click("cmdCancelRule(0)");
  EXPECT_TRUE(Lines("lstBox(0)").empty());
  EXPECT_EQ(ReadFile(file_), before);
}

}  // namespace
}  // namespace morvelle
