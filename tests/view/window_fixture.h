#pragma once

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/weakref.h>

#include <string>

#include "app/messages/text.h"
#include "platform/dialogs_wx.h"
#include "platform/file_dialogs_wx.h"
#include "platform/printer_wx.h"
#include "platform/progress_wx.h"
#include "tests/support/fake_address_book.h"
#include "tests/support/fake_environment.h"
#include "tests/support/fake_processes.h"
#include "tests/support/fake_registry.h"
#include "tests/support/fake_shell.h"
#include "tests/support/temp_folder.h"
#include "tests/support/window_driver.h"
#include "view/main_window.h"

namespace morvelle {

/// The real window on the real form, over a registry in memory with three rules: Publicités
/// (active, sender words alpha and beta), Listes (not active), Famille & amis (active).
class WindowTest : public testing::Test {
 protected:
  WindowTest() {
    Put(kMailKey, "Order", ValueKind::String, Zeroed("000 001 002"));
    Put(kMailKey, "Version", ValueKind::Dword, Dword(327680));
    AddRule(0, kFirstName, true);
    AddRule(1, "Listes", false);
    AddRule(2, "Famille & amis", true);
    state.tables.SlotType = {"12", "8", "9", "22"};
    state.identity.MailKey = kMailKey;
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
  static constexpr const char* kMailKey =
      "Identities\\{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}\\Software\\Microsoft\\"
      "Outlook Express\\5.0\\Rules\\Mail\\";

  static std::string Zeroed(const std::string& text) { return text + '\0'; }
  static std::string Dword(std::uint32_t value) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
      bytes += static_cast<char>((value >> shift) & 0xFFU);
    }
    return bytes;
  }
  void Put(const std::string& path, const char* name, ValueKind kind, const std::string& data) {
    KeyHandle key = 0;
    registry.CreateKey(path, key);
    registry.SetValue(key, name, kind, data);
    registry.CloseKey(key);
  }
  void AddRule(int row, std::string_view name, bool active) {
    const auto rule = kMailKey + ThreeDigitId(row);
    Put(rule, "Name", ValueKind::String, Zeroed(std::string(name)));
    Put(rule, "Enabled", ValueKind::Dword, Dword(active ? 1 : 0));
    Put(rule, "Version", ValueKind::Dword, Dword(0));
    Put(rule + "\\Actions", "Order", ValueKind::String, Zeroed("000"));
    Put(rule + "\\Actions\\000", "Type", ValueKind::Dword, Dword(8));
    Put(rule + "\\Actions\\000", "Flags", ValueKind::Dword, Dword(0));
    const auto criterion = rule + "\\Criteria\\000";
    Put(rule + "\\Criteria", "Order", ValueKind::String, Zeroed("000"));
    Put(criterion, "Type", ValueKind::Dword, Dword(12));
    Put(criterion, "Flags", ValueKind::Dword, Dword(0));
    Put(criterion, "Logic", ValueKind::Dword, Dword(0));
    Put(criterion, "Value", ValueKind::Binary,
        Zeroed("alpha") + Zeroed("beta") + Zeroed("") + '\0');
    Put(criterion, "ValueType", ValueKind::Dword, Dword(65));
  }

  TempFolder folder;
  FakeRegistry registry;
  WxDialogs boxes;
  FakeEnvironment environment{folder.Path()};
  WxFileDialogs fileDialogs{boxes};
  WxPrinter printer{boxes};
  WxProgress progress;
  FakeAddressBook addressBook;
  FakeProcesses processes;
  FakeShell shell;
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
