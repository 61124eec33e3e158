#include "core/rule_loader.h"

#include <gtest/gtest.h>

#include "tests/core/rule_model.h"

namespace morvelle {
namespace {

using namespace std::string_literals;

class RuleLoaderTest : public testing::Test {
 protected:
  RuleModel model;
  RuleSet& set = model.set;
  RuleTables& tables = model.tables;

  void ExpectDamaged(const std::string& label) {
    model.dialogs.Expect("La r\xE8gle \"" + label +
                             std::string("\" a mal été enregistrée.\r"
                                         "Il est conseillé de la supprimer."_cp),
                         kBoxOk, "Morvelle");
  }
  void Load() {
    model.loader.MailFromBdR();
    model.dialogs.ExpectAllShown();
  }
};

TEST_F(RuleLoaderTest, ReadsRulesInTheirOrderWithEveryField) {
  set.Order("002-000\t0").PlainRule("000", "Listes", "000 001 002");
  set.Words("000", 8, {"b", "a"}, 2, 1).Criterion("001", 15, 1, 2).Number(40).Criterion("002", 20);
  set.Rule("002", "Courses", 0).Actions("000 001 002").Criteria("000").Words("000", 22, {"x"});
  set.Action("000", 6).Bytes("stored01\x09\0\0\0"s);
  set.Action("001", 2).Text("a@b.c").Action("002", 10).Number(3);
  Load();
  ASSERT_EQ(tables.RuleCount, 2);
  EXPECT_EQ(tables.Mail.Version, "327680");
  EXPECT_EQ(model.display.rules, (std::vector<std::string>{"002 Courses", "000 Listes"}))
      << "by position, whatever stands between the ids";
  const auto& first = tables.RuleAt(0);
  EXPECT_EQ(first.Enabled + "|" + first.Version + "|" + first.ActionsOrder, "0|0|000 001 002");
  EXPECT_EQ(tables.Actions[0], 3);
  const auto& move = first.ActionsParam[0];
  EXPECT_EQ(move.Id + move.Type + move.Flags + move.ValueType, "0006065");
  EXPECT_EQ(move.Value, "stored01\x09\0\0\0"s);
  EXPECT_EQ(first.ActionsParam[1].Value + first.ActionsParam[2].Value, "a@b.c3");
  EXPECT_EQ(tables.FirstCriteria[0][3].Value, "x\0\0\0"s);
  const auto& second = tables.RuleAt(1);
  EXPECT_EQ(tables.Criteria[1], 3);
  EXPECT_EQ(tables.FirstCriteria[1][1].Value, "b\0a\0\0\0"s);
  EXPECT_EQ(tables.FirstCriteria[1][1].Flags + tables.FirstCriteria[1][1].Logic, "21");
  const auto& size = second.CriteriaParam[1];
  EXPECT_EQ(size.Id + "|" + size.Flags + "|" + size.Logic + "|" + size.Type + "|" + size.Value +
                "|" + size.ValueType,
            "001|1|2|15|40|19");
  EXPECT_EQ(second.CriteriaParam[2].Value, "") << "all messages: no argument";
  EXPECT_EQ(model.display.panels[9], "");
}

TEST_F(RuleLoaderTest, WithoutRulesImportingIsStillPossible) {
  set.Order("");
  Load();
  EXPECT_EQ(tables.RuleCount, 0);
  EXPECT_TRUE(model.display.imports);
  model.display.imports = false;
  set.Remove(kTestMailKey, "Order");
  model.dialogs.Expect("Il n'existe pas encore de règle de courrier"_cp, kBoxOk, "Morvelle");
  Load();
  EXPECT_TRUE(model.display.imports);
  Load();  // Once per run of the program.
  EXPECT_EQ(tables.Rule.size(), 1U);
}

TEST_F(RuleLoaderTest, DamagedRulesAreReportedOnceNamingTheFirst) {
  set.Order("000 001 002").PlainRule("000", "Bonne", "000");
  set.PlainRule("001", "Sans mots", "000").Words("000", 8, {"x"}).Without("Value");
  set.PlainRule("002", "", "000").RuleWithout("Name");
  ExpectDamaged("001 - Sans mots");
  Load();
  EXPECT_EQ(tables.FirstCriteria[1][1].Type, "8") << "kept with an empty value";
  EXPECT_EQ(tables.FirstCriteria[1][1].Value, "");
  EXPECT_EQ(model.display.rules.back(), "002 ");
  set.Order("002 001");
  ExpectDamaged("002");
  Load();
}

TEST_F(RuleLoaderTest, KeysThatAreNotThereAreDamageAndAreNotMade) {
  set.Order("000 001")
      .Rule("000", "Seule")
      .Actions("000 001")
      .Action("000", 12)
      .Criteria("000 001");
  const auto before = model.Dump();
  ExpectDamaged("000 - Seule");
  Load();
  EXPECT_EQ(model.Dump(), before);
  EXPECT_EQ(tables.RuleAt(0).ActionsParam[1].Type, "");
  EXPECT_EQ(tables.RuleAt(1).Name, "");
  set.Order("001 000");
  ExpectDamaged("001");
  Load();
  EXPECT_EQ(model.store.commits, 0);
}

TEST_F(RuleLoaderTest, AReloadStartsFromBlank) {
  set.Order("000 001").PlainRule("000", "A", "000 001").Words("000", 12, {"x"});
  set.Words("001", 9, {"y"}).PlainRule("001", "B", "000").Words("000", 8, {"z"});
  Load();
  set.Order("001");
  set.Rule("001", "B").Remove(kTestMailKey + "001", "Enabled");
  set.Remove(kTestMailKey + "001\\Actions", "Order");
  set.Remove(kTestMailKey, "Version");
  ExpectDamaged("001 - B");
  Load();
  ASSERT_EQ(tables.Rule.size(), 1U);
  EXPECT_EQ(tables.Mail.Version, "");
  EXPECT_EQ(tables.RuleAt(0).Enabled, "") << "a failed read leaves nothing of the row before";
  EXPECT_EQ(tables.RuleAt(0).ActionsOrder, "");
  EXPECT_EQ(tables.Actions[0], 0);
  EXPECT_EQ(tables.FirstCriteria[0][0].Id, "");
  EXPECT_EQ(tables.FirstCriteria[0][1].Value, "z\0\0\0"s);
  EXPECT_EQ(tables.RuleAt(0).CriteriaParam[1].Type, "");
}

TEST_F(RuleLoaderTest, AReloadFindsEveryChangeAndKeepsTheRest) {
  for (const auto* const id : {"000", "001", "002", "003"}) {
    set.PlainRule(id, "Avant", "000").Words("000", 12, {"x"});
  }
  set.Order("000 001 002 003");
  Load();
  model.display.editable.clear();
  model.display.rules.clear();
  // Changed in the tables, in a key below, by and by a new order.
  tables.RuleAt(0).Name = "Autre";
  tables.Touch(0);
  set.PutText(kTestMailKey + "003\\Criteria", "Order", "000 001").Words("001", 8, {"y"});
  set.Order("003 002 001 000 004").PlainRule("004", "Neuve", "000").Words("000", 9, {"z"});
  // Not touched: the row is taken over as it is.
  tables.RuleAt(1).Version = "77";
  Load();
  EXPECT_EQ(tables.RuleAt(2).Version, "77");
  tables.RuleAt(2).Version = "0";
  const auto rows = [&] {
    std::string text;
    for (int row = 0; row < tables.RuleCount; ++row) text += model.Row(row) + "\n";
    return text;
  };
  const auto reloaded = rows();
  const auto shown = model.display.rules;
  const auto editable = model.display.editable;
  model.store.tellsChanges = false;
  model.display.rules.clear();
  Load();
  EXPECT_EQ(reloaded, rows());
  EXPECT_EQ(shown, model.display.rules);
  EXPECT_EQ(editable, model.display.editable);
  // What a batch wrote and was read meanwhile does not outlive its undoing.
  model.store.tellsChanges = true;
  model.store.BeginBatch();
  set.PutText(kTestMailKey + "002", "Name", "Perdu");
  Load();
  EXPECT_NE(reloaded, rows());
  model.store.AbandonBatch();
  Load();
  EXPECT_EQ(reloaded, rows());
}

TEST_F(RuleLoaderTest, MoreEntriesThanTheTablesHoldAreListedAndLeftAlone) {
  const std::string twelve = "000 001 002 003 004 005 006 007 008 009 00A 00B";
  set.Order("000 001").PlainRule("000", "Douze", twelve);
  for (const auto& id : IdsOfOrder(twelve)) set.Criterion(id, 20);
  set.Words("00B", 22, {"x"}).PlainRule("001", "Treize", "000").Criterion("000", 20);
  for (const auto* const side : {"\\Criteria", "\\Actions"}) {
    set.PutText(kTestMailKey + "001\\Criteria", "Order", "000");
    set.PutText(kTestMailKey + "001" + side, "Order", twelve + " 00C");
    ExpectDamaged("001 - Treize");
    Load();
    EXPECT_EQ(tables.Criteria[0], 12);
    EXPECT_EQ(tables.FirstCriteria[0][3].Id, "00B");
    EXPECT_TRUE(!tables.RuleAt(0).overfull && tables.RuleAt(1).overfull);
    EXPECT_EQ(model.display.rules.back(), "001 Treize");
    EXPECT_EQ(model.display.editable, std::set<int>{0});
    EXPECT_FALSE(model.Save(1, {}) || model.Save(1));
    EXPECT_NE(model.refusal.find("plus de 12"), std::string::npos);
    EXPECT_EQ(model.store.commits, 0);
  }
}

TEST_F(RuleLoaderTest, TheFirstOfTwoCriteriaOfAKindOwnsTheSlot) {
  set.Order("000").PlainRule("000", "A", "003 001");
  set.Words("001", 8, {"second"}).Words("003", 8, {"premier"});
  Load();
  EXPECT_EQ(tables.FirstCriteria[0][1].Id, "003");
  EXPECT_EQ(tables.FirstCriteria[0][1].Value, "premier\0\0\0"s);
  EXPECT_EQ(tables.Criteria[0], 2);
}

TEST_F(RuleLoaderTest, RulesOfWordsOrOfNothingCanBeEdited) {
  set.Order("000 001 002 003").PlainRule("000", "Mots et taille", "000 001");
  set.Criterion("000", 15).Number(1).Words("001", 9, {"x"});
  set.PlainRule("001", "Taille", "000").Criterion("000", 15).Number(1);
  set.PlainRule("002", "Vide", "000").PlainRule("003", "Sans clef", "001");
  ExpectDamaged("003 - Sans clef");
  Load();
  EXPECT_EQ(tables.Criteria[2], 0) << "an order 000 without a key 000 is no criterion, no damage";
  EXPECT_EQ(model.display.editable, (std::set<int>{0, 2}));
  EXPECT_TRUE(model.display.contentMenus);
  set.Order("001");
  Load();
  EXPECT_FALSE(model.display.contentMenus);
}

}  // namespace
}  // namespace morvelle
