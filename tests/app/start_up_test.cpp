#include "app/start_up.h"

#include <gtest/gtest.h>

#include "app/messages/errors.h"
#include "tests/support/fake_environment.h"
#include "tests/support/rule_set.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

/// What the start shows, in its order.
class RecordedWindow : public StartUpWindow, private StatusPanels {
 public:
  std::vector<std::string> steps;
  StatusPanels& Panels() override { return *this; }
  void LoadRules() override { steps.emplace_back("rules"); }
  void TickAutoUpdateBook(bool ticked) override {
    steps.emplace_back(ticked ? "book ticked" : "book");
  }
  void FinishStart() override { steps.emplace_back("end"); }

 private:
  void ShowPanel(int number, std::string_view) override {
    if (number == 1) steps.emplace_back("identity");
  }
};

class StartUpTest : public testing::Test {
 protected:
  StartUpTest() {
    std::filesystem::create_directories(environment.userFolder);
    environment.fileVersions[environment.programFile] = "1.2.3.0";
  }
  void InitVLX() { StartUp(ports, state, program).InitVLX(window); }

  TempFolder folder;
  FakeRegistry store;
  ScriptedDialogs dialogs;
  FakeEnvironment environment{folder.Path()};
  Ports ports{store, dialogs, environment};
  ProgramState state;
  Program program{ports, state};
  RecordedWindow window;
};

TEST_F(StartUpTest, RunsItsStepsInOrder) {
  RuleSet(store).Order("");
  WriteFile(environment.userFolder / "Morvelle.ini", "Auto");
  dialogs.AllowAnyBox();  // There is no Folders.dbx.
  InitVLX();
  EXPECT_EQ(window.steps, (std::vector<std::string>{"identity", "rules", "book ticked", "end"}));
  const auto& settings = state.settings;
  EXPECT_EQ(settings.VersionText, "Version 1.2.3.0");
  EXPECT_EQ(environment.currentFolder, settings.AppPath);
  EXPECT_TRUE(settings.AppPath.filename().empty()) << "ends with one separator";
  EXPECT_EQ(settings.helpFile, environment.userFolder / "Morvelle.chm");
  EXPECT_EQ(settings.UserFilesFolder, environment.userFolder / "Fichiers VLX");
  EXPECT_TRUE(std::filesystem::is_directory(settings.UserFilesFolder));
  EXPECT_EQ(ReadFile(environment.userFolder / "Morvelle.ini"), "Auto\r\n\r\n");
  EXPECT_EQ(state.tables.SlotType, (std::array<std::string, 4>{"12", "8", "9", "22"}));
  const auto shown = dialogs.shown.size();
  EXPECT_EQ(shown, 1U) << "the folder store was looked for, once";
  EXPECT_FALSE(IsDeletedItems(program.deletedItems.DeletedItems()));
  EXPECT_EQ(dialogs.shown.size(), shown) << "and is not read again";
}

TEST_F(StartUpTest, EndsEarlyWhereTheRulesKeyHadToBeMade) {
  const RuleSet set(store);
  dialogs.Expect("La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp);
  InitVLX();
  EXPECT_EQ(window.steps, std::vector<std::string>{"identity"});
  EXPECT_EQ(state.identity.MailKey, kTestMailKey);
  EXPECT_EQ(state.tables.SlotType[3], "22");
  dialogs.ExpectAllShown();
  dialogs.AllowAnyBox();
  program.deletedItems.DeletedItems();
  EXPECT_EQ(dialogs.shown.size(), 2U) << "the folder store is read when it is first needed";
}

TEST_F(StartUpTest, WithoutIdentityNothingIsLoaded) {
  dialogs.Expect(
      "Il n'existe aucune identité ou le registre est endommagé.\r\r"
      "Le programme va être interrompu !"_cp,
      kBoxStop, "FindID");
  EXPECT_THROW(InitVLX(), ProgramEnd);
  EXPECT_TRUE(window.steps.empty());
}

}  // namespace
}  // namespace morvelle
