#include "core/rule_writer.h"

#include <gmock/gmock.h>

#include "app/messages/errors.h"
#include "tests/core/rule_model.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

using namespace std::string_literals;

class RuleWriterTest : public testing::Test {
 protected:
  RuleModel model;
  RuleSet& set = model.set;
  std::array<std::vector<std::string>, kSlotCount>& lists = model.display.lists;

  /// The lines of the store below a key of rule 000.
  std::string Below(const std::string& key) {
    return DumpOf(model.store, kTestMailKey + "000\\" + key);
  }
  std::string Criteria() { return Below("Criteria"); }
  /// Saves the open rule; the tables must then be what a reload finds.
  void SaveAndReload() {
    ASSERT_TRUE(model.Save()) << ToUtf8(model.refusal);
    const auto settled = model.Row();
    model.loader.MailFromBdR();
    EXPECT_EQ(settled, model.Row());
  }
};

TEST_F(RuleWriterTest, WhatWasNotTouchedStaysByteForByte) {
  set.Order("000").PlainRule("000", "A", "000 001 002 003 004 005 006");
  set.RawAt("", "Name", ValueKind::MultiString, "a\0b\0\0"s);
  set.RawAt("", "Enabled", ValueKind{11}, "12345678").RawAt("", "Inconnu", ValueKind::None, "\1\2");
  set.RawAt("", "Version", ValueKind::String, "vieux").Actions("000 001 002 003");
  set.Action("000", 0xFFFFFFFF).Raw("Value", ValueKind::Dword, "\1");
  set.Action("001", 2).Raw("Value", ValueKind::String, "sans z\xE9ro");
  set.Action("002", 17).Number(0xFFFFFFFE).Without("Value");
  set.Action("003", 6).Bytes("autre\0\r\n"s).Without("ValueType");
  set.Criterion("000", 77, 5, 9).Raw("Value", ValueKind::Binary, "\0\1"s);
  set.Criterion("001", 15, 0xFFFFFFFF, 2).Raw("Value", ValueKind::Binary, "abcd");
  set.Criterion("002", 19).Raw("Value", ValueKind::ExpandString, "compte");
  set.Criterion("003", 13).Number(0x80000000).Without("Flags").Without("Logic");
  set.Words("004", 12, {"b", "a", "b"}, 3, 2).Raw("Flags", ValueKind::String, "trois");
  set.Criterion("005", 8, 0, 1).Raw("Value", ValueKind::Binary, "x\0y"s);
  set.Words("006", 22, {"z"}, 0, 2).Without("ValueType");
  model.dialogs.AllowAnyBox();
  model.Open();
  const auto before = model.Dump();
  const auto writes = model.store.writes;
  ASSERT_TRUE(model.Save());
  EXPECT_EQ(model.Dump(), before);
  ASSERT_TRUE(model.Save(0, {}));
  EXPECT_EQ(model.Dump(), before);
  EXPECT_EQ(model.store.writes, writes);
}

TEST_F(RuleWriterTest, KeptCriteriaOfAnyKindAreRenumberedWithAllTheyHold) {
  set.Order("000").PlainRule("000", "A", "000 002 005").Words("000", 12, {"b", "a"}, 0, 1);
  set.Criterion("002", 99, 4, 7).Raw("Extra", ValueKind{0x12}, "xy");
  set.Criterion("005", 15).Number(5);
  set.PutText(kTestMailKey + "000\\Criteria\\002\\Sous", "v", "w");
  model.Open();
  SaveAndReload();
  EXPECT_EQ(Criteria(), ReadFile(MORVELLE_STORED "/renumbered.txt"))
      << "000 and 002 exchange their places";
  const auto once = model.Dump();
  SaveAndReload();
  EXPECT_EQ(model.Dump(), once) << "a second save finds nothing to move";
}

TEST_F(RuleWriterTest, EditedListsAreSortedAndOnceTheOthersKeepTheirBytes) {
  set.Order("000").PlainRule("000", "A", "001 000 002").Words("000", 8, {"second"}, 0, 1);
  set.Words("001", 8, {"b", "a"}, 0, 1).Words("002", 12, {"b", "a", "b"}, 0, 1);
  model.Open();
  EXPECT_EQ(lists[1], (std::vector<std::string>{"b", "a"})) << "the first of a kind owns the slot";
  lists[1] = {"b", "a", "c", "a"};
  ASSERT_TRUE(model.Save());
  EXPECT_EQ(Criteria(), ReadFile(MORVELLE_STORED "/edited.txt"));
}

TEST_F(RuleWriterTest, CriteriaComeAndGoWithTheirWords) {
  set.Order("000").PlainRule("000", "A", "003 004").Words("003", 12, {"a"}, 0, 1);
  set.Words("004", 9, {"b"}, 0, 1).Words("000", 8, {"vieux"});
  model.Open();
  lists[0].clear();
  lists[2].clear();
  SaveAndReload();
  EXPECT_EQ(Criteria(), "Order = \"000\"\n") << "no forgotten key 000: no criterion";
  EXPECT_EQ(model.tables.Criteria[0], 0);
  lists[0] = {"a"};
  lists[3] = {"y", "x"};
  SaveAndReload();
  lists[0].clear();
  model.registry.DeleteKey(kTestMailKey + "000\\Criteria\\001");  // Its key is written again.
  SaveAndReload();
  EXPECT_EQ(Criteria(), ReadFile(MORVELLE_STORED "/made_again.txt"));
}

TEST_F(RuleWriterTest, NothingIsWrittenUnderAnIdThatIsNone) {
  set.Order("000").PlainRule("000", "A", "000").Words("000", 8, {"x"});
  model.Open();
  const auto before = model.Dump();
  for (const auto* const id : {"", "00", "0000", "00G", "..\\", " 00"}) {
    model.tables.RuleAt(0).Id = id;
    EXPECT_FALSE(model.Save()) << id;
    EXPECT_NE(model.refusal, "");
    EXPECT_EQ(model.Dump(), before);
  }
}

TEST_F(RuleWriterTest, ARuleWithoutActionsGetsAMoveToTheDeletedItems) {
  set.Order("000").Rule("000", "A").Actions("").Criteria("000").Words("000", 8, {"x"});
  model.Open();
  for (const auto* const none : {"", "stored01++", "stored01++++"}) {
    model.deletedItems = none;
    const auto before = model.Dump();
    EXPECT_FALSE(model.Save()) << none;
    EXPECT_EQ(model.refusal, "Erreur de lecture du fichier Folders.dbx");
    EXPECT_EQ(model.Dump(), before);
  }
  model.deletedItems = "stored01+++";
  SaveAndReload();
  EXPECT_EQ(Below("Actions"), ReadFile(MORVELLE_STORED "/default_action.txt"));
}

TEST_F(RuleWriterTest, AnOrderOfActionsNamesThoseThatAreThereOnce) {
  struct Case {
    const char* order;
    const char* typeOfFirst;  ///< As the window leaves it.
    bool closing;
    const char* saved;
  };
  const Case cases[] = {{"009 000 \\\\\\ 002 000", "", false, "000 002"},
                        {"000-002 0", "9", false, "000-002 0"},
                        {"009 \\\\\\", "", false, "009 \\\\\\"},
                        {"009", "8", false, "009"},
                        {"000 002", "9", true, "000 002 003"},
                        {"002 000", "9", true, "002 000 003"},
                        {"000", "12", true, "000"},
                        {"\\\\\\ 000", "8", false, "001 000"}};
  model.deletedItems.clear();  // None of these moves there.
  model.dialogs.AllowAnyBox();
  for (const auto& [order, typeOfFirst, closing, saved] : cases) {
    set.Order("000").PlainRule("000", "A", "000").Words("000", 8, {"x"}).Actions(order);
    set.Action("000", 9).Without("Flags").Action("002", 10).Number(3);
    model.Open();
    if (*typeOfFirst != '\0') model.tables.RuleAt(0).ActionsParam[0].Type = typeOfFirst;
    ASSERT_TRUE(model.Save(0, {.contentEdit = true, .closingAction = closing}));
    EXPECT_EQ(model.tables.RuleAt(0).ActionsOrder, saved);
    if (saved == "000 002 003"s) {
      EXPECT_THAT(Below("Actions"), testing::HasSubstr("\n003\\Flags = 0\n003\\Type = 12\n"));
    }
  }
  EXPECT_EQ(model.tables.RuleAt(0).ActionsParam[1].Flags, "0") << "missing ones are";
}

TEST_F(RuleWriterTest, ANewRuleIsWrittenWholeItsNumbersConverted) {
  set.Order("000").PlainRule("000", "A", "000");
  model.Open();
  auto& tables = model.tables;
  tables.RuleCount = 2;
  tables.ReDimTables();
  auto& rule = tables.RuleAt(1);
  rule.Id = "001";
  rule.Name = "B";
  rule.ActionsOrder = "000";
  rule.ActionsParam[0] = {"000", "", "10", "-5", "19"};
  tables.Actions[1] = 1;
  rule.CriteriaParam[0] = {"000", "1", "2", "19", "compte", "30"};
  rule.CriteriaParam[1] = {"001", "", "", "", "sans type", ""};
  rule.CriteriaParam[2] = {"002", "0", "1", "8", "x\0\0\0"s, "65"};
  tables.Criteria[1] = 3;
  ASSERT_TRUE(model.Save(1, {}));
  EXPECT_EQ(DumpOf(model.store, kTestMailKey + "001"), ReadFile(MORVELLE_STORED "/new_rule.txt"));
}

TEST_F(RuleWriterTest, EveryConversionComesBeforeTheFirstWrite) {
  set.Order("000").PlainRule("000", "A", "000").Criterion("000", 15).Number(1);
  model.Open();
  auto& rule = model.tables.RuleAt(0);
  rule.Name = "Autre nom";
  const auto before = model.Dump();
  rule.CriteriaParam[0].Value = "x";
  model.dialogs.Expect("Incompatibilité de type"_cp, kBoxOk, "CriteriaToBdR");
  EXPECT_THROW(model.Save(), ProgramEnd);
  rule.CriteriaParam[0].Value = "99999999999";
  model.dialogs.Expect("Dépassement de capacité"_cp, kBoxOk, "CriteriaToBdR");
  EXPECT_THROW(model.Save(), ProgramEnd);
  EXPECT_EQ(model.Dump(), before);
}

TEST_F(RuleWriterTest, TheFirstWriteGivesTheRulesKeyItsVersion) {
  set.Order("000").PlainRule("000", "A", "000").Remove(kTestMailKey, "Version");
  model.Open();
  ASSERT_TRUE(model.Save());
  EXPECT_TRUE(model.Dump().starts_with("Order = \"000\"\nVersion = 327680\n"));
  set.Put(kTestMailKey, "Version", ValueKind::MultiString, "x");
  const auto before = model.Dump();
  ASSERT_TRUE(model.Save());
  EXPECT_EQ(model.writer.MailTopToBdR(), kStatusSuccess);
  EXPECT_EQ(model.Dump(), before) << "a version of whatever type stays";
}

TEST_F(RuleWriterTest, IdsInTwoLetterCasesAreOneKey) {
  set.Order("000").PlainRule("000", "A", "000 001 002 003 004 005 006 007 008 00a");
  for (int i = 0; i < 9; ++i) set.Criterion(ThreeDigitId(i), 20);
  set.Criterion("00a", 15).Number(42);
  model.Open();
  lists[1] = {"x"};
  SaveAndReload();
  EXPECT_EQ(model.tables.RuleAt(0).CriteriaParam[9].Value, "42") << "not deleted as key 00A";
  EXPECT_EQ(model.tables.Criteria[0], 11);
  set.Criteria("009 009 008").Remove(kTestMailKey + "000\\Criteria", "rien");
  model.Open();
  SaveAndReload();
  EXPECT_EQ(model.tables.RuleAt(0).CriteriaOrder, "000 001") << "a criterion named twice is one";
}

TEST_F(RuleWriterTest, ADamagedOrderNeverLeadsOutOfItsKey) {
  set.Order("000").PlainRule("000", "A", "\\\\\\ 001").Words("001", 8, {"x"});
  set.PutText(kTestMailKey + "000\\Criteria\\voisin", "v", "w");
  model.dialogs.AllowAnyBox();
  model.Open();
  ASSERT_TRUE(model.Save());
  EXPECT_EQ(Criteria(), ReadFile(MORVELLE_STORED "/neighbour.txt"));
}

}  // namespace
}  // namespace morvelle
