#include "core/registry_access.h"

#include <gtest/gtest.h>

#include "app/messages/errors.h"
#include "tests/core/rule_model.h"

namespace morvelle {
namespace {

using namespace std::string_literals;

class RegistryAccessTest : public testing::Test {
 protected:
  FakeRegistry store;
  ScriptedDialogs dialogs;
  Messages messages{dialogs};
  std::string label;
  DamageReport damage{messages, label};
  RegistryAccess registry{store, messages, damage};

  RegistryStatus Set(std::string_view name, ValueKind kind, const RegistryValue& value) {
    const OpenedKey key(registry, "Clef", true);
    return registry.SetKeyValue(key.Handle(), name, kind, value);
  }
  /// Stores bytes as they are, and reads the value.
  RegistryValue Read(ValueKind kind, std::string_view data, RegistryValue before = {}) {
    const OpenedKey key(registry, "Clef", true);
    store.SetValue(key.Handle(), "V", kind, data);
    EXPECT_EQ(registry.QueryValue("", key.Handle(), "V", before), kStatusSuccess);
    return before;
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

TEST_F(RegistryAccessTest, StringsWithoutFinalZeroLoseNothing) {
  EXPECT_EQ(Read(ValueKind::String, "abc\0"s), RegistryValue("abc"s));
  EXPECT_EQ(Read(ValueKind::String, "abc"), RegistryValue("abc"s));
  EXPECT_EQ(Read(ValueKind::ExpandString, "%a%"), RegistryValue("%a%"s));
  EXPECT_EQ(Read(ValueKind::String, "abc\0\0"s), RegistryValue("abc\0"s));
  EXPECT_EQ(Read(ValueKind::String, ""), RegistryValue(""s));
  EXPECT_EQ(Read(ValueKind::Binary, "a\0b\0"s), RegistryValue("a\0b\0"s));
}

TEST_F(RegistryAccessTest, NumbersOfOddSizesAndUnknownTypesAreHarmless) {
  EXPECT_EQ(Read(ValueKind::Dword, "\x01\x02\x00\x80"s), RegistryValue(-2147483135));
  EXPECT_EQ(Read(ValueKind::Dword, "\x01\x02"s), RegistryValue(0x201));
  EXPECT_EQ(Read(ValueKind::Dword, ""), RegistryValue(0));
  EXPECT_EQ(Read(ValueKind::MultiString, "a\0\0"s, "avant"s), RegistryValue("avant"s));
  const OpenedKey key(registry, "Clef", false);
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
  label = "000 - Famille";
  query("");
  dialogs.Expect("Identité introuvable"_cp, kBoxOk, "Morvelle");
  query("Identity");
  dialogs.Expect("Il n'existe pas encore de règle de courrier"_cp, kBoxOk, "Morvelle");
  query("Mail");
  query("Mail");
  const std::string damaged(
      "La règle \"000 - Famille\" a mal été enregistrée.\rIl est conseillé de la supprimer."_cp);
  for (const auto* const table : {"Rule", "Actions", "ActionsParam", "Criteria", "CriteriaParam"}) {
    dialogs.Expect(damaged, kBoxOk, "Morvelle");
    query(table);
    query("Rule");
    dialogs.ExpectAllShown();
    damage.Reset();
  }
  EXPECT_EQ(value, RegistryValue("avant"s));

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
