#include "ui/controls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/messages/errors.h"

namespace morvelle {
namespace {

using testing::ElementsAre;

/// Counts what it is told.
struct Ear final : ControlObserver {
  void ControlChanged(Control&, Aspect aspect) override { heard.push_back(aspect); }
  std::vector<Aspect> heard;
};

TEST(Controls, RaiseEventsOnlyWhenSomethingChanges) {
  int events = 0;
  Ear ear;
  TextBox box("box", nullptr);
  CheckBox check("check", nullptr);
  ListBox list("list", nullptr);
  box.onChange = check.onClick = list.onClick = [&] { ++events; };
  box.Observe(&ear);
  box.SetText("mot");
  box.SetText("mot");
  box.Type(u"mot");
  EXPECT_EQ(events, 1);
  EXPECT_THAT(ear.heard, ElementsAre(Aspect::Text));
  check.SetChecked(false);
  EXPECT_EQ(events, 1);
  check.SetChecked(true);
  check.Click();
  EXPECT_EQ(events, 3) << "code and gesture raise the same event";
  EXPECT_FALSE(check.Checked());
  list.AddItem("a");
  list.SetListIndex(0);
  list.SetListIndex(0);
  EXPECT_EQ(events, 4);
  list.ClickItem(0);
  EXPECT_EQ(events, 5) << "a user may click the current line again";
}

TEST(Controls, GesturesAreBlockedByWhatSurroundsThem) {
  int events = 0;
  Frame outer("outer", nullptr);
  Frame inner("inner", &outer);
  PushButton button("button", &inner);
  TextBox box("box", &inner);
  MenuItem menu("menu", nullptr, "Menu");
  MenuArray entries("entries", &menu);
  ListBox list("list", &inner);
  CheckBox check("check", &inner);
  OptionButton option("option", &inner);
  list.AddItem("a");
  button.onClick = check.onClick = option.onClick = box.onChange = list.onClick = [&] { ++events; };
  box.onKeyDown = entries.onClick = [&](int) { ++events; };
  const auto all = [&] {
    events = 0;
    button.Click();
    box.Type(box.Text().empty() ? u"a" : u"");
    box.KeyDown(kKeyReturn);
    list.ClickItem(0);
    check.Click();
    option.Click();
    entries.Choose(0);
    return events;
  };
  menu.SetEnabled(false);
  outer.SetEnabled(false);
  EXPECT_EQ(all(), 0);
  outer.SetEnabled(true);
  outer.SetVisible(false);
  EXPECT_EQ(all(), 0);
  outer.SetVisible(true);
  menu.SetEnabled(true);
  EXPECT_EQ(all(), 7);
  entries.SetEnabledOf(0, false);
  box.SetReadOnly(true);
  EXPECT_EQ(all(), 4) << "neither the entry, the read-only text nor the option chosen before";
  button.SetEnabled(false);
  EXPECT_EQ(all(), 3);
  entries.Choose(1);
  list.ClickItem(1);
  EXPECT_EQ(events, 3) << "there is no such entry";
}

TEST(Controls, AListKeepsItsLinesInStep) {
  ListBox list("list", nullptr, true);
  for (const auto* item : {"a", "b", "c"}) list.AddItem(item);
  list.SetSelected(0, true);
  list.ClickItem(2);
  EXPECT_TRUE(list.Selected(0) && list.Selected(2));
  list.RemoveItem(0);
  EXPECT_EQ(list.Item(list.ListIndex()), "c");
  EXPECT_TRUE(!list.Selected(0) && list.Selected(1)) << "the state goes with its line";
  list.ClickItem(1);
  EXPECT_FALSE(list.Selected(1)) << "a click turns the line over";
  list.RemoveItem(1);
  EXPECT_EQ(list.ListIndex(), -1);
  list.SetListIndex(0);
  list.Clear();
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.Item(0), "");
  EXPECT_THROW(list.SetListIndex(0), RuntimeError);
  EXPECT_THROW(list.SetItem(0, "x"), RuntimeError);
  EXPECT_THROW(list.RemoveItem(-1), RuntimeError);
}

}  // namespace
}  // namespace morvelle
