#include "view/main_window.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/listbox.h>
#include <wx/radiobut.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>
#include <wx/textctrl.h>

#include "tests/view/window_fixture.h"
#include "view/wx_text.h"

namespace morvelle {
namespace {

class MainWindowTest : public WindowTest {
 protected:
  /// Opens the first rule, as "Modifier le contenu d'une règle" does.
  void OpenFirstRule() {
    driver.ChooseRule("mnuMod", 0);
    ASSERT_TRUE(form.txtBox[0].Reachable());
  }
  wxTextCtrl& Text(std::string_view name) { return driver.FindAs<wxTextCtrl>(name); }
  wxListBox& List(std::string_view name) { return driver.FindAs<wxListBox>(name); }
  using Words = std::vector<std::string>;
};

TEST_F(MainWindowTest, EveryControlHasItsWidgetAndItsCaption) {
  for (const char* name :
       {"fraOrderRules", "lstRules",       "picUp",          "picDown",    "cmdCancelOrder",
        "fraAct",        "chkEnabled",     "lstAct",         "lblActNote", "fraOptions",
        "fraPreFilters", "lblFiltersNote", "cmdFiltres",     "fraMerge",   "lblCrit",
        "lstCrit",       "txtMerge",       "cmdFileToMerge", "statBar",    "imgOE"}) {
    EXPECT_NO_THROW((void)driver.Find(name)) << name;
  }
  for (int slot = 0; slot < 4; ++slot) {
    for (const char* name :
         {"optCriteria", "fraEdit", "lblAbr", "txtBox", "txtCop", "fraWord", "lstBox", "lblNb",
          "cmdAdd", "cmdDel", "cmdChange", "cmdRestore", "fraRule", "cmdRecord", "cmdCancelRule"}) {
      const auto element = std::string(name) + "(" + std::to_string(slot) + ")";
      const auto* control = form.Find(element);
      ASSERT_NE(control, nullptr) << element;
      if (control->Caption().empty()) continue;
      EXPECT_EQ(driver.Find(element).GetLabel(), ToWx(control->Caption())) << element;
    }
  }
}

TEST_F(MainWindowTest, AWordIsTypedAndAddedWithEnterAndTheFocusStays) {
  OpenFirstRule();
  EXPECT_EQ(LinesOf(List("lstBox(0)")), (Words{"alpha", "beta"}));
  driver.Click("txtBox(0)");
  driver.Type("gamma");
  EXPECT_EQ(Text("txtCop(0)").GetValue(), "'gamma'");
  EXPECT_TRUE(driver.Find("cmdAdd(0)").IsEnabled());
  EXPECT_FALSE(driver.Find("cmdDel(0)").IsEnabled());
  EXPECT_THROW(driver.Click("cmdDel(0)"), std::runtime_error);
  driver.Press(WXK_RETURN);
  EXPECT_EQ(LinesOf(List("lstBox(0)")), (Words{"alpha", "beta", "gamma"}));
  EXPECT_EQ(Text("txtBox(0)").GetValue(), "");
  EXPECT_EQ(driver.Find("lblNb(0)").GetLabel(), "3 mots");
  EXPECT_TRUE(driver.Find("cmdRecord(0)").IsEnabled());
  EXPECT_TRUE(Text("txtBox(0)").HasFocus());
  driver.Type("delta");
  driver.Click("cmdAdd(0)");
  EXPECT_EQ(form.lstBox[0].Items().back(), "delta");
}

TEST_F(MainWindowTest, AWordIsClickedTwiceAndDeletedByKey) {
  OpenFirstRule();
  driver.ClickLine("lstBox(0)", 1);
  EXPECT_EQ(Text("txtBox(0)").GetValue(), "beta");
  EXPECT_TRUE(driver.Find("cmdDel(0)").IsEnabled());
  // The current line clicked again is a click all the same.
  driver.Click("txtBox(0)");
  driver.Type("x");
  EXPECT_EQ(Text("txtBox(0)").GetValue(), "betax");
  driver.ClickLine("lstBox(0)", 1);
  EXPECT_EQ(Text("txtBox(0)").GetValue(), "beta");
  driver.Press(WXK_DELETE);
  EXPECT_EQ(LinesOf(List("lstBox(0)")), Words{"alpha"});
  EXPECT_EQ(List("lstBox(0)").GetSelection(), wxNOT_FOUND);
  EXPECT_TRUE(Text("txtBox(0)").HasFocus()) << "deleting gives the focus to the text box";
}

TEST_F(MainWindowTest, WhatAWordCannotHoldIsRefused) {
  OpenFirstRule();
  driver.Click("txtBox(0)");
  driver.Type("abcd");
  driver.Press(WXK_LEFT);
  driver.Press(WXK_LEFT);
  for (const char* refused : {"Ж", "une\ndeux"}) {
    wxString behind;
    driver.Answer("OK", [&](wxDialog&) { behind = Text("txtBox(0)").GetValue(); });
    driver.Paste(wxString::FromUTF8(refused));
    EXPECT_TRUE(WindowDriver::WaitUntil([&] { return driver.PendingAnswers() == 0; }));
    driver.Settle();
    EXPECT_EQ(behind, "abcd");
    EXPECT_EQ(Text("txtBox(0)").GetValue(), "abcd");
    EXPECT_EQ(Text("txtBox(0)").GetInsertionPoint(), 2);
    EXPECT_EQ(form.txtBox[0].Text(), "abcd");
  }
  driver.Paste(wxString::FromUTF8("œ€"));
  EXPECT_EQ(form.txtBox[0].Text(), "abœ€cd"_cp);
}

TEST_F(MainWindowTest, OneEditorIsShownAtATimeInTheSamePlace) {
  OpenFirstRule();
  const auto place = driver.Find("fraEdit(0)").GetRect();
  const auto least = window->GetMinSize();
  for (int slot = 3; slot >= 0; --slot) {
    const auto element = "(" + std::to_string(slot) + ")";
    driver.Click("optCriteria" + element);
    EXPECT_TRUE(form.optCriteria[static_cast<std::size_t>(slot)].Chosen());
    EXPECT_TRUE(driver.FindAs<wxRadioButton>("optCriteria" + element).GetValue());
    for (int other = 0; other < 4; ++other) {
      EXPECT_EQ(driver.Find("fraEdit(" + std::to_string(other) + ")").IsShown(), other == slot);
    }
    EXPECT_EQ(driver.Find("fraEdit" + element).GetRect(), place);
  }
  EXPECT_EQ(window->GetMinSize(), least);
}

TEST_F(MainWindowTest, AnActionIsChosenAndChosenAgain) {
  OpenFirstRule();
  EXPECT_TRUE(List("lstAct").IsSelected(1)) << "delete from the server, as stored";
  form.lstAct.SetSelected(2, true);
  window->ShowChanges();
  EXPECT_TRUE(List("lstAct").IsSelected(1) && List("lstAct").IsSelected(2));
  driver.ClickLine("lstAct", 3);
  for (int line = 0; line < 4; ++line) {
    EXPECT_EQ(List("lstAct").IsSelected(line), line == 3) << line;
    EXPECT_EQ(form.lstAct.Selected(line), line == 3) << line;
  }
  driver.ClickLine("lstAct", 3);
  EXPECT_TRUE(List("lstAct").IsSelected(3)) << "an action is always chosen";
}

TEST_F(MainWindowTest, KeysMoveTheCaretOfTheActionsAndSpaceOrEnterChooses) {
  OpenFirstRule();
  const auto selected = [&] {
    std::string lines;
    for (int line = 0; line < 4; ++line) {
      EXPECT_EQ(form.lstAct.Selected(line), List("lstAct").IsSelected(line)) << line;
      if (List("lstAct").IsSelected(line)) lines += std::to_string(line);
    }
    return lines;
  };
  // As the tabulator gives it the focus: at the line that is selected.
  List("lstAct").SetFocus();
  driver.Settle();
  driver.Press(WXK_RETURN);
  driver.Press(WXK_SPACE);
  EXPECT_EQ(selected(), "1");
  for (const int key : {WXK_DOWN, WXK_DOWN, WXK_UP, WXK_UP, WXK_UP, WXK_UP, WXK_DOWN, WXK_DOWN,
                        WXK_HOME, WXK_END, WXK_PAGEUP, WXK_PAGEDOWN, WXK_UP}) {
    for (const int modifiers : {wxMOD_NONE, wxMOD_SHIFT}) {
      driver.Press(key, modifiers);
      EXPECT_EQ(selected(), "1") << key;
    }
  }
  driver.Press('A', wxMOD_CONTROL);
  EXPECT_EQ(selected(), "1");
  EXPECT_FALSE(form.Menu("mnuRegContent").Enabled());
  struct Case {
    std::vector<int> keys;
    const char* selected;
  };
  const Case cases[] = {{{WXK_HOME, WXK_DOWN, WXK_DOWN, WXK_SPACE}, "2"},
                        {{WXK_SPACE}, "2"},
                        {{WXK_DOWN, WXK_RETURN}, "3"},
                        {{WXK_RETURN}, "3"},
                        {{WXK_UP, WXK_UP, WXK_SPACE}, "1"},
                        {{WXK_DOWN, WXK_UP, WXK_RETURN}, "1"},
                        {{WXK_DOWN, WXK_UP, WXK_UP, WXK_DOWN, WXK_DOWN, WXK_SPACE}, "2"}};
  for (const auto& [keys, chosen] : cases) {
    for (const int key : keys) driver.Press(key);
    EXPECT_EQ(selected(), chosen);
  }
  EXPECT_TRUE(form.Menu("mnuRegContent").Enabled());
  // Of several that are shown, looking at one leaves them all.
  const auto show = [&](int line, bool isSelected) {
    const auto handler = std::exchange(form.lstAct.onClick, nullptr);
    form.lstAct.SetSelected(line, isSelected);
    form.lstAct.onClick = handler;
    window->ShowChanges();
  };
  show(0, true);
  show(3, true);
  const auto shown = selected();
  EXPECT_EQ(shown, "023");
  for (const int key : {WXK_UP, WXK_UP, WXK_UP, WXK_DOWN, WXK_DOWN, WXK_DOWN}) {
    driver.Press(key);
    EXPECT_EQ(selected(), shown);
  }
  driver.Press(WXK_SPACE);
  EXPECT_EQ(selected(), "3");
  // Nothing is shown of a rule whose actions the list does not know.
  show(3, false);
  for (const int key : {WXK_UP, WXK_UP}) {
    driver.Press(key);
    EXPECT_EQ(selected(), "");
  }
  driver.Press(WXK_RETURN);
  EXPECT_EQ(selected(), "1");
}

TEST_F(MainWindowTest, TheCheckBoxShowsWhatTheFormMadeOfTheClick) {
  OpenFirstRule();
  auto& box = driver.FindAs<wxCheckBox>("chkEnabled");
  EXPECT_TRUE(box.GetValue());
  driver.Click("chkEnabled");
  EXPECT_EQ(box.GetValue(), form.chkEnabled.Checked());
  EXPECT_FALSE(form.chkEnabled.Checked());
}

TEST_F(MainWindowTest, RulesMoveByKeyOnlyWhileTheListHasTheFocus) {
  std::string moves;
  form.picUp.onClick = [&] { moves += 'u'; };
  form.picDown.onClick = [&] { moves += 'd'; };
  form.OrderEnable(true);
  form.RulesEnable(true);
  window->ShowChanges();
  driver.ClickLine("lstRules", 1);
  driver.Press(WXK_UP, wxMOD_ALT);
  driver.Press(WXK_DOWN, wxMOD_ALT);
  EXPECT_EQ(moves, "ud");
  EXPECT_EQ(List("lstRules").GetSelection(), form.lstRules.ListIndex());
  driver.Click("picUp");
  EXPECT_EQ(moves, "udu");
  driver.Click("txtBox(0)");
  driver.Press(WXK_UP, wxMOD_ALT);
  EXPECT_EQ(moves, "udu");
}

TEST_F(MainWindowTest, ADraggedRuleMovesAsByTheArrows) {
  driver.Choose("mnuChangeOrder");
  EXPECT_TRUE(List("lstRules").HasFocus());
  const auto first = form.lstRules.Item(0);
  const auto second = form.lstRules.Item(1);
  const auto third = form.lstRules.Item(2);
  driver.DragLine("lstRules", 0, 2);
  EXPECT_EQ(form.lstRules.Items(), (Words{second, third, first}));
  EXPECT_EQ(form.lstRules.ListIndex(), 2);
  EXPECT_EQ(List("lstRules").GetSelection(), 2);
  EXPECT_TRUE(form.Menu("mnuRegOrder").Enabled());
  driver.DragLine("lstRules", 2, 0, -60);
  EXPECT_EQ(form.lstRules.Items(), (Words{first, second, third})) << "beyond the edge";
  EXPECT_EQ(form.lstRules.ListIndex(), 0);
  driver.ClickLine("lstRules", 1);
  EXPECT_EQ(form.lstRules.Items(), (Words{first, second, third})) << "a click is no drag";
  EXPECT_EQ(form.lstRules.ListIndex(), 1);
}

TEST_F(MainWindowTest, TheMergePanelTakesThePlaceOfThePrefilters) {
  const auto place = driver.Find("fraPreFilters").GetRect();
  form.EnableMerge(true);
  window->ShowChanges();
  EXPECT_TRUE(driver.Find("fraMerge").IsShown());
  EXPECT_FALSE(driver.Find("fraPreFilters").IsShown());
  EXPECT_EQ(driver.Find("fraMerge").GetRect(), place);
  form.EnableMerge(false);
  window->ShowChanges();
  EXPECT_TRUE(driver.Find("fraPreFilters").IsShown());
}

TEST_F(MainWindowTest, TheTabulatorVisitsTheWidgetsInTheirOrder) {
  OpenFirstRule();
  form.OrderEnable(true);
  form.EnableCmdADCR(true, true, true, true, 0);
  form.EnableCmdEA(true, true);
  window->ShowChanges();
  Text("txtBox(0)").SetFocus();
  std::vector<std::string> visited;
  for (int i = 0; i < 9; ++i) {
    driver.Press(WXK_TAB);
    const auto* focus = wxWindow::FindFocus();
    visited.push_back(focus == nullptr ? "-" : focus->GetName().utf8_string());
  }
  EXPECT_EQ(visited, (Words{"txtCop(0)", "cmdAdd(0)", "cmdDel(0)", "cmdChange(0)", "cmdRestore(0)",
                            "lstBox(0)", "cmdRecord(0)", "cmdCancelRule(0)", "chkEnabled"}));
}

TEST_F(MainWindowTest, NothingIsCutAtTheLeastSizeWhichASmallScreenHolds) {
  window->SetSize(window->GetMinSize());
  WindowDriver::Settle();
  EXPECT_LE(window->GetMinSize().x, window->FromDIP(1024));
  EXPECT_LE(window->GetMinSize().y, window->FromDIP(720));
  const std::function<void(const wxWindow&)> check = [&](const wxWindow& parent) {
    for (const auto* child : parent.GetChildren()) {
      // A frame has no needs of its own beside those of what it holds.
      const bool isFrame = dynamic_cast<const wxStaticBox*>(child) != nullptr;
      const auto need = isFrame ? wxSize() : child->GetEffectiveMinSize();
      EXPECT_GE(child->GetSize().x, need.x) << child->GetName();
      EXPECT_GE(child->GetSize().y, need.y) << child->GetName();
      const auto room = parent.GetSize();
      EXPECT_LE(child->GetRect().GetRight(), room.x) << child->GetName();
      EXPECT_LE(child->GetRect().GetBottom(), room.y) << child->GetName();
      check(*child);
    }
  };
  check(*driver.Find("fraOrderRules").GetParent());
}

TEST_F(MainWindowTest, ClosingAsksAndCanBeRefused) {
  state.settings.QuietMode.clear();
  driver.Answer("Non");
  EXPECT_FALSE(window->Close());
  EXPECT_TRUE(driver.LastBox().StartsWith("Voulez-vous vraiment quitter Morvelle"));
  driver.Answer("Oui");
  EXPECT_TRUE(window->Close());
  WindowDriver::Settle();
  EXPECT_FALSE(window);
}

TEST_F(MainWindowTest, TheMenuEntryAndTheEndOfTheProgramCloseWithoutAnotherQuestion) {
  state.settings.QuietMode.clear();
  driver.Answer("Oui");
  driver.Choose("mnuQuit");
  EXPECT_FALSE(window);
  EXPECT_EQ(driver.PendingAnswers(), 0U);
}

TEST_F(MainWindowTest, AnErrorThatEndsTheProgramClosesTheWindow) {
  form.Menu("mnuAdd").onClick = [] { throw ProgramEnd{}; };
  form.Menu("mnuAdd").SetEnabled(true);
  window->ShowChanges();
  driver.Choose("mnuAdd");
  EXPECT_FALSE(window);
}

TEST_F(MainWindowTest, StatusPanelsAndTitleFollow) {
  form.ShowPanel(1, "Identité"_cp);
  form.ShowPanel(9, "Famille & amis");
  form.form.SetCaption("Titre");
  window->ShowChanges();
  const auto& bar = driver.FindAs<wxStatusBar>("statBar");
  EXPECT_EQ(bar.GetStatusText(0), ToWx("Identité"_cp));
  EXPECT_EQ(bar.GetStatusText(8), "Famille & amis");
  EXPECT_EQ(window->GetTitle(), "Titre");
}

}  // namespace
}  // namespace morvelle
