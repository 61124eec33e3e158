#include "app/settings.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/host_files.h"
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
    bool automatic, silent;
  };
  const Case cases[] = {{"Auto\r\nSilent\r\n", "Auto", "Silent", true, true},
                        {"Auto\nsilent", "Auto", "silent", true, true},
                        {"auto\rSILENT\r", "auto", "SILENT", false, true},
                        {"Auto", "Auto", "", true, false},
                        {"\r\nSilent\r\nplus", "", "Silent", false, true},
                        {"", "", "", false, false},
                        {"Auto \r\n Silent \r\n", "Auto ", " Silent ", false, false}};
  for (const auto& [content, book, quiet, automatic, silent] : cases) {
    settings.QuietMode = "Silent";
    Read(content);
    EXPECT_EQ(settings.BookMode, book) << content;
    EXPECT_EQ(settings.QuietMode, quiet) << content;
    EXPECT_EQ(settings.BookIsAutomatic(), automatic) << "letter case counts for the book alone";
    EXPECT_EQ(settings.IsQuiet(), silent) << content;
    file.Write();
    EXPECT_EQ(ReadFile(ini), std::string(book) + "\r\n" + std::string(quiet) + "\r\n");
  }
}

TEST_F(SettingsTest, AFileThatCannotBeWrittenIsSaidAndTheProgramGoesOn) {
  settings.AppPath = folder / "absent" / "";
  dialogs.Expect("Chemin d'accès introuvable"_cp, kBoxOk, "WriteSettings");
  file.Read();
  file.Write();
}

// A reader that has the file open goes on reading what was there: the old content is never cut.
TEST_F(SettingsTest, TheFileIsReplacedAndNeverCut) {
  Read("Auto\r\nSilent\r\n");
  std::filesystem::create_hard_link(ini, folder / "before.ini");
  std::filesystem::permissions(ini, std::filesystem::perms{0600});
  settings.QuietMode = "";
  file.Write();
  EXPECT_EQ(ReadFile(ini), "Auto\r\n\r\n");
  EXPECT_EQ(ReadFile(folder / "before.ini"), "Auto\r\nSilent\r\n");
  EXPECT_EQ(std::filesystem::status(ini).permissions(), std::filesystem::perms{0600});
}

TEST_F(SettingsTest, AFileThatMayNotBeWrittenStays) {
  Read("Auto\r\nSilent\r\n");
  std::filesystem::permissions(ini, std::filesystem::perms{0400});
  settings.QuietMode = "";
  dialogs.Expect("Permission refusée"_cp, kBoxOk, "WriteSettings");
  file.Write();
  EXPECT_EQ(ReadFile(ini), "Auto\r\nSilent\r\n");
  std::filesystem::resize_file(ini, kSmallFileLimit + 1);
  dialogs.Expect(
      FileFailure(ini, "ne peut être ouvert"_cp, "il dépasse la taille permise, 1 Mo"_cp));
  EXPECT_THROW(file.Read(), ProgramEnd);
  std::filesystem::permissions(ini, std::filesystem::perms::none);
  dialogs.Expect("Permission refusée"_cp, kBoxOk, "ReadSettings");
  const bool administrator = ::seteuid(65534) == 0;  // Who may read everything.
  EXPECT_THROW(file.Read(), ProgramEnd) << "taken for empty, it would be written over";
  EXPECT_TRUE(!administrator || ::seteuid(0) == 0);
}

}  // namespace
}  // namespace morvelle
