#include <wx/html/helpfrm.h>
#include <wx/hyperlink.h>
#include <wx/stattext.h>

#include "platform/system_shell.h"
#include "tests/view/window_fixture.h"

namespace morvelle {
namespace {

TEST_F(WindowTest, TheAboutBoxShowsItsTextsAndOpensItsLink) {
  const std::string address = "http://exemple.fr/?a=1&b=2";
  for (const bool hasAddress : {false, true}) {
    form.aboutBox.lblUpDateLine.SetVisible(form.aboutBox.lblUpDateLine.Visible() || hasAddress);
    form.aboutBox.lblUpDate.SetVisible(form.aboutBox.lblUpDate.Visible() || hasAddress);
    if (hasAddress) form.aboutBox.lblUpDate.SetCaption(address);
    driver.Answer("OK", [&](wxDialog& box) {
      EXPECT_EQ(box.GetTitle(), wxString::FromUTF8("À propos de Morvelle"));
      const auto disclaimer = wxWindow::FindWindowByName("lblDisclaimer", &box)->GetLabel();
      EXPECT_TRUE(disclaimer.Contains("Licence-kWab.txt")) << disclaimer;
      auto* link = wxWindow::FindWindowByName("lblUpDate", &box);
      ASSERT_EQ(link != nullptr, hasAddress);
      EXPECT_EQ(wxWindow::FindWindowByName("lblUpDateLine", &box) != nullptr, hasAddress);
      if (!hasAddress) return;
      wxHyperlinkEvent clicked(link, link->GetId(), "");
      link->ProcessWindowEvent(clicked);
    });
    driver.Choose("mnuPropos");
    EXPECT_EQ(driver.PendingAnswers(), 0U);
  }
  EXPECT_EQ(shell.links, std::vector<std::string>{address});
}

TEST_F(WindowTest, F1AsksForTheManual) {
  driver.Press(WXK_F1);
  EXPECT_TRUE(WindowDriver::WaitUntil([&] { return !shell.helpPages.empty(); }));
}

struct HelpWindow : testing::Test {
  HelpWindow() { environment.programFile = folder / "bin" / "morvelle"; }
  /// The help window that is open; null when none is.
  static wxHtmlHelpFrame* Shown() {
    for (auto* window : wxTopLevelWindows) {
      if (auto* frame = dynamic_cast<wxHtmlHelpFrame*>(window)) return frame;
    }
    return nullptr;
  }
  static std::string Page() {
    auto* frame = Shown();
    if (frame == nullptr) return "none";
    return std::string(frame->GetHelpWindow()->GetHtmlWindow()->GetOpenedPageTitle().utf8_str());
  }

  TempFolder folder;
  FakeEnvironment environment{folder.Path()};
  ScriptedDialogs dialogs;
};

TEST_F(HelpWindow, OpensTheManualAtAPage) {
  const auto manual = folder / "share" / "morvelle" / "aide";
  WriteFile(manual / "morvelle.hhp",
            "[OPTIONS]\nContents file=m.hhc\nDefault topic=accueil.htm\nTitle=Aide\n"
            "Charset=windows-1252\n[FILES]\naccueil.htm\nregles.htm\n");
  WriteFile(manual / "m.hhc",
            "<ul><li><object type=\"text/sitemap\"><param name=\"Name\" value=\"Accueil\">"
            "<param name=\"Local\" value=\"accueil.htm\"></object></ul>");
  WriteFile(manual / "accueil.htm",
            "<html><head><title>Accueil</title></head><body>a</body></html>");
  WriteFile(manual / "regles.htm", "<html><head><title>Mots</title></head><body>r</body></html>");
  auto shell = MakeShell(dialogs, environment);
  shell->ShowHelp({}, "regles.htm");
  WindowDriver::Settle();
  EXPECT_EQ(Page(), "Mots");
  shell->ShowHelp({}, "");
  WindowDriver::Settle();
  EXPECT_EQ(Page(), "Accueil");
  shell.reset();
  WindowDriver::Settle();
  EXPECT_EQ(Shown(), nullptr);
}

TEST_F(HelpWindow, AManualOrFolderThatIsMissingIsTold) {
  const auto shell = MakeShell(dialogs, environment);
  dialogs.Expect("Fichier " + (folder / "share/morvelle/aide/morvelle.hhp").string() +
                 " introuvable ou endommag\xE9");
  shell->ShowHelp({}, "");
  dialogs.Expect("Fichier " + (folder / "absent").string() + " introuvable ou endommag\xE9");
  shell->OpenFolder(folder / "absent");
  EXPECT_EQ(Shown(), nullptr);
}

TEST_F(HelpWindow, TheDesktopOpensOnlyFoldersAndWebPages) {
  const auto said = folder / "dit";
  const auto file = "'" + said.string() + "'";
  const auto opener = folder / "xdg-open";
  WriteFile(opener, "#!/bin/sh\necho \"$*\" >" + file + ".neu\nmv " + file + ".neu " + file + "\n");
  std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
  const std::string path = ::getenv("PATH");
  const auto place = std::filesystem::current_path();
  ::setenv("PATH", (folder.Path().string() + ":" + path).c_str(), 1);
  const auto shell = MakeShell(dialogs, environment);
  const auto told = [&] {
    EXPECT_TRUE(WindowDriver::WaitUntil([&] { return std::filesystem::exists(said); }));
    const auto text = ReadFile(said);
    std::filesystem::remove(said);
    return text;
  };
  std::filesystem::create_directory(folder / "-a; b");
  std::filesystem::current_path(folder.Path());
  shell->OpenFolder("-a; b");
  EXPECT_EQ(told(), (folder / "-a; b\n").string());
  shell->OpenLink("https://a.fr/$(b)?c=1&d");
  EXPECT_EQ(told(), "https://a.fr/$(b)?c=1&d\n");
  dialogs.Expect("Fichier xdg-open introuvable ou endommag\xE9");
  shell->OpenFolder("xdg-open");
  for (const std::string address : {"file:///a", "http://a b", "http://a\"b", "-h"}) {
    dialogs.Expect("Aucun navigateur n'a pu ouvrir " + address);
    shell->OpenLink(address);
  }
  std::filesystem::current_path(place);
  ::setenv("PATH", path.c_str(), 1);
}

}  // namespace
}  // namespace morvelle
