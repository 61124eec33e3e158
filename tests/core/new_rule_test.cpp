#include "core/new_rule.h"

#include "tests/core/rule_model.h"

namespace morvelle {
namespace {

/// The id that "Ajouter une règle" gives to a rule beside those of the order and of the other keys.
std::string NewId(const std::string& order, const std::vector<std::string>& strayKeys = {}) {
  RuleModel model;
  model.set.Order(order);
  for (const auto& id : IdsOfOrder(order)) model.set.PlainRule(id, "R" + id, "000");
  for (const auto& id : strayKeys) model.set.Rule(id, "Hors liste");
  model.loader.MailFromBdR();
  FreeRuleIds ids(model.tables, model.registry, kTestMailKey);
  return ids.Take(UsualRuleId(model.tables)).value_or("none");
}

TEST(NewRule, ItsIdIsFreeAmongTheRowsAndTheKeys) {
  struct Case {
    const char* order;
    std::vector<std::string> strayKeys;
    const char* id;
  };
  const Case cases[] = {
      {"", {}, "000"},
      {"000", {}, "001"},
      {"001", {}, "000"},  // The formula's last resort is the only rule's own id.
      {"000 001 002", {}, "003"},
      {"000 002", {}, "001"},
      {"001 002 003", {}, "000"},
      {"00a 001", {"002"}, "000"},
      {"000", {"001"}, "002"},
      {"", {"000"}, "001"},
      {"001 002 003 004 005 006 007 008 009 00a", {"000"}, "00B"},
      {"000 FFF", {}, "001"},
  };
  for (const auto& [order, strayKeys, id] : cases) {
    EXPECT_EQ(NewId(order, strayKeys), id) << order;
  }
}

TEST(NewRule, AnIdIsGivenOnceAndThereAreNoMoreThan4096) {
  RuleModel model;
  model.set.Order("7ff").PlainRule("7ff", "Une", "000").Rule("fFf", "Hors liste");
  model.loader.MailFromBdR();
  FreeRuleIds ids(model.tables, model.registry, kTestMailKey);
  for (const auto* refused : {"7FF", "FFF", "", "1000", "xyz", "\\\\\\"}) {
    EXPECT_NE(ids.Take(refused), refused);
  }
  EXPECT_EQ(ids.Take("800"), "800");
  EXPECT_EQ(ids.Take("800"), "006");
  int left = 0;
  while (ids.Take()) ++left;
  EXPECT_EQ(left, kMaxRules - 2 - 8);
}

TEST(NewRule, ItsRowStartsBlankAndTheOrderFromTheRows) {
  RuleModel model;
  model.set.Order("000 001 0").PlainRule("000", "A", "000").Words("000", 12, {"x"});
  model.set.PlainRule("001", "B", "000");
  model.loader.MailFromBdR();
  const int row = AddRow(model.tables, "002", "Neuve");
  GiveDefaultAction(model.tables, row, model);
  EXPECT_EQ(row, 2);
  EXPECT_EQ(model.tables.Mail.Order, "000 001 002");
  const std::string blank = "\n|||||";
  EXPECT_EQ(model.Row(row), "002 Neuve 1 0\n000\n000|0|6|stored01\x04~~" + std::string(1, '\0') +
                                "|65\n" + blank + blank + blank + blank);

  model.deletedItems = "court";
  model.set.Remove(kTestMailKey, "Order");
  model.tables.RuleAt(0) = model.tables.RuleAt(row);
  model.tables.Criteria[0] = 7;
  model.tables.RuleCount = 0;
  EXPECT_EQ(AddRow(model.tables, "000", "Seule"), 0);
  GiveDefaultAction(model.tables, 0, model);
  EXPECT_EQ(model.tables.Mail.Order, "000");
  EXPECT_EQ(model.Row(0), "000 Seule 1 0\n000\n000|0|12||\n" + blank + blank + blank + blank)
      << "no move is made up without the folder";
}

}  // namespace
}  // namespace morvelle
