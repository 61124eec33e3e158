#include "core/rule_loader.h"

#include <gmock/gmock.h>

#include "app/messages/errors.h"
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
    model.dialogs.Expect(DamagedRule(label), kBoxOk, "Morvelle");
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
  EXPECT_EQ(
      model.Row(0),
      "002 Courses 0 0\n000 001 002\n000|0|6|stored01\t\0\0\0|65\n001|0|2|a@b.c|30\n002|0|10|3|19\n"
      "000\n000|0|0|22|x\0\0\0|65\n|||||\n|||||\n|||||\n000|0|0|22|x\0\0\0|65"s);
  EXPECT_EQ(model.Row(1),
            "000 Listes 1 0\n000\n000|0|12||\n000 001 002\n000|2|1|8|b\0a\0\0\0|65\n"
            "001|1|2|15|40|19\n002|0|0|20||\n|||||\n000|2|1|8|b\0a\0\0\0|65\n|||||\n|||||"s);
  EXPECT_EQ(model.display.panels[9], "");
}

TEST_F(RuleLoaderTest, WithoutRulesImportingIsStillPossible) {
  for (const auto* order : {"", "0"}) {
    set.Order(order);
    Load();
    EXPECT_EQ(tables.RuleCount, 0);
    EXPECT_TRUE(model.display.imports);
    model.display.imports = false;
  }
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
  set.Order("000 001").PlainRule("000", "Seule", "000 001").Actions("000 001");
  const auto before = model.Dump();
  ExpectDamaged("000 - Seule");
  Load();
  EXPECT_EQ(model.Dump(), before);
  EXPECT_EQ(tables.RuleAt(0).ActionsParam[1].Type, "");
  EXPECT_EQ(tables.RuleAt(1).Name, "");
  set.Order("001 000");
  const auto turned = model.Dump();
  ExpectDamaged("001");
  Load();
  EXPECT_EQ(model.Dump(), turned);
}

TEST_F(RuleLoaderTest, AnOrderThatCannotBeReadIsNoEmptyRuleSet) {
  for (const auto* const id : {"00a", "002", "Divers"}) {
    set.PlainRule(id, "R", "000").Words("000", 12, {"x"});
  }
  const auto rows = [&] { return testing::PrintToString(model.display.rules); };
  const std::string byKey = "{ \"002 R\", \"00a R\" }";
  for (const auto kind : {ValueKind::String, ValueKind::ExpandString, ValueKind::Binary}) {
    set.Put(kTestMailKey, "Order", kind, "00a 002 00A");
    Load();
    EXPECT_EQ(rows(), "{ \"00a R\", \"002 R\" }");
  }
  model.dialogs.Expect(
      "L'ordre des règles est illisible\u00A0: elles sont montrées dans l'ordre de "
      "leurs clefs."_cp,
      kBoxExclamation, "Morvelle");
  for (const auto kind : {ValueKind::MultiString, ValueKind::Dword, ValueKind::None}) {
    set.Put(kTestMailKey, "Order", kind, "0000");
    const auto before = model.Dump();
    Load();  // Said once per run of the program.
    EXPECT_EQ(rows(), byKey);
    EXPECT_EQ(model.Dump(), before);
    EXPECT_EQ(model.writer.MailTopToBdR(), kStatusSuccess);
    EXPECT_THAT(model.Dump(), testing::StartsWith("Order = \"002 00a\"\n"));
  }
  model.store.describeStatus = kStatusAccessDenied;
  model.store.tellsChanges = false;
  for (int box = 0; box < 5; ++box) model.dialogs.Expect(ErrorDescription(kStatusAccessDenied));
  model.dialogs.Expect(
      "Ce qui n'a pu être lu non plus\u00A0:\r00a, Name\r00a - , Enabled\r00a - , Version\r"
      "00a - , Order\r00a - , Order"_cp);
  Load();
  EXPECT_EQ(rows(), "{ \"002 \", \"00a \" }") << "a read that fails";
}

TEST_F(RuleLoaderTest, AListOfMoreWordsThanCanBeCountedIsNeverOpenedOrRewritten) {
  std::vector<std::string> words(32768, "x");
  set.Order("000 001").PlainRule("000", "Longue", "000 001").Words("000", 8, {"y"});
  set.Words("001", 8, words).PlainRule("001", "Juste", "000");
  words.pop_back();
  set.Words("000", 9, words);
  model.dialogs.Expect(
      "Une règle dont une liste compte plus de 32\u00A0767 mots ne peut être ni "
      "ouverte ni modifiée\u00A0:\r\"Longue\""_cp,
      kBoxExclamation, "Morvelle");
  for (int times = 0; times < 2; ++times) {
    Load();
    EXPECT_EQ(model.display.rules.front(), "000 Longue");
    EXPECT_EQ(model.display.editable, std::set<int>{1});
  }
  EXPECT_EQ(CountWords(tables.RuleAt(0).CriteriaParam[1].Value), 32768U) << "whole, for a file";
  EXPECT_FALSE(model.Save(0, {}) || model.Save(0));
  EXPECT_NE(model.refusal.find("767"), std::string::npos);
  EXPECT_TRUE(model.Save(1, {}));
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
  EXPECT_EQ(model.Row(),
            "001 B  0\n\n000\n000|0|0|8|z\0\0\0|65\n|||||\n000|0|0|8|z\0\0\0|65\n|||||\n|||||"s)
      << "a failed read leaves nothing of the row before";
  EXPECT_EQ(tables.RuleAt(0).CriteriaParam[1].Type, "");
}

TEST_F(RuleLoaderTest, AReloadFindsEveryChangeAndKeepsTheRest) {
  for (const auto* const id : {"000", "001", "002", "003"}) {
    set.PlainRule(id, "Avant", "000").Words("000", 12, {"x"});
  }
  set.Order("000 001 002 003");
  Load();
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
  const auto loaded = [&] {
    return ShownRows(tables) + testing::PrintToString(model.display.rules) +
           testing::PrintToString(model.display.editable);
  };
  const auto reloaded = loaded();
  model.store.tellsChanges = false;
  Load();
  EXPECT_EQ(reloaded, loaded());
  // What a batch wrote and was read meanwhile does not outlive its undoing.
  model.store.tellsChanges = true;
  model.store.BeginBatch();
  set.PutText(kTestMailKey + "002", "Name", "Perdu");
  Load();
  EXPECT_NE(reloaded, loaded());
  model.store.AbandonBatch();
  Load();
  EXPECT_EQ(reloaded, loaded());
}

TEST_F(RuleLoaderTest, MoreEntriesThanTheTablesHoldAreListedAndLeftAlone) {
  set.Order("000 001").PlainRule("000", "Douze", kTwelve);
  for (const auto& id : IdsOfOrder(kTwelve)) set.Criterion(id, 20);
  set.Words("00B", 22, {"x"}).PlainRule("001", "Treize", "000").Criterion("000", 20);
  for (const auto* const side : {"\\Criteria", "\\Actions"}) {
    set.PutText(kTestMailKey + "001\\Criteria", "Order", "000");
    set.PutText(kTestMailKey + "001" + side, "Order", kTwelve + " 00C");
    ExpectDamaged("001 - Treize");
    Load();
    EXPECT_EQ(tables.Criteria[0], 12);
    EXPECT_EQ(tables.FirstCriteria[0][3].Id, "00B");
    EXPECT_TRUE(!tables.RuleAt(0).overfull && tables.RuleAt(1).overfull);
    EXPECT_EQ(model.display.rules.back(), "001 Treize");
    EXPECT_EQ(model.display.editable, std::set<int>{0});
    EXPECT_FALSE(model.Save(1, {}) || model.Save(1));
    EXPECT_NE(model.refusal.find("plus de 12"), std::string::npos);
  }
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
