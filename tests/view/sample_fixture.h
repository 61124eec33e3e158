#pragma once

#include <wx/listbox.h>
#include <wx/stattext.h>

#include <cstdlib>

#include "disk/host_files.h"
#include "platform/address_book_file.h"
#include "platform/dialogs_wx.h"
#include "platform/environment_posix.h"
#include "platform/file_dialogs_wx.h"
#include "platform/printer_wx.h"
#include "platform/progress_wx.h"
#include "platform/registry_regfile.h"
#include "platform/sample_identity.h"
#include "tests/support/fake_machine.h"
#include "tests/support/window_driver.h"
#include "view/main_window.h"

namespace morvelle {

using Words = std::vector<std::string>;

/// The program as its user starts it for the first time: real window, real `.reg` file, the sample
/// identity, mouse and keyboard.
class SampleIdentityTest : public testing::Test {
 protected:
  void Start() {
    // The user's files, too, belong to the test alone.
    setenv("XDG_DATA_HOME", folder_.Path().c_str(), 1);
    environment_ =
        std::make_unique<PosixEnvironment>(WindowsFolders{{}, {}, file_.parent_path()}, "0.0.0.0");
    opened_ = OpenRegFile(file_, MakeHostFiles(), std::chrono::system_clock::now);
    ASSERT_NE(opened_.store, nullptr) << opened_.error;
    ports_ = std::make_unique<Ports>(Ports{*opened_.store, boxes_, *environment_, fileDialogs_,
                                           printer_, progress_, book_, processes_, shell_});
    form_ = std::make_unique<frmMorvelle>(*ports_, state_);
    window_ = new MainWindow(*form_, WindowPlace(wxString((folder_ / "place").string())));
    boxes_.BeforeBox([this] { window_->ShowChanges(); });
    driver_ = std::make_unique<WindowDriver>(*window_);
    window_->Start();
    ASSERT_TRUE(WindowDriver::WaitUntil([this] { return window_->IsActive(); }));
    driver_->Settle();
    closed_ = false;
  }
  /// Quits by the window's own button, the question answered.
  void Quit() {
    driver_->Answer("Oui");
    closed_ = window_->Close();
    ASSERT_TRUE(closed_);
    WindowDriver::Settle();
    driver_.reset();
    form_.reset();
    ports_.reset();
    opened_ = {};
    state_ = {};
  }
  ~SampleIdentityTest() override {
    driver_.reset();
    if (window_ != nullptr && !closed_) window_->Destroy();
    WindowDriver::Settle();
    std::filesystem::current_path(currentFolder_);
    unsetenv("XDG_DATA_HOME");
  }
  [[nodiscard]] Words Lines(const char* list) const {
    return LinesOf(driver_->FindAs<wxListBox>(list));
  }
  [[nodiscard]] bool IsSelected(int action) const {
    return driver_->FindAs<wxListBox>("lstAct").IsSelected(action);
  }
  [[nodiscard]] int RowOf(std::string_view name) const {
    for (int row = 0; row < state_.tables.RuleCount; ++row) {
      if (state_.tables.RuleAt(row).Name == name) return row;
    }
    return -1;
  }

  /// The program goes to its own folder, which goes with the test.
  std::filesystem::path currentFolder_ = std::filesystem::current_path();
  TempFolder folder_;
  std::filesystem::path file_ = OwnSampleIdentity(MORVELLE_SAMPLE_FOLDER, folder_.Path());
  std::unique_ptr<PosixEnvironment> environment_;
  OpenedStore opened_;
  WxDialogs boxes_;
  WxFileDialogs fileDialogs_{boxes_};
  WxPrinter printer_{boxes_};
  WxProgress progress_;
  FileAddressBook book_;
  FakeProcesses processes_;
  FakeShell shell_;
  std::unique_ptr<Ports> ports_;
  ProgramState state_;
  std::unique_ptr<frmMorvelle> form_;
  MainWindow* window_ = nullptr;
  std::unique_ptr<WindowDriver> driver_;
  bool closed_ = false;
};

}  // namespace morvelle
