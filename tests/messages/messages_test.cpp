#include "app/messages/messages.h"

#include <gtest/gtest.h>

#include <fstream>

#include "app/messages/text.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

TEST(MessageBoxes, HaveATitleAndQuestionsAreAnsweredByYesAlone) {
  ScriptedDialogs dialogs;
  const Messages messages(dialogs);
  dialogs.Expect("Bonjour", kBoxInformation, "Morvelle");
  dialogs.Expect("Bonjour", kBoxStop, "FindID");
  std::string title;
  EXPECT_EQ(messages.Msg("Bonjour", kBoxInformation, title), Button::Ok);
  EXPECT_EQ(title, "Morvelle") << "the caller sees it";
  title = "FindID";
  messages.Msg("Bonjour", kBoxStop, title);
  for (const auto answer : {Button::Yes, Button::No}) {
    dialogs.Expect("Oui ?", 292, "Morvelle", answer);
    EXPECT_EQ(messages.TestOui("Oui ?"), answer == Button::Yes);
  }
}

TEST(BoxSeriesTest, FiveBoxesAreShownAndTheRestIsListed) {
  for (const int count : {5, 6, 25, 26, 27}) {
    ScriptedDialogs dialogs;
    const Messages messages(dialogs);
    BoxSeries boxes(messages);
    std::string list = "Reste :";
    for (int k = 0; k < count; ++k) {
      const auto name = std::to_string(k);
      if (k < 5) dialogs.Expect("Non " + name);
      if (k >= 5 && k < 25) list += "\r" + name;
      boxes.Say("Non " + name, name);
    }
    if (count == 26) list += "\r… et 1 autre"_cp;
    if (count == 27) list += "\r… et 2 autres"_cp;
    if (count > 5) dialogs.Expect(list);
    boxes.Finish("Reste :");
    boxes.Finish("Reste :");
  }
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
  dialogs.Expect("Fichier /m/r\xE8gle.roe introuvable ou endommag\xE9");
  messages.FileDoesNotExist("/m/r\xE8gle.roe");  // A name that is no UTF-8.
}

}  // namespace
}  // namespace morvelle
