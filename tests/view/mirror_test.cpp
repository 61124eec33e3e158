#include "view/mirror.h"

#include <gtest/gtest.h>

#include "app/messages/errors.h"
#include "view/gestures.h"

namespace morvelle {
namespace {

struct MirrorTest : testing::Test {
  void Follow(Control& control) {
    mirror.Follow(control, [this, &control](const Aspects& changed) {
      log.push_back(control.Name() + (changed.Has(Aspect::Focus) ? " focus" : ""));
      if (onUpdate) onUpdate();
    });
  }

  Frame frame{"frame", nullptr};
  ListBox list{"list", nullptr};
  CheckBox box{"box", nullptr};
  int scheduled = 0;
  Mirror mirror{[this] { ++scheduled; }};
  std::vector<std::string> log;
  Handler onUpdate;
};

TEST_F(MirrorTest, ManyChangesAreOneUpdatePerWidgetAndOneCall) {
  Follow(list);
  Follow(frame);
  mirror.Flush();
  EXPECT_EQ(log, (std::vector<std::string>{"list", "frame"}));
  log.clear();
  scheduled = 0;
  for (int i = 0; i < 4096; ++i) list.AddItem("mot");
  frame.SetEnabled(false);
  frame.SetVisible(false);
  EXPECT_EQ(scheduled, 1);
  EXPECT_TRUE(log.empty());
  mirror.Flush();
  EXPECT_EQ(log, (std::vector<std::string>{"list", "frame"}));
  mirror.Flush();
  EXPECT_EQ(log.size(), 2U) << "nothing is shown twice";
}

TEST_F(MirrorTest, TheLastWishForTheFocusIsMetLast) {
  Follow(list);
  Follow(box);
  Follow(frame);
  mirror.Flush();
  log.clear();
  list.SetFocus();
  box.SetFocus();
  frame.SetEnabled(false);
  mirror.Flush();
  EXPECT_EQ(log.back(), "box focus");
  EXPECT_EQ(std::count(log.begin(), log.end(), "list focus"), 0);
}

TEST_F(MirrorTest, WhatAWidgetReportsWhileItIsChangedIsNoGesture) {
  Gestures gestures(mirror, [] {});
  Follow(box);
  bool heard = false;
  onUpdate = [&] { gestures.Perform([&] { heard = true; }); };
  mirror.Flush();
  EXPECT_FALSE(heard);
}

TEST_F(MirrorTest, AGestureOfNoEffectPutsTheWidgetRight) {
  Gestures gestures(mirror, [] {});
  Follow(box);
  mirror.Flush();
  log.clear();
  box.SetEnabled(false);
  mirror.Flush();
  log.clear();
  gestures.Perform(box, [this] { box.Click(); });
  EXPECT_EQ(log, std::vector<std::string>{"box"});
}

TEST_F(MirrorTest, TheEndOfTheProgramClosesTheWindowAndDropsWhatStillComes) {
  int ends = 0;
  Gestures gestures(mirror, [&] { ++ends; });
  Follow(list);
  mirror.Flush();
  log.clear();
  gestures.Perform([this] {
    list.AddItem("mot");
    throw ProgramEnd{};
  });
  gestures.Perform([this] { list.AddItem("mot"); });
  EXPECT_EQ(ends, 1);
  EXPECT_EQ(list.Count(), 1);
  EXPECT_FALSE(gestures.Running());
}

TEST_F(MirrorTest, AnotherFailureLeavesTheWindowAlive) {
  Gestures gestures(mirror, [] {});
  Follow(list);
  Follow(box);
  Follow(frame);
  mirror.Flush();
  log.clear();
  const auto fail = [] { throw std::runtime_error("no memory"); };
  EXPECT_THROW(gestures.Perform(fail), std::runtime_error);
  EXPECT_FALSE(gestures.Running());
  gestures.Perform([this] { list.AddItem("mot"); });
  EXPECT_EQ(log, (std::vector<std::string>{"list"}));
  log.clear();
  // In the midst of the widgets: those that are left get their changes soon, and gestures count.
  onUpdate = fail;
  EXPECT_THROW(gestures.Perform([this] {
    list.AddItem("mot");
    box.SetChecked(true);
    frame.SetFocus();
  }),
               std::runtime_error);
  onUpdate = nullptr;
  scheduled = 0;
  gestures.Perform([this] { box.SetChecked(false); });
  EXPECT_EQ(log, (std::vector<std::string>{"list", "box", "frame", "frame focus"}));
}

}  // namespace
}  // namespace morvelle
