
#include "app/messages/errors.h"
#include "tests/core/rule_model.h"

namespace morvelle {
namespace {

constexpr std::string_view kNotStored = "Les modifications n'ont pas pu être enregistrées."_cp;
/// A rule open with changes everywhere: name, words of two lists, a criterion that moves.
class SavingTest : public testing::Test {
 protected:
  SavingTest() {
    auto& set = model.set.Order("000 001").Remove(kTestMailKey, "Version");
    set.PlainRule("000", "A", "000 001")
        .Words("000", 8, {"x"}, 0, 1)
        .Criterion("001", 15)
        .Number(5);
    set.PlainRule("001", "B", "000").RuleWithout("Enabled");
    model.dialogs.Expect(DamagedRule("001 - B"));
    model.Open();
    model.tables.RuleAt(0).Name = "Autre";
    model.display.lists[0] = {"nouveau"};
    model.display.lists[1] = {"x", "y"};
    before = model.Dump();
    row = model.Row();
  }
  void ExpectAsBefore() {
    EXPECT_EQ(model.Dump(), before);
    EXPECT_EQ(model.Row(), row);
    EXPECT_EQ(model.tables.Mail.Order, "000 001");
  }

  RuleModel model;
  std::string before;
  std::string row;
};

TEST_F(SavingTest, AFailedWriteLeavesStoreAndTablesAsBefore) {
  model.dialogs.AllowAnyBox();
  model.store.writeStatus = kStatusAccessDenied;
  int failed = 0;
  for (; failed < 100; ++failed) {
    model.store.goodWrites = failed;
    if (model.Save()) break;
    ExpectAsBefore();
    EXPECT_EQ(model.dialogs.shown.back(),
              (ShownBox{std::string(kNotStored) + std::string("\rPermission refusée"_cp), kBoxStop,
                        "Morvelle"}));
  }
  EXPECT_TRUE(failed > 5 && failed < 100)
      << "the save has several writes, and each of them failed once";
}

TEST_F(SavingTest, AFailedCommitSaysWhyAndLeavesAllAsBefore) {
  model.store.commitOutcome = CommitOutcome::Failed;
  model.store.lastError = "Disque plein";
  model.dialogs.Expect(std::string(kNotStored) + "\rDisque plein", kBoxStop, "Morvelle");
  EXPECT_FALSE(model.Save());
  ExpectAsBefore();
  EXPECT_TRUE(model.Save()) << "and it can be tried again";
  EXPECT_NE(model.Dump(), before);
}

TEST_F(SavingTest, AnErrorOnTheWayUndoesTheBatch) {
  try {
    const CommandBatch batch(model.store, model.messages);
    model.set.Order("");
    throw ProgramEnd{};
  } catch (const ProgramEnd&) {
  }
  ExpectAsBefore();
}

TEST_F(SavingTest, AnOrderIsWrittenAloneAndNeverEmptyOverRules) {
  model.tables.Mail.Order = "001 000";
  EXPECT_EQ(model.writer.MailTopToBdR(), kStatusSuccess);
  model.set.Order("000 001").Remove(kTestMailKey, "Version");
  model.tables.Mail.Order.clear();
  EXPECT_EQ(model.writer.MailTopToBdR(), kStatusSuccess);
  model.set.Remove(kTestMailKey, "Version");
  EXPECT_EQ(model.Dump(), before);
  model.tables.RuleCount = 0;
  EXPECT_EQ(model.writer.MailTopToBdR(), kStatusSuccess);
  EXPECT_TRUE(model.Dump().starts_with("Order = \"\"\n")) << "the last rule was deleted";
  model.store.writeStatus = kStatusAccessDenied;
  model.tables.Mail.Order = "000";
  EXPECT_EQ(model.writer.MailTopToBdR(), kStatusAccessDenied);
}

TEST(SettledOrder, ReadsEveryFormOfALine) {
  RuleTables tables;
  tables.RuleCount = 4;
  tables.ReDimTables();
  for (int i = 0; i < 4; ++i) tables.RuleAt(i).Id = ThreeDigitId(i + 9);  // 009 00A 00B 00C
  const auto settled = [&](const std::vector<std::string>& lines) {
    return SettledOrder(lines, tables);
  };
  EXPECT_EQ(settled({"*\t00C x", " \t00B", "* 00A 00B", "  009 y"}), "00C 00B 00A 009");
  EXPECT_EQ(settled({"00C x", "00a", "00B", "009"}), "00C 00A 00B 009") << "without marker";
  EXPECT_EQ(settled({"* 00B", "* 00B", "  00b", "* 009"}), "00B 009 00A 00C")
      << "repeats go, what is missing follows in its former order";
  EXPECT_EQ(settled({"* 123 inconnue", "*", "", "* "}), "009 00A 00B 00C");
  EXPECT_EQ(settled({}), "009 00A 00B 00C") << "never empty over loaded rules";
  tables.RuleAt(3).Id = "00b";
  EXPECT_EQ(settled({}), "009 00A 00B") << "an order that named a rule twice";
  tables.RuleCount = 0;
  EXPECT_EQ(settled({"* 009"}), "");
}

}  // namespace
}  // namespace morvelle
