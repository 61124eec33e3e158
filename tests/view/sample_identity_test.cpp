#include <wx/defs.h>

#include <regex>

#include "tests/view/sample_fixture.h"
#include "view/wx_text.h"

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

std::string Wide(std::string_view ascii) {
  std::string wide;
  for (const char character : ascii) wide += {character, '\0'};
  return wide;
}

/// A registry file as it is without the line that has whoever imports it delete the key first:
/// the first write of all adds it.
std::string WithoutDeletion(std::string bytes) {
  const auto start = bytes.find(Wide("[-HKEY_CURRENT_USER"));
  if (start == std::string::npos) return bytes;
  const auto end = Wide("\r\n\r\n");
  return bytes.erase(start, bytes.find(end, start) + end.size() - start);
}

TEST_F(SampleIdentityTest, ARuleIsMadeMovedRenamedFoundAgainAndDeleted) {
  const auto before = ReadFile(file_);
  Start();
  const auto rules = Lines("lstRules");
  const auto last = static_cast<int>(rules.size());

  driver_->AnswerText(ToWx("Essai d'été"_cp));
  driver_->Choose("mnuAdd");
  // The cursor waits in the text box.
  driver_->Type("alpha");
  driver_->Press(WXK_RETURN);
  driver_->Click("optCriteria(2)");
  driver_->Click("txtBox(2)");
  driver_->Type("beta");
  driver_->Press(WXK_RETURN);
  driver_->ClickLine("lstAct", 2);
  driver_->Choose("mnuCriteriaYes");
  driver_->Answer("Oui");
  driver_->Click("cmdRecord(2)");
  EXPECT_EQ(driver_->PendingAnswers(), 0U);

  driver_->Choose("mnuChangeOrder");
  driver_->ClickLine("lstRules", last);
  driver_->Click("picUp");
  for (int line = last - 1; line > 0; --line) {
    driver_->FindAs<wxListBox>("lstRules").SetFocus();
    driver_->Press(WXK_UP, wxMOD_ALT);
  }
  driver_->Choose("mnuRegOrder");
  EXPECT_EQ(Lines("lstRules").size(), rules.size() + 1);

  driver_->AnswerText("Essai bis");
  driver_->Answer("Oui");
  driver_->ChooseRule("mnuRen", 0);
  Quit();

  Start();
  const auto found = Lines("lstRules");
  EXPECT_TRUE(found.front().ends_with("Essai bis")) << found.front();
  driver_->ChooseRule("mnuMod", 0);
  EXPECT_EQ(Lines("lstBox(0)"), Words{"alpha"});
  EXPECT_EQ(Lines("lstBox(2)"), Words{"beta"});
  EXPECT_TRUE(IsSelected(2) && !IsSelected(0) && !IsSelected(1) && !IsSelected(3));
  EXPECT_TRUE(form_->Menu("mnuCriteriaYes").Checked());
  driver_->Click("cmdCancelRule(0)");

  driver_->Answer("Oui");
  driver_->ChooseRule("mnuDel", 0);
  EXPECT_EQ(Lines("lstRules"), rules);
  Quit();
  EXPECT_TRUE(WithoutDeletion(ReadFile(file_)) == before) << "the store as it was, byte for byte";
}

/// A file of rules without the ids of the rules, which an import gives anew.
std::string WithoutIds(const std::filesystem::path& file) {
  return std::regex_replace(ReadFile(file), std::regex("(Order|ID de r.gle)\r\n[^\r]*\r\n"), "");
}

// Rules through files and back, with the desktop's own file dialogs.
TEST_F(SampleIdentityTest, TheSampleComesBackFromItsFile) {
  Start();
  const auto lines = Lines("lstRules");
  ASSERT_GT(lines.size(), 2U);
  const auto file = (folder_ / "tout").string();
  driver_->AnswerFile(file);
  driver_->Choose("mnuExpAllRules");
  ASSERT_TRUE(std::filesystem::exists(file + ".moe"));

  for (std::size_t k = 0; k < lines.size(); ++k) {
    driver_->Answer("Oui");
    driver_->ChooseRule("mnuDel", 0);
  }
  EXPECT_EQ(state_.tables.RuleCount, 0);
  EXPECT_TRUE(Lines("lstRules").empty());

  driver_->AnswerFile(file + ".moe");
  driver_->Choose("mnuImpAllRules");
  EXPECT_EQ(driver_->PendingAnswers(), 0U);
  EXPECT_EQ(Lines("lstRules").size(), lines.size());
  Quit();
  // What reached the store says the same.
  Start();
  driver_->AnswerFile(file + " encore");
  driver_->Choose("mnuExpAllRules");
  EXPECT_EQ(WithoutIds(file + " encore.moe"), WithoutIds(file + ".moe"));
}

}  // namespace
}  // namespace morvelle
