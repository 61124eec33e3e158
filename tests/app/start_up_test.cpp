// The first steps of a start, on files of a machine that are not what they should be.

#include "app/start_up.h"

#include <functional>

#include "app/messages/errors.h"
#include "platform/registry_regfile.h"
#include "tests/core/rule_model.h"
#include "tests/support/fake_machine.h"

namespace morvelle {
namespace {

constexpr auto kMade = "La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp;

/// Boxes in whose time another program works.
struct MeddledDialogs : ScriptedDialogs {
  std::function<void()> meanwhile;
  Button ShowMessage(const std::string& prompt, int style, const std::string& title) override {
    if (meanwhile) std::exchange(meanwhile, nullptr)();
    return ScriptedDialogs::ShowMessage(prompt, style, title);
  }
};

class RulesKeyMade : public testing::Test {
 protected:
  /// The file as another program leaves it while the box about the missing key stands open.
  void Start(const std::string& others) {
    std::filesystem::remove_all(folder / "a.reg");
    folder.Write("a.reg", kIdentity);
    opened = {};
    opened = OpenRegFile(folder / "a.reg", MakeHostFiles(), std::chrono::system_clock::now);
    dialogs.meanwhile = [this, others] { folder.Write("a.reg", others); };
    dialogs.Expect(kMade, kBoxInformation, "Morvelle");
  }
  bool FindID() {
    DamageReport damage(messages, label);
    RegistryAccess registry(*opened.store, messages, damage);
    return IdentityFinder(registry, environment, display, identity).FindID();
  }

  static inline const std::string kIdentity =
      "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Identities]\r\n\"Last User ID\"=\"" +
      std::string(kTestIdentity) + "\"\r\n\r\n[HKEY_CURRENT_USER\\" +
      kTestSettingsKey.substr(0, kTestSettingsKey.size() - 1) +
      "]\r\n\"Store Root\"=\"C:\\\\Courrier\"\r\n\r\n";
  static inline const std::string kRules =
      "[HKEY_CURRENT_USER\\" + kTestMailKey.substr(0, kTestMailKey.size() - 1) + "]\r\n";
  FileFolder folder;
  OpenedStore opened;
  MeddledDialogs dialogs;
  Messages messages{dialogs};
  std::string label;
  FakeEnvironment environment{"/nulle/part"};
  RecordedDisplay display;
  Identity identity;
};

TEST_F(RulesKeyMade, StartsOverWhereAnotherProgramWroteTheFileMeanwhile) {
  const auto theirs = kIdentity + kRules + "\"Order\"=\"000\"\r\n\r\n";
  Start(theirs);
  EXPECT_TRUE(FindID()) << "the rules of the other program are there";
  EXPECT_EQ(folder.Read("a.reg"), theirs);

  Start(kIdentity + "[HKEY_CURRENT_USER\\Autre]\r\n\r\n");
  dialogs.Expect(kMade);
  EXPECT_FALSE(FindID());
  EXPECT_NE(folder.Read("a.reg").find("Autre"), std::string::npos);
  EXPECT_NE(folder.Read("a.reg").find("\"Version\"=dword:00050000"), std::string::npos);

  for (const auto& bad : {theirs + "\"x", std::string("rien")}) {
    Start(bad);
    if (bad == "rien") {
      dialogs.AllowAnyBox();
    } else {
      dialogs.Expect(
          "Ce fichier semble incomplet\u00A0: sa fin manque peut-être.\r"
          "L'ouvrir quand même\u00A0?"_cp,
          Button::No);
    }
    EXPECT_THROW(FindID(), ProgramEnd);
    EXPECT_EQ(folder.Read("a.reg"), bad);
  }
  EXPECT_EQ(dialogs.shown.back().style, kBoxStop);
}

TEST_F(RulesKeyMade, AnExportWithoutTheIdentitySaysWhatToExport) {
  folder.Write("a.reg", "REGEDIT4\r\n\r\n" + kRules + "\r\n");
  opened = OpenRegFile(folder / "a.reg", MakeHostFiles(), std::chrono::system_clock::now);
  dialogs.Expect("Identité introuvable"_cp);
  dialogs.Expect(
      "Ce fichier ne contient pas l'identité à laquelle appartiennent les règles.\rDans l'éditeur "
      "du registre, exportez la clef HKEY_CURRENT_USER\\Identities tout entière."_cp,
      kBoxExclamation, "Morvelle");
  dialogs.Expect(
      "Il n'existe aucune identité ou le registre est endommagé.\r\rLe programme va être "
      "interrompu !"_cp);
  EXPECT_THROW(FindID(), ProgramEnd);
}

struct StartUpTest : ScriptedMachine, StartUpWindow {
  StartUpTest() { RuleSet(store).Order("000"); }
  StatusPanels& Panels() override { return display; }
  void LoadRules() override { ++loads; }
  void TickAutoUpdateBook(bool) override {}
  void EnableWab(bool) override {}
  void ShowWhiteListK9(bool) override {}
  void FinishStart() override {}

  FakeRegistry store;
  RecordedDisplay display;
  Ports ports = On(store);
  ProgramState state;
  Program program{ports, state};
  StartUp start{ports, state, program};
  int loads = 0;
};

TEST_F(StartUpTest, WhatCannotBeMadeInItsFolderIsSaidAndTheStartGoesOn) {
  const auto own = environment.userFolder;
  std::filesystem::create_directories(own / "Morvelle.ini");
  WriteFile(own / "Fichiers VLX", "");
  dialogs.Expect("Permission refusée"_cp, kBoxOk, "WriteSettings");
  dialogs.Expect("Ce fichier existe déjà"_cp, kBoxOk, "InitVLX");
  dialogs.AllowAnyBox();
  start.InitVLX(*this);
  EXPECT_EQ(loads, 1);
  EXPECT_EQ(ReadFile(own / "Fichiers VLX"), "");
}

}  // namespace
}  // namespace morvelle
