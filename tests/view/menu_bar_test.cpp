#include "view/menu_bar.h"

#include <wx/stopwatch.h>
#include <wx/uiaction.h>

#include "tests/view/window_fixture.h"
#include "view/wx_text.h"

namespace morvelle {
namespace {

class MenuTest : public WindowTest {
 protected:
  wxMenuItem& Item(std::string_view name) {
    auto* item = window->Menus().Find(name);
    if (item == nullptr) throw std::runtime_error(std::string(name));
    return *item;
  }
  /// What opening the menu around the array does.
  wxMenu& Open(std::string_view name) {
    window->ShowChanges();
    auto& menu = *window->Menus().FindRuleMenu(name);
    wxMenuEvent opened(wxEVT_MENU_OPEN, wxID_ANY, menu.Widget());
    window->ProcessWindowEvent(opened);
    return *menu.Widget();
  }
};

TEST_F(MenuTest, TheBarIsTheMenuTable) {
  const auto* bar = window->GetMenuBar();
  std::size_t top = 0;
  for (const auto& entry : MenuTable()) {
    if (entry.perRule) continue;
    if (entry.parent.empty()) {
      EXPECT_EQ(bar->GetMenuLabelText(top++), ToWx(entry.caption));
      continue;
    }
    const auto& item = Item(entry.name);
    EXPECT_EQ(item.IsSeparator(), entry.caption == "-") << entry.name;
    if (item.IsSeparator()) continue;
    EXPECT_EQ(item.GetItemLabelText(), ToWx(entry.caption));
    EXPECT_EQ(item.IsCheckable(), entry.checkable) << entry.name;
    EXPECT_EQ(item.GetItemLabel().AfterFirst('\t'), ToWx(entry.accelerator)) << entry.name;
  }
  EXPECT_EQ(bar->GetMenuCount(), top);
}

TEST_F(MenuTest, EntriesFollowTheirControls) {
  form.Menu("mnuAdd").SetEnabled(false);
  form.Menu("mnuOptions").SetEnabled(false);
  form.Menu("mnuSilent").SetChecked(true);
  window->ShowChanges();
  EXPECT_FALSE(Item("mnuAdd").IsEnabled());
  EXPECT_FALSE(window->Menus().Reachable("mnuCriteriaYes"));
  EXPECT_TRUE(Item("mnuSilent").IsChecked());

  // Hidden at first, then back in its place, with the state that it got meanwhile.
  auto& k9 = form.Menu("mnuWhiteListK9");
  ASSERT_FALSE(k9.Visible());
  auto* tools = Item("mnuSilent").GetMenu();
  const auto without = tools->GetMenuItemCount();
  k9.SetEnabled(false);
  k9.SetVisible(true);
  window->ShowChanges();
  EXPECT_EQ(tools->GetMenuItemCount(), without + 1);
  EXPECT_EQ(tools->FindItemByPosition(without - 1), &Item("mnuWhiteListK9"));
  EXPECT_FALSE(Item("mnuWhiteListK9").IsEnabled());
  k9.SetVisible(false);
  window->ShowChanges();
  EXPECT_EQ(tools->GetMenuItemCount(), without);
}

TEST_F(MenuTest, ARuleMenuIsFilledWhenItsMenuOpensAndFollowsTheRules) {
  const auto& menu = *window->Menus().FindRuleMenu("mnuDel")->Widget();
  EXPECT_EQ(menu.GetMenuItemCount(), 1U) << "nothing is built before it is seen";
  Open("mnuDel");
  ASSERT_EQ(menu.GetMenuItemCount(), 3U);
  EXPECT_TRUE(menu.FindItemByPosition(0)->GetItemLabelText().EndsWith(ToWx("000 Publicités"_cp)));
  EXPECT_TRUE(menu.FindItemByPosition(0)->GetItemLabelText().StartsWith("*"));
  EXPECT_FALSE(menu.FindItemByPosition(1)->GetItemLabelText().StartsWith("*"));
  EXPECT_TRUE(menu.FindItemByPosition(2)->GetItemLabelText().EndsWith("002 Famille & amis"));

  auto& array = form.RuleMenu("mnuDel");
  array.SetCaptionOf(1, "*\t001 Autre");
  array.SetEnabledOf(0, false);
  array.Shorten(2);
  Open("mnuDel");
  ASSERT_EQ(menu.GetMenuItemCount(), 2U);
  EXPECT_TRUE(menu.FindItemByPosition(1)->GetItemLabelText().EndsWith("001 Autre"));
  EXPECT_FALSE(menu.FindItemByPosition(0)->IsEnabled());
}

TEST_F(MenuTest, FourThousandRulesAreGroupedAndComeBackFlat) {
  auto& array = form.RuleMenu("mnuDel");
  int chosen = -1;
  array.onClick = [&](int index) { chosen = index; };
  for (int i = 0; i < 4096; ++i) {
    array.Load(i);
    array.SetCaptionOf(i, "*\t" + ThreeDigitId(i) + " nom");
  }
  const wxStopWatch watch;
  auto& menu = Open("mnuDel");
  RecordProperty("fillMilliseconds", static_cast<int>(watch.Time()));
  EXPECT_LT(watch.Time(), 500);
  ASSERT_EQ(menu.GetMenuItemCount(), 64U);
  EXPECT_EQ(menu.FindItemByPosition(1)->GetItemLabelText(),
            wxString::FromUTF8("040 nom – 07F nom"));
  driver.ChooseRule("mnuDel", 4095);
  EXPECT_EQ(chosen, 4095);
  array.Shorten(2);
  EXPECT_EQ(Open("mnuDel").GetMenuItemCount(), 2U);
  driver.ChooseRule("mnuDel", 1);
  EXPECT_EQ(chosen, 1);
}

TEST_F(MenuTest, ARuleIsChosenWithTheKeyboardFromAMenuFilledOnOpening) {
  int chosen = -1;
  form.RuleMenu("mnuRen").onClick = [&](int index) { chosen = index; };
  driver.Press(WXK_F10);
  driver.Press(WXK_RIGHT);
  for (const int key : {WXK_DOWN, WXK_RIGHT, WXK_DOWN, WXK_RETURN}) driver.Press(key);
  EXPECT_TRUE(WindowDriver::WaitUntil([&] { return chosen >= 0; }));
  EXPECT_EQ(chosen, 1);
}

TEST_F(MenuTest, AShortcutObeysTheStateOfItsCommand) {
  int saves = 0;
  auto& save = form.Menu("mnuRegContent");
  save.onClick = [&] { ++saves; };
  save.SetEnabled(false);
  window->ShowChanges();
  driver.Press('S', wxMOD_CONTROL);
  EXPECT_EQ(saves, 0);
  save.SetEnabled(true);
  window->ShowChanges();
  driver.Press('S', wxMOD_CONTROL);
  EXPECT_EQ(saves, 1);
}

}  // namespace
}  // namespace morvelle
