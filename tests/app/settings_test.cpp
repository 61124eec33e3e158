#include "app/settings.h"

#include <gtest/gtest.h>

#include "app/messages/text.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() { settings.AppPath = folder.Path() / ""; }
  void Read(std::string_view content) {
    settings.BookMode.clear();
    WriteFile(ini, content);
    file.Read();
  }

  TempFolder folder;
  std::filesystem::path ini = folder / "Morvelle.ini";
  ScriptedDialogs dialogs;
  Messages messages{dialogs};
  Settings settings;
  SettingsFile file{messages, settings};
};

TEST_F(SettingsTest, AMissingFileLeavesTheDefaultsAndIsMade) {
  file.Read();
  EXPECT_FALSE(settings.BookIsAutomatic());
  EXPECT_FALSE(settings.IsQuiet());
  file.Write();
  EXPECT_EQ(ReadFile(ini), "\r\n\r\n");
}

TEST_F(SettingsTest, LinesMayBeMissingOrEndOtherwise) {
  struct Case {
    std::string_view content, book, quiet;
  };
  for (const auto& [content, book, quiet] :
       {Case{"Auto\r\nSilent\r\n", "Auto", "Silent"}, Case{"Auto\nSilent", "Auto", "Silent"},
        Case{"Auto\rSilent\r", "Auto", "Silent"}, Case{"Auto", "Auto", ""},
        Case{"\r\nSilent\r\nplus", "", "Silent"}, Case{"", "", ""},
        Case{"Man\xFCl\r\n x \r\n", "Man\xFCl", " x "}}) {
    settings.QuietMode = "Silent";
    Read(content);
    EXPECT_EQ(settings.BookMode, book) << content;
    EXPECT_EQ(settings.QuietMode, quiet) << content;
    file.Write();
    EXPECT_EQ(ReadFile(ini), std::string(book) + "\r\n" + std::string(quiet) + "\r\n");
  }
}

TEST_F(SettingsTest, LetterCaseCountsForTheBookAndNotForSilence) {
  Read("auto\r\nSILENT\r\n");
  EXPECT_FALSE(settings.BookIsAutomatic());
  EXPECT_TRUE(settings.IsQuiet());
  Read("Auto\r\nsilent\r\n");
  EXPECT_TRUE(settings.BookIsAutomatic());
  EXPECT_TRUE(settings.IsQuiet());
  Read("Auto \r\nSilent \r\n");
  EXPECT_FALSE(settings.BookIsAutomatic());
  EXPECT_FALSE(settings.IsQuiet());
}

TEST_F(SettingsTest, AFileThatCannotBeWrittenIsSaidAndTheProgramGoesOn) {
  settings.AppPath = folder / "absent" / "";
  dialogs.Expect("Permission refusée"_cp, kBoxOk, "WriteSettings");
  file.Read();
  file.Write();
}

}  // namespace
}  // namespace morvelle
