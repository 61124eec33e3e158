// The window's commands on the registry of Windows: what other programs may have left in it, do to
// it meanwhile, or forbid.

#include <gmock/gmock.h>

#include "samples/dbx_builder.h"
#include "tests/support/fake_machine.h"
#include "tests/windows/private_registry.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kForbidden =
    "Les modifications n'ont pas pu être enregistrées.\rPermission refusée"_cp;
constexpr auto kNoRulesKey =
    "La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp;
constexpr auto kCannotCreate = "Impossible de créer la clef"_cp;

/// The lines of one list that the other lacks.
std::vector<std::wstring> Without(std::vector<std::wstring> lines,
                                  std::vector<std::wstring> others) {
  std::sort(lines.begin(), lines.end());
  std::sort(others.begin(), others.end());
  std::vector<std::wstring> rest;
  std::set_difference(lines.begin(), lines.end(), others.begin(), others.end(),
                      std::back_inserter(rest));
  return rest;
}

class WindowOnRegistryTest : public ScriptedMachine {
 protected:
  WindowOnRegistryTest() {
    std::filesystem::create_directories(environment.userFolder);
    WriteFile(environment.HostPath("C:\\Courrier\\Folders.dbx"),
              DbxBuilder("12345678").Add({5, 0, "Spam", ""}).Build().bytes);
    addressBook.addresses = {"a@b.fr"};
    rules_.PutText("Software\\Microsoft\\WAB\\WAB4\\Wab File Name", "", "C:\\Livre\\a.wab");
    rules_.Order("000 001");
    rules_.PlainRule("000", "Travail", "000").Words("000", 12, {"alpha", "beta"});
    rules_.PlainRule("001", "Famille", "000").Words("000", 8, {"bises"});
  }
  void AddWord() {
    form_.RuleMenu("mnuMod").Choose(0);
    form_.txtBox[0].Type(u"gamma");
    form_.cmdAdd[0].Click();
  }
  void Save() { form_.cmdRecord[0].Click(); }
  static std::vector<std::wstring> Everything() { return DirectKey("Identities").Contents(); }
  static std::string Rule(const std::string& below) { return kTestMailKey + below; }

  PrivateRegistry registry_;
  Ports ports_ = On(*registry_.store);
  ProgramState state_;
  RuleSet rules_{*registry_.store};
  frmMorvelle form_{ports_, state_};
};

TEST_F(WindowOnRegistryTest, WithoutTheRightToWriteTheWordsWaitInTheWindow) {
  // What a save writes before all else.
  rules_.Remove(kTestMailKey, "Version");
  form_.Form_Load();
  AddWord();
  const auto before = Everything();
  for (const auto* key : {"000\\Criteria\\000", "000\\Criteria", "000"}) {
    const ReadOnlyKey closed(Rule(key));
    dialogs.Expect(kForbidden, kBoxStop, "Morvelle");
    Save();
    EXPECT_EQ(Everything(), before) << key;
  }
  EXPECT_THAT(form_.lstBox[0].Items(), ElementsAre("alpha", "beta", "gamma"));
  Save();
  EXPECT_EQ(Without(Everything(), before).size(), 2U) << "the words, and the version";
}

TEST_F(WindowOnRegistryTest, ARulesKeyWithoutTheRightToWriteIsSaidAtTheStart) {
  const ReadOnlyKey closed(kTestMailKey);
  const auto before = Everything();
  dialogs.Expect(kNoRulesKey, kBoxInformation, "Morvelle");
  dialogs.Expect(kCannotCreate, kBoxOk, "CreateKey");
  EXPECT_THROW(form_.Form_Load(), ProgramEnd);
  EXPECT_EQ(Everything(), before);
}

TEST_F(WindowOnRegistryTest, ARuleDeletedMeanwhileIsNotMadeAgainByTheSaveOfAnother) {
  form_.Form_Load();
  AddWord();
  ::SHDeleteKeyA(HKEY_CURRENT_USER, Rule("001").c_str());
  const auto before = Everything();
  dialogs.Expect(DamagedRule("001"));
  Save();
  const auto changes = Without(Everything(), before);
  EXPECT_EQ(changes.size(), 1U);
  EXPECT_EQ(Without(before, Everything()).size(), 1U);
}

TEST_F(WindowOnRegistryTest, TheOpenRuleDeletedMeanwhileIsSavedWhole) {
  form_.Form_Load();
  AddWord();
  const auto before = Everything();
  ::SHDeleteKeyA(HKEY_CURRENT_USER, Rule("000").c_str());
  Save();
  EXPECT_EQ(Without(Everything(), before).size(), 1U);
  EXPECT_EQ(Without(before, Everything()).size(), 1U);
  form_.RuleMenu("mnuMod").Choose(0);
  EXPECT_THAT(form_.lstBox[0].Items(), ElementsAre("alpha", "beta", "gamma"));
}

TEST_F(WindowOnRegistryTest, ValuesOfUnexpectedTypesAndSizesAreReadAndLeftAlone) {
  constexpr std::size_t kMegabyte = std::size_t{1} << 20U;
  const std::string wide{"F\0\xE9\0\0\x4Et\0o", 9};
  const DirectKey first(Rule("000"));
  first.Set(L"Name", REG_BINARY, "bytes");
  first.Set(L"Enabled", REG_DWORD, std::string("\1\0\0", 3));
  first.Set(L"Version", REG_SZ, std::string("0\0\0\0", 4));
  first.Set(L"Large", REG_BINARY, std::string(kMegabyte, 'x'));
  const DirectKey second(Rule("001"));
  // A string of an odd length, without its zero, with a letter that the code page lacks.
  second.Set(L"Name", REG_SZ, wide);
  second.Set(L"Enabled", REG_QWORD, "12345678");
  second.Set(L"Version", REG_DWORD, std::string(9, '\1'));
  DirectKey(Rule("001\\Criteria\\000")).Set(L"Value", REG_BINARY, std::string(kMegabyte, 'x'));
  dialogs.AllowAnyBox();
  form_.Form_Load();
  EXPECT_THAT(dialogs.shown, IsEmpty());
  EXPECT_THAT(form_.lstRules.Items(), ElementsAre("* 000 bytes", "  001 F\xE9?t"));
  const auto before = Everything();
  AddWord();
  Save();
  EXPECT_EQ(Without(Everything(), before).size(), 1U);
  EXPECT_EQ(Without(before, Everything()).size(), 1U);
}

TEST_F(WindowOnRegistryTest, AKeyThatCannotBeNamedIsNotSaidToBeDeleted) {
  HKEY unnameable = nullptr;
  const DirectKey rule(Rule("001"));
  ASSERT_EQ(::RegCreateKeyW(rule.Handle(), L"\u03A9", &unnameable), ERROR_SUCCESS);
  ::RegCloseKey(unnameable);
  const Messages messages(dialogs);
  const std::string label;
  DamageReport damage(messages, label);
  RegistryAccess registry(*registry_.store, messages, damage);
  EXPECT_EQ(registry.DeleteKey(Rule("001")), kStatusAccessDenied);
  EXPECT_EQ(registry_.store->RenameSubkeys(kTestMailKey, {{{"000", "001"}}}, {}),
            kStatusAccessDenied);
  EXPECT_EQ(registry.DeleteKey(Rule("000")), kStatusSuccess);
}

}  // namespace

}  // namespace morvelle
