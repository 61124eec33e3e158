// New rules written straight from their rows, against the same rules written by a planned save.

#include "core/new_rule_keys.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/core/rule_model.h"

namespace morvelle {

namespace {

class NewRuleKeysTest : public testing::Test, protected RuleModel {
 protected:
  /// Row 1 is row 0, a rule with arguments of every kind, under an id that is not stored.
  NewRuleKeysTest() {
    set.Order("000").Rule("000", "Publicit\xE9s", 0);
    set.Actions("000 001 002 003").Action("000", 17).Number(5).Action("001", 2).Text("x@y");
    set.Action("002", 1).Bytes(std::string("a\0\n\r", 4)).Action("003", 12);
    set.Criteria("000 001 002 003").Words("000", 12, {"gratuit", "\xE9t\xE9"});
    set.Criterion("001", 19, 0, 2).Text("compte").Criterion("002", 15, 0, 1).Number(100);
    set.Criterion("003", 14, 1, 1);
    loader.MailFromBdR();
    tables.RuleCount = 2;
    tables.ReDimTables();
    tables.RuleAt(1) = tables.RuleAt(0);
    tables.RuleAt(1).Id = "0F0";
    tables.Actions[1] = tables.Actions[0];
    tables.Criteria[1] = tables.Criteria[0];
  }
};

TEST_F(NewRuleKeysTest, WritesWhatAPlannedSaveWrites) {
  ASSERT_TRUE(NewRuleKeys::IsAsRead(tables, 1));
  const auto before = Dump();
  store.BeginBatch();
  auto planned = writer.PlanRule(1, {});
  EXPECT_EQ(RuleWriter::Apply(planned), kStatusSuccess);
  const auto wanted = Dump();
  store.AbandonBatch();
  NewRuleKeys keys(registry, kTestMailKey);
  for (const bool atOnce : {true, false}) {
    store.tellsChanges = atOnce;
    store.BeginBatch();
    EXPECT_EQ(keys.Write(tables, 1), kStatusSuccess);
    EXPECT_EQ(Dump(), wanted) << atOnce;
    store.AbandonBatch();
    EXPECT_EQ(Dump(), before);
  }
  store.writeStatus = kStatusAccessDenied;
  EXPECT_EQ(keys.Write(tables, 1), kStatusAccessDenied);
}

TEST_F(NewRuleKeysTest, ARowThatWouldBeReadOtherwiseIsToldFromTheRest) {
  const std::function<void(RuleRecord&)> changes[] = {
      [](auto& rule) { rule.Id = "00X"; },
      [](auto& rule) { rule.Enabled = ""; },
      [](auto& rule) { rule.Version = " 0"; },
      [](auto& rule) { rule.overfull = true; },
      [](auto& rule) { rule.ActionsOrder = "000 001 002"; },
      [](auto& rule) { rule.ActionsOrder = "001 000 002 003"; },
      [](auto& rule) { rule.ActionsParam[0].Value = "05"; },
      [](auto& rule) { rule.ActionsParam[3].ValueType = "65"; },
      [](auto& rule) { rule.CriteriaParam[0].Logic = "-1"; },
      [](auto& rule) { rule.CriteriaParam[0].Value = ""; },
      [](auto& rule) { rule.CriteriaParam[1].ValueType = "65"; },
  };
  const auto row = tables.RuleAt(1);
  for (std::size_t i = 0; i < std::size(changes); ++i) {
    tables.RuleAt(1) = row;
    changes[i](tables.RuleAt(1));
    EXPECT_FALSE(NewRuleKeys::IsAsRead(tables, 1)) << i;
  }
  tables.RuleAt(1) = row;
  tables.Criteria[1] = 0;
  EXPECT_FALSE(NewRuleKeys::IsAsRead(tables, 1)) << "a rule without criteria is stored as one";
}

}  // namespace

}  // namespace morvelle
