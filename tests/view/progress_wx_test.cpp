#include "platform/progress_wx.h"

#include <gtest/gtest.h>
#include <wx/progdlg.h>
#include <wx/utils.h>

namespace morvelle {
namespace {

int Boxes() {
  int count = 0;
  for (auto* top : wxTopLevelWindows) {
    if (dynamic_cast<wxProgressDialog*>(top) != nullptr && top->IsShown()) ++count;
  }
  return count;
}

TEST(WxProgressTest, ABoxComesOnlyAfterHalfASecond) {
  WxProgress progress;
  progress.Begin("Importation", 100);
  progress.Done(1);
  EXPECT_EQ(Boxes(), 0);
  wxMilliSleep(550);
  progress.Done(2);
  EXPECT_EQ(Boxes(), 1);
  // The last step does not wait for anybody.
  wxMilliSleep(120);
  progress.Done(100);
  progress.End();
  EXPECT_EQ(Boxes(), 0);
  progress.Begin("Importation", 100);
  progress.Done(3);
  EXPECT_EQ(Boxes(), 0) << "the next work has its own half second";
  progress.End();
}

}  // namespace
}  // namespace morvelle
