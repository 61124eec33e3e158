#pragma once

#include <wx/app.h>
#include <wx/weakref.h>

#include "platform/dialogs_wx.h"
#include "platform/file_dialogs_wx.h"
#include "platform/printer_wx.h"
#include "platform/progress_wx.h"
#include "tests/support/fake_machine.h"
#include "tests/support/window_driver.h"
#include "view/main_window.h"

namespace morvelle {

/// The real window on the real form, over a registry in memory with three rules: Publicités
/// (active, sender words alpha and beta), Listes (not active), Famille & amis (active).
class WindowTest : public FakeMachine {
 protected:
  WindowTest() {
    RuleSet rules(registry);
    const std::pair<std::string_view, bool> named[] = {
        {kFirstName, true}, {"Listes", false}, {"Famille & amis", true}};
    for (int row = 0; row < 3; ++row) {
      const auto& [name, active] = named[row];
      rules.Rule(ThreeDigitId(row), name, active ? 1 : 0).Actions("000").Action("000", 8);
      rules.Criteria("000").Words("000", 12, {"alpha", "beta"});
    }
    rules.Order("000 001 002");
    state.tables.SlotType = {"12", "8", "9", "22"};
    state.identity.MailKey = kTestMailKey;
    // What the window asks on its way out is no matter of these tests.
    state.settings.QuietMode = "Silent";
    boxes.BeforeBox([this] { window->ShowChanges(); });
    window->Show();
    form.LoadRules();
    form.FinishStart();
    EXPECT_TRUE(WindowDriver::WaitUntil([this] { return window->IsActive(); }));
    driver.Settle();
  }
  ~WindowTest() override {
    if (window) window->Destroy();
    WindowDriver::Settle();
  }

  static constexpr std::string_view kFirstName = "Publicités"_cp;
  FakeRegistry registry;
  WxDialogs boxes;
  WxFileDialogs fileDialogs{boxes};
  WxPrinter printer{boxes};
  WxProgress progress;
  Ports ports{registry, boxes,       environment, fileDialogs, printer,
              progress, addressBook, processes,   shell};
  ProgramState state;
  frmMorvelle form{ports, state};
  /// Null once the window is gone.
  wxWeakRef<MainWindow> window =
      new MainWindow(form, WindowPlace(wxString((folder / "place").string())));
  WindowDriver driver{*window};
};

}  // namespace morvelle
