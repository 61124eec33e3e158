#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::IsEmpty;

using RuleList = Window;

TEST_F(RuleList, ASavedRuleLeavesNothingInTheEditor) {
  rules.Order("000 001").PlainRule("000", "Une", "000").Words("000", 12, {"alpha"});
  rules.PlainRule("001", "Autre", "000").Words("000", 12, {"beta"});
  Start();
  Open(1);
  EXPECT_EQ(form->lstRules.ListIndex(), 1);
  Add(kSender, u"gamma");
  form->chkFilter[0].Click();
  EXPECT_TRUE(form->chkEnabled.Checked() && form->chkFilter[0].Checked());
  Save();
  EXPECT_EQ(Count(kSender) + Typed(kSender) + form->statBar.Panel(9), "");
  EXPECT_THAT(Words(kSender), IsEmpty());
  EXPECT_FALSE(form->chkEnabled.Checked() || form->chkFilter[0].Checked());
  EXPECT_THAT(SelectedActions(), IsEmpty());
  EXPECT_THAT(state.tables.WordCount, testing::Each(0));
}

TEST_F(RuleList, ARulesKeyMadeNowLeavesAUsableWindow) {
  std::filesystem::remove(FoldersFile());  // It is read when it is first needed.
  dialogs.Expect("La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp,
                 kBoxInformation, kAppTitle);
  Start();
  EXPECT_EQ(Which({"mnuImpOneRule", "mnuExpAllRules", "mnuChange", "mnuChangeOrder", "mnuAdd",
                   "mnuDelete", "mnuAddBook", "mnuOptions", "lstAct", "txtBox(0)", "fraMerge"}),
            "mnuImpOneRule mnuAdd mnuAddBook");
  EXPECT_TRUE(form->fraEdit[0].Visible());
  for (std::size_t slot = 1; slot < kSlotCount; ++slot) EXPECT_FALSE(form->fraEdit[slot].Visible());
  EXPECT_FALSE(form->Menu("mnuWhiteListK9").Visible());
  EXPECT_EQ(Stored(), "Version = 327680\n");
  EXPECT_EQ(store.commits, 1);
  rules.PlainRule("000", "Une", "000").Order("000");
  form->LoadRules();
  Open(0);
  for (int times = 0; times < 2; ++times) {
    if (times == 0) dialogs.Expect(kUnreadableFolders, kBoxStop, "Folders");
    dialogs.Expect(kUnreadableFolders);
    form->lstAct.ClickItem(0);
  }
}

TEST_F(RuleList, TheLoadRunsWithTheSettings) {
  const auto ini = environment.userFolder / "Morvelle.ini";
  WriteFile(ini, "Auto\r\nsilent");
  WriteFile(environment.programFile, "");
  environment.fileVersions[environment.programFile] = "1.2.3.0";
  StartWithTwoRules();
  EXPECT_EQ(form->form.Caption(), "Éditeur de règles Brisquet - Version 1.2.3.0"_cp);
  EXPECT_TRUE(Checked("mnuSilent"));
  EXPECT_TRUE(Checked("mnuAutoUpdateBook"));
  EXPECT_EQ(form->statBar.Panel(2), "0A1B2C3D");
  EXPECT_EQ(ReadFile(ini), "Auto\r\nsilent\r\n");
  const auto& settings = state.settings;
  EXPECT_EQ(environment.currentFolder, settings.AppPath);
  EXPECT_TRUE(settings.AppPath.filename().empty()) << "ends with one separator";
  Choose("mnuHelp");
  EXPECT_EQ(shell.helpFile, environment.userFolder / "Morvelle.chm");
  EXPECT_EQ(settings.UserFilesFolder, environment.userFolder / "Fichiers VLX");
  EXPECT_TRUE(std::filesystem::is_directory(settings.UserFilesFolder));
  bool shown = false;
  form->onAbout = [&] { shown = true; };
  Choose("mnuPropos");
  EXPECT_TRUE(shown);
  EXPECT_THAT(form->aboutBox.lblVersion.Caption(),
              testing::MatchesRegex("Version 1\\.2\\.3\\.0 du "
                                    "[0-9]{2}/[0-9]{2}/[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2}"));
}

}  // namespace
}  // namespace morvelle
