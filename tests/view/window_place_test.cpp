#include "view/window_place.h"

#include "tests/support/temp_folder.h"
#include "tests/support/window_driver.h"

namespace morvelle {
namespace {

TEST(WindowPlace, IsPutOnTheScreenThatItCoversMost) {
  const wxRect main(0, 0, 1024, 768);
  const wxRect right(1024, 0, 1920, 1080);
  const std::vector<wxRect> screens = {main, right};
  struct Case {
    const char* what;
    wxRect wanted;
    wxRect given;
  };
  const Case cases[] = {
      {"stays where it fits", {100, 50, 800, 600}, {100, 50, 800, 600}},
      {"stays on the second screen", {1100, 50, 800, 600}, {1100, 50, 800, 600}},
      {"a screen that is gone", {5000, 4000, 800, 600}, {224, 168, 800, 600}},
      {"above and left", {-300, -40, 800, 600}, {0, 0, 800, 600}},
      {"larger than the screen", {10, 10, 4000, 3000}, {1024, 0, 1920, 1080}},
      {"mostly on the right", {900, 50, 800, 600}, {1024, 50, 800, 600}},
  };
  for (const auto& [what, wanted, given] : cases) {
    EXPECT_EQ(PutOnScreen(wanted, screens), given) << what;
  }
  EXPECT_EQ(PutOnScreen(wxRect(5, 5, 10, 10), {}), wxRect(5, 5, 10, 10));
}

TEST(WindowPlace, IsTheSameInTheNextRun) {
  const TempFolder folder;
  const WindowPlace place(wxString((folder / "neuf" / "place").string()));
  auto show = [&](wxFrame& frame) {
    place.Restore(frame, wxSize(640, 480));
    frame.Show();
    WindowDriver::Settle();
  };
  wxSize changed;
  {
    wxFrame first(nullptr, wxID_ANY, "un");
    show(first);
    // The toolkit may still correct the height by what it knows of the frame's decorations.
    EXPECT_TRUE(WindowDriver::WaitUntil([&] { return first.GetSize().x == first.FromDIP(640); }));
    first.SetSize(70, 90, 500, 400);
    WindowDriver::Settle();
    changed = first.GetSize();
    place.Keep(first);
  }
  wxFrame second(nullptr, wxID_ANY, "deux");
  show(second);
  EXPECT_EQ(second.GetSize(), changed);
  EXPECT_EQ(second.GetPosition().x, 70);
}

}  // namespace
}  // namespace morvelle
