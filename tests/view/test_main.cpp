#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/init.h>

#include <cstdio>

#include "view/french.h"

/// Runs the tests inside an application object with an event loop.
int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  morvelle::AskDesktopForFrench();
  wxApp::SetInstance(new wxApp);
  if (!wxEntryStart(argc, argv)) {
    std::fputs("These tests need a display: run them with xvfb-run.\n", stderr);
    return 1;
  }
  wxTheApp->CallOnInit();
  wxTheApp->SetExitOnFrameDelete(false);
  morvelle::UseFrenchCatalogue();
  int result = 0;
  {
    wxGUIEventLoop loop;
    const wxEventLoopActivator active(&loop);
    result = RUN_ALL_TESTS();
  }
  wxTheApp->OnExit();
  wxEntryCleanup();
  return result;
}
