#include "view/line_list.h"

#include <gtest/gtest.h>
#include <wx/sizer.h>
#include <wx/stopwatch.h>

#include "tests/support/window_driver.h"

namespace morvelle {
namespace {

struct LineListTest : testing::Test {
  LineListTest() {
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(widget, 1, wxEXPAND);
    frame.SetSizer(sizer);
    frame.SetSize(300, 240);
    frame.Show();
    WindowDriver::Settle();
  }
  void Fill(int count) {
    for (int i = 0; i < count; ++i) list.AddItem("mot " + std::to_string(i));
    widget->TakeOver(list);
  }

  wxFrame frame{nullptr, wxID_ANY, "listes"};
  LineList* widget = new LineList(&frame, false, wxSize(100, 80));
  ListBox list{"list", nullptr};
};

TEST_F(LineListTest, FollowsEveryKindOfChange) {
  const std::vector<std::function<void()>> changes = {
      [&] { list.AddItem("un"); },
      [&] {
        for (const char* word : {"deux", "trois", "trois", "quatre"}) list.AddItem(word);
      },
      [&] { list.SetItem(2, "TROIS"); },
      [&] { list.RemoveItem(0); },
      [&] { list.RemoveItem(3); },
      [&] {
        list.SetItem(0, "fin");
        list.RemoveItem(1);
        list.AddItem("deux");
      },
      [&] { list.Clear(); },
      [&] {
        for (int i = 0; i < 200; ++i) list.AddItem(std::to_string(i));
      },
      [&] {
        for (int i = 1; i < 199; ++i) list.SetItem(i, std::to_string(-i));
      },
  };
  for (const auto& change : changes) {
    change();
    widget->TakeOver(list);
    EXPECT_EQ(LinesOf(*widget), list.Items());
  }
}

TEST_F(LineListTest, PlaceAndSelectionStayWhenALineIsAddedOrChangedElsewhere) {
  Fill(400);
  list.SetListIndex(210);
  widget->TakeOver(list);
  widget->SetFirstItem(200);
  WindowDriver::Settle();
  const int top = widget->GetTopItem();
  ASSERT_GT(top, 150);
  list.AddItem("un de plus");
  list.SetItem(3, "autre");
  widget->TakeOver(list);
  WindowDriver::Settle();
  EXPECT_EQ(widget->GetTopItem(), top);
  EXPECT_EQ(widget->GetSelection(), 210);
  list.RemoveItem(210);
  widget->TakeOver(list);
  EXPECT_EQ(widget->GetSelection(), wxNOT_FOUND);
}

TEST_F(LineListTest, ALongListTakesAWordAtOnce) {
  wxStopWatch watch;
  Fill(32767);
  const auto filled = watch.TimeInMicro();
  WindowDriver::Settle();
  list.AddItem("un de plus");
  watch.Start();
  widget->TakeOver(list);
  const auto added = watch.TimeInMicro();
  RecordProperty("fillMicroseconds", filled.ToString().utf8_string());
  RecordProperty("addMicroseconds", added.ToString().utf8_string());
  // A rebuilt list costs as much as filling it does.
  EXPECT_LT(added.ToLong(), filled.ToLong() / 4);
}

}  // namespace
}  // namespace morvelle
