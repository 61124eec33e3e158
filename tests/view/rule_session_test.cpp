#include <wx/defs.h>

#include "tests/view/sample_fixture.h"
#include "view/wx_text.h"

namespace morvelle {
namespace {

constexpr auto kEssai = "Essai d'été"_cp;

/// The life of a rule through the real window, on the sample identity's file.
class RuleSession : public SampleIdentityTest {
 protected:
  void ChooseAndName(const char* menu, std::string_view name) {
    driver_->AnswerText(ToWx(name));
    driver_->Choose(menu);
  }
  /// A registry file as it is without the line that has whoever imports it delete the key first:
  /// the first write of all adds it.
  [[nodiscard]] static std::string WithoutDeletion(std::string bytes) {
    const auto start = bytes.find(Wide("[-HKEY_CURRENT_USER"));
    if (start == std::string::npos) return bytes;
    const auto end = Wide("\r\n\r\n");
    return bytes.erase(start, bytes.find(end, start) + end.size() - start);
  }
  [[nodiscard]] static std::string Wide(std::string_view ascii) {
    std::string wide;
    for (const char character : ascii) wide += {character, '\0'};
    return wide;
  }
};

TEST_F(RuleSession, ARuleIsMadeMovedRenamedFoundAgainAndDeleted) {
  const auto before = ReadFile(file_);
  Start();
  const auto rules = Lines("lstRules");
  const auto last = static_cast<int>(rules.size());

  ChooseAndName("mnuAdd", kEssai);
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

}  // namespace
}  // namespace morvelle
