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
  set.Order("002 000")
      .PlainRule("000", "Listes"_cp, "000 001 002")
      .Words("000", 8, {"b", "a"}, 2, 1)
      .Criterion("001", 15, 1, 2)
      .Number(40)
      .Criterion("002", 20)
      .Rule("002", "Courses", 0)
      .Actions("000 001 002")
      .Action("000", 6)
      .Bytes("stored01\x09\0\0\0"s)
      .Action("001", 2)
      .Text("a@b.c")
      .Action("002", 10)
      .Number(3)
      .Criteria("000")
      .Words("000", 22, {"x"});
  Load();
  ASSERT_EQ(tables.RuleCount, 2);
  EXPECT_EQ(tables.Mail.Order, "002 000");
  EXPECT_EQ(tables.Mail.Version, "327680");
  EXPECT_EQ(model.display.rules, (std::vector<std::string>{"002 Courses", "000 Listes"}));
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

TEST_F(RuleLoaderTest, TheOrderIsReadByPosition) {
  set.Order("00A-001\t0").PlainRule("00A", "A", "000").PlainRule("001", "B", "000");
  Load();
  EXPECT_EQ(model.display.rules, (std::vector<std::string>{"00A A", "001 B"}));
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
  set.Order("000 001 002")
      .PlainRule("000", "Bonne", "000")
      .PlainRule("001", "Sans mots", "000")
      .Words("000", 8, {"x"})
      .Without("Value")
      .PlainRule("002", "", "000")
      .RuleWithout("Name");
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
  set.Order("000 001")
      .PlainRule("000", "A", "000 001")
      .Words("000", 12, {"x"})
      .Words("001", 9, {"y"})
      .PlainRule("001", "B", "000")
      .Words("000", 8, {"z"});
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

TEST_F(RuleLoaderTest, MoreEntriesThanTheTablesHoldAreListedAndLeftAlone) {
  const std::string twelve = "000 001 002 003 004 005 006 007 008 009 00A 00B";
  set.Order("000 001").PlainRule("000", "Douze", twelve).Rule("001", "Treize");
  for (const auto& id : IdsOfOrder(twelve)) {
    set.Rule("000", "Douze").Criterion(id, 20).Rule("001", "Treize").Criterion(id, 20);
  }
  set.Rule("000", "Douze").Words("00B", 22, {"x"});
  set.Rule("001", "Treize").Criterion("00C", 20).Criteria(twelve + " 00C").Actions("000");
  set.Action("000", 12);
  ExpectDamaged("001 - Treize");
  Load();
  EXPECT_EQ(tables.Criteria[0], 12);
  EXPECT_EQ(tables.FirstCriteria[0][3].Id, "00B");
  EXPECT_FALSE(tables.RuleAt(0).overfull);
  EXPECT_TRUE(tables.RuleAt(1).overfull);
  EXPECT_EQ(model.display.rules.back(), "001 Treize");
  EXPECT_EQ(model.display.editable, std::set<int>{0});
  const auto before = model.Dump();
  EXPECT_FALSE(model.Save(1, {}));
  EXPECT_EQ(model.Dump(), before);
  set.Rule("001", "Treize").Criteria("000").Actions(twelve + " 00C");
  ExpectDamaged("001 - Treize");
  Load();
  EXPECT_TRUE(tables.RuleAt(1).overfull);
  EXPECT_FALSE(model.Save(1));
  EXPECT_EQ(ToUtf8(model.refusal),
            "Cette règle ne peut être enregistrée : elle compterait plus de "
            "12 critères ou actions");
  EXPECT_EQ(model.store.commits, 0);
}

TEST_F(RuleLoaderTest, TheFirstOfTwoCriteriaOfAKindOwnsTheSlot) {
  set.Order("000")
      .PlainRule("000", "A", "003 001")
      .Words("001", 8, {"second"})
      .Words("003", 8, {"premier"});
  Load();
  EXPECT_EQ(tables.FirstCriteria[0][1].Id, "003");
  EXPECT_EQ(tables.FirstCriteria[0][1].Value, "premier\0\0\0"s);
  EXPECT_EQ(tables.Criteria[0], 2);
}

TEST_F(RuleLoaderTest, RulesOfWordsOrOfNothingCanBeEdited) {
  set.Order("000 001 002 003")
      .PlainRule("000", "Mots et taille", "000 001")
      .Criterion("000", 15)
      .Number(1)
      .Words("001", 9, {"x"})
      .PlainRule("001", "Taille", "000")
      .Criterion("000", 15)
      .Number(1)
      .PlainRule("002", "Enregistrée sans mots"_cp, "000")
      .PlainRule("003", "Critère sans clef"_cp, "001");
  ExpectDamaged(std::string("003 - Critère sans clef"_cp));
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
