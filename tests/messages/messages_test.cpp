#include "app/messages/messages.h"

#include <gtest/gtest.h>

#include <fstream>

#include "app/messages/text.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

TEST(MessageBoxes, AnEmptyTitleBecomesTheApplications) {
  ScriptedDialogs dialogs;
  const Messages messages(dialogs);
  dialogs.Expect("Bonjour", kBoxInformation, "Morvelle");
  dialogs.Expect("Bonjour", kBoxStop, "FindID");
  std::string title;
  EXPECT_EQ(messages.Msg("Bonjour", kBoxInformation, title), Button::Ok);
  EXPECT_EQ(title, "Morvelle") << "the caller sees it";
  title = "FindID";
  messages.Msg("Bonjour", kBoxStop, title);
}

TEST(MessageBoxes, AQuestionIsAnsweredByYesAlone) {
  ScriptedDialogs dialogs;
  const Messages messages(dialogs);
  dialogs.Expect("Oui ?", 292, "Morvelle", Button::Yes);
  dialogs.Expect("Oui ?", 292, "Morvelle", Button::No);
  EXPECT_TRUE(messages.TestOui("Oui ?"));
  EXPECT_FALSE(messages.TestOui("Oui ?"));
}

TEST(FileTests, AnEmptyFileIsThereAndReportedWhereAsked) {
  ScriptedDialogs dialogs;
  const Messages messages(dialogs);
  const TempFolder folder;
  const auto file = folder / u"été ć.roe";
  EXPECT_FALSE(messages.FileExists(file, true)) << "missing is no damage";
  WriteFile(file, "");
  EXPECT_TRUE(messages.FileExists(file));
  const auto shown = FromUtf16Lossy(file.u16string());
  EXPECT_TRUE(shown.ends_with("\xE9t\xE9 ?.roe"));
  dialogs.Expect("Fichier " + shown + std::string(" introuvable ou endommagé"_cp), kBoxOk,
                 "Morvelle");
  EXPECT_TRUE(messages.FileExists(file, true));
  WriteFile(file, "x");
  EXPECT_TRUE(messages.FileExists(file, true));
  EXPECT_FALSE(messages.FileExists(folder.Path()));
}

TEST(FileTests, ANameThatIsNoUtf8IsReportedAsItStands) {
  ScriptedDialogs dialogs;
  dialogs.Expect("Fichier /m/r\xE8gle.roe introuvable ou endommag\xE9");
  Messages(dialogs).FileDoesNotExist("/m/r\xE8gle.roe");
}

TEST(FileTests, FoldersAreFoundHiddenOnesIncluded) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / ".cache");
  WriteFile(folder / "fichier", "");
  EXPECT_TRUE(Messages::FolderExists(folder / ".cache"));
  EXPECT_FALSE(Messages::FolderExists(folder / "fichier"));
  EXPECT_FALSE(Messages::FolderExists(folder / "fichier" / "x"));
}

}  // namespace
}  // namespace morvelle
