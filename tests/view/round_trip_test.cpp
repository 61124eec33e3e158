
#include "tests/view/sample_fixture.h"

namespace morvelle {
namespace {

/// Rules through files and back, in the real window with the desktop's own file dialogs.
class RoundTripTest : public SampleIdentityTest {
 protected:
  /// Every value of the rule set but the ids.
  [[nodiscard]] Words Values() const {
    Words values = {state_.tables.Mail.Version};
    for (int row = 0; row < state_.tables.RuleCount; ++row) {
      const auto at = static_cast<std::size_t>(row);
      const auto& rule = state_.tables.RuleAt(row);
      values.insert(values.end(), {rule.Name, rule.Enabled, rule.Version});
      for (std::size_t k = 0; k < state_.tables.Actions[at]; ++k) {
        const auto& action = rule.ActionsParam[k];
        values.insert(values.end(), {action.Flags, action.Type, action.Value, action.ValueType});
      }
      for (std::size_t k = 0; k < state_.tables.Criteria[at]; ++k) {
        const auto& criterion = rule.CriteriaParam[k];
        values.insert(values.end(), {criterion.Flags, criterion.Logic, criterion.Type,
                                     criterion.Value, criterion.ValueType});
      }
    }
    return values;
  }
};

TEST_F(RoundTripTest, TheSampleComesBackFromItsFile) {
  Start();
  const auto before = Values();
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
  EXPECT_EQ(Values(), before);
  EXPECT_EQ(Lines("lstRules").size(), lines.size());
  Quit();
  // What reached the file says the same.
  Start();
  EXPECT_EQ(Values(), before);
}

}  // namespace
}  // namespace morvelle
