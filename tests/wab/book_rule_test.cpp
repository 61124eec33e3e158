#include "wab/book_rule.h"

#include "core/new_rule.h"
#include "tests/wab/book_machine.h"

namespace morvelle {
namespace {

struct BookRuleTest : BookMachine {
  /// Rules with these ids in the tables, named alike.
  void Rules(const std::vector<std::string>& ids) {
    tables.RuleCount = static_cast<std::int16_t>(ids.size());
    tables.ReDimTables();
    for (std::size_t i = 0; i < ids.size(); ++i) {
      tables.Rule[i].Id = ids[i];
      tables.Rule[i].Name = "Rule " + ids[i];
    }
  }
  std::optional<std::string> Id() { return BookRuleId(tables, registry, kTestMailKey); }
};

TEST_F(BookRuleTest, ItsIdFollowsTheGreatestAndIsFree) {
  EXPECT_EQ(Id(), "000");
  Rules({"000", "00F"});
  EXPECT_EQ(Id(), "010");
  Rules({"00a", "009", "zzz"});
  EXPECT_EQ(Id(), "00B") << "small digits count, what is no id does not";
  Rules({"000", "FFF"});
  EXPECT_EQ(Id(), "001");
  Rules({"000"});
  rules.Rule("001", "left by another program").Rule("002", "and this");
  EXPECT_EQ(Id(), "003") << "a taken id is not taken again";
}

TEST_F(BookRuleTest, OnlyTheValueOfTheSenderCriterionIsWritten) {
  rules.Order("000").PlainRule("000", kBookRule, "000 001");
  rules.Words("000", 8, {"sujet"}, 1, 2).Words("001", 12, {"vieux@b.fr"}, 1, 2);
  Rules({"000"});
  tables.Rule[0].CriteriaParam[0].Id = "000";
  tables.Rule[0].CriteriaParam[0].Type = "8";
  const auto before = DumpOf(store);
  const auto write = [&] {
    WriteBookWords(registry, kTestMailKey, tables, 0, {"a@b.fr", "c@d.fr"});
  };
  write();
  EXPECT_EQ(DumpOf(store), before) << "a rule without sender words";
  tables.Rule[0].CriteriaParam[1].Id = "001";
  tables.Rule[0].CriteriaParam[1].Type = "12";
  for (const auto mark : {&RuleRecord::overfull, &RuleRecord::overlong}) {
    tables.Rule[0].*mark = true;
    write();
    EXPECT_EQ(DumpOf(store), before) << "a rule that is never rewritten";
    tables.Rule[0].*mark = false;
  }
  WriteBookWords(registry, kTestMailKey, tables, 0, {});
  EXPECT_EQ(DumpOf(store), before) << "an empty list would send all mail to the bin";
  write();
  auto after = before;
  after.replace(after.find("vieux@b.fr~"), 11, "a@b.fr~c@d.fr~");
  EXPECT_EQ(DumpOf(store), after);
  EXPECT_EQ(store.commits, 1);
  rules.Remove(kTestMailKey, "Version").Words("001", 12, {"vieux@b.fr"}, 1, 2);
  write();
  after.replace(after.find("Version"), 17, "").insert(after.find("000\\"), "Version = 327680\n");
  EXPECT_EQ(DumpOf(store), after) << "a rules key without version gets one";
}

}  // namespace
}  // namespace morvelle
