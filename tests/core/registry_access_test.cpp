#include "core/registry_access.h"

#include <tuple>

#include "app/messages/errors.h"
#include "tests/core/rule_model.h"

namespace morvelle {
namespace {

using namespace std::string_literals;

class RegistryAccessTest : public testing::Test {
 protected:
  RuleModel model;
  FakeRegistry& store = model.store;
  ScriptedDialogs& dialogs = model.dialogs;
  RegistryAccess& registry = model.registry;

  RegistryStatus Set(std::string_view name, ValueKind kind, const RegistryValue& value) {
    const OpenedKey key(registry, "Clef", true);
    return registry.SetKeyValue(key.Handle(), name, kind, value);
  }
};

TEST_F(RegistryAccessTest, StringsAreStoredWithOneZeroAndBytesAsTheyAre) {
  Set("s", ValueKind::String, "abc"s);
  Set("x", ValueKind::ExpandString, "%a%"s);
  Set("e", ValueKind::String, ""s);
  Set("b", ValueKind::Binary, "a\0b"s);
  Set("n", ValueKind::Dword, "4294"s);
  Set("m", ValueKind::Dword, -2);
  EXPECT_EQ(Set("rien", ValueKind::MultiString, "x"s), kStatusSuccess);
  EXPECT_EQ(DumpOf(store, "Clef"),
            "s = \"abc\"\nx = 2:\"%a%~\"\ne = \"\"\nb = 3:\"a~b\"\nn = 4294\nm = 4294967294\n");
  store.writeStatus = kStatusAccessDenied;
  EXPECT_EQ(Set("s", ValueKind::String, "d"s), kStatusAccessDenied);
  dialogs.Expect("Incompatibilité de type"_cp, kBoxOk, "SetKeyValue");
  EXPECT_THROW(Set("n", ValueKind::Dword, "x"s), ProgramEnd);
}

TEST_F(RegistryAccessTest, StringsWithoutFinalZeroAndNumbersOfOddSizesLoseNothing) {
  const std::tuple<ValueKind, std::string, RegistryValue> cases[] = {
      {ValueKind::String, "abc\0"s, "abc"s},
      {ValueKind::String, "abc", "abc"s},
      {ValueKind::ExpandString, "%a%", "%a%"s},
      {ValueKind::String, "abc\0\0"s, "abc\0"s},
      {ValueKind::String, "", ""s},
      {ValueKind::Binary, "a\0b\0"s, "a\0b\0"s},
      {ValueKind::Dword, "\x01\x02\x00\x80"s, -2147483135},
      {ValueKind::Dword, "\x01\x02"s, 0x201},
      {ValueKind::Dword, "", 0},
      {ValueKind::MultiString, "a\0\0"s, "avant"s},
  };
  const OpenedKey key(registry, "Clef", true);
  for (const auto& [kind, stored, read] : cases) {
    RegistryValue value = "avant"s;
    store.SetValue(key.Handle(), "V", kind, stored);
    EXPECT_EQ(registry.QueryValue("", key.Handle(), "V", value), kStatusSuccess);
    EXPECT_EQ(value, read) << testing::PrintToString(stored);
  }
  store.SetValue(key.Handle(), "V", ValueKind::Dword, "12345678");
  std::string field = "avant";
  EXPECT_NE(registry.QueryField("", key.Handle(), "V", field), kStatusSuccess);
  EXPECT_EQ(field, "") << "a failed read gives an empty field";
}

TEST_F(RegistryAccessTest, AMissingValueIsReportedByItsTable) {
  const OpenedKey key(registry, "Clef", true);
  RegistryValue value = "avant"s;
  const auto query = [&](std::string_view table) {
    EXPECT_EQ(registry.QueryValue(table, key.Handle(), "V", value), kStatusNotFound);
  };
  model.tables.RuleLabel = "000 - Famille";
  query("");
  dialogs.Expect("Identité introuvable"_cp, kBoxOk, "Morvelle");
  query("Identity");
  dialogs.Expect("Il n'existe pas encore de règle de courrier"_cp, kBoxOk, "Morvelle");
  query("Mail");
  query("Mail");
  for (const auto* const table : {"Rule", "Actions", "ActionsParam", "Criteria", "CriteriaParam"}) {
    dialogs.Expect(DamagedRule(model.tables.RuleLabel), kBoxOk, "Morvelle");
    query(table);
    query("Rule");
    dialogs.ExpectAllShown();
    model.damage.BeginLoad();
  }
  store.describeStatus = 62;
  dialogs.Expect("L'entrée dépasse la fin de fichier"_cp, kBoxOk, "Morvelle");
  EXPECT_EQ(registry.QueryValue("Rule", key.Handle(), "V", value), 62);
  EXPECT_EQ(value, RegistryValue("avant"s));
}

TEST_F(RegistryAccessTest, AMissingKeyIsMadeOnlyOnDemand) {
  KeyHandle handle = 0;
  EXPECT_EQ(registry.OpenKey("A\\B", handle, false), kStatusNotFound);
  EXPECT_EQ(DumpOf(store, "A"), "(no such key)");
  EXPECT_EQ(registry.OpenKey("A\\B", handle, true), kStatusSuccess);
  EXPECT_EQ(registry.SetKeyValue(handle, "v", ValueKind::Dword, 1), kStatusSuccess);
  store.createStatus = kStatusAccessDenied;
  dialogs.Expect("Impossible de créer la clef"_cp, kBoxOk, "CreateKey");
  EXPECT_THROW(registry.OpenKey("A\\C", handle, true), ProgramEnd);
}

TEST_F(RegistryAccessTest, DeletingTakesTheWholeTreeAndNothingElse) {
  RuleSet set(store);
  set.Order("000 001").PlainRule("000", "A", "000 001").Words("000", 8, {"x"}).Criterion("001", 20);
  const auto before = DumpOf(store);
  set.PlainRule("001", "B", "000");
  EXPECT_EQ(registry.DeleteKey(""), kStatusNotFound);
  EXPECT_EQ(registry.DeleteKey(kTestMailKey + "009"), kStatusNotFound);
  EXPECT_EQ(registry.DeleteKey(kTestMailKey + "001\\"), kStatusSuccess);
  EXPECT_EQ(DumpOf(store), before);
}

TEST_F(RegistryAccessTest, SubkeysAreListedOrTheirAbsenceSaid) {
  std::int16_t count = -1;
  dialogs.Expect("Rien", kBoxOk, "Titre");
  EXPECT_TRUE(registry.EnumSubKeys("A", count, "Rien", "Titre", true).empty());
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(registry.EnumSubKeys("A", count, "Rien", "Titre", false).empty());
  for (const auto* const path : {"A\\b", "A\\C", "A\\a\\d"}) registry.CreateKey(path);
  EXPECT_EQ(registry.EnumSubKeys("A", count, "", "", true),
            (std::vector<std::string>{"a", "b", "C"}));
  EXPECT_EQ(count, 3);
}

}  // namespace
}  // namespace morvelle
