#include <gtest/gtest.h>
#include <wx/listbox.h>
#include <wx/stattext.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/messages/text.h"
#include "platform/address_book_file.h"
#include "platform/dialogs_wx.h"
#include "platform/environment_posix.h"
#include "platform/file_dialogs_wx.h"
#include "platform/host_files.h"
#include "platform/printer_wx.h"
#include "platform/progress_wx.h"
#include "platform/registry_regfile.h"
#include "platform/sample_identity.h"
#include "tests/support/fake_processes.h"
#include "tests/support/fake_shell.h"
#include "tests/support/temp_folder.h"
#include "tests/support/window_driver.h"
#include "view/main_window.h"

namespace morvelle {
namespace {

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
  }
  ~SampleIdentityTest() override {
    driver_.reset();
    if (window_ != nullptr && !closed_) window_->Destroy();
    WindowDriver::Settle();
    std::filesystem::current_path(currentFolder_);
    unsetenv("XDG_DATA_HOME");
  }
  [[nodiscard]] Words Lines(const char* list) const {
    const auto& box = driver_->FindAs<wxListBox>(list);
    Words lines;
    for (unsigned i = 0; i < box.GetCount(); ++i) {
      lines.emplace_back(box.GetString(i).utf8_str());
    }
    return lines;
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

TEST_F(SampleIdentityTest, AWordIsAddedSavedAndReadByAnotherProgram) {
  const auto before = folder_ / "avant.reg";
  std::filesystem::copy_file(file_, before);
  Start();
  EXPECT_TRUE(driver_->LastBox().empty()) << "a first start shows no box";

  driver_->ChooseRule("mnuMod", RowOf("Publicités"_cp));
  const auto words = Lines("lstBox(1)");
  EXPECT_EQ(words.front(), "100 % gratuit");
  EXPECT_TRUE(IsSelected(0) && !IsSelected(1) && !IsSelected(2) && IsSelected(3));
  EXPECT_EQ(driver_->Find("lblNb(1)").GetLabel(), "9 mots");

  driver_->Click("txtBox(1)");
  driver_->Type("bonne affaire");
  driver_->Press(WXK_RETURN);
  EXPECT_EQ(Lines("lstBox(1)").back(), "bonne affaire");
  driver_->Click("cmdRecord(1)");
  EXPECT_TRUE(Lines("lstBox(1)").empty());
  EXPECT_FALSE(driver_->Find("cmdRecord(1)").IsEnabled());

  // Quitting asks; "Non" keeps the window.
  driver_->Answer("Non");
  EXPECT_FALSE(window_->Close());
  driver_->Answer("Oui");
  closed_ = window_->Close();
  EXPECT_TRUE(closed_);

  const auto check = std::string("sh '" MORVELLE_READER "' '" MORVELLE_HIVE_MAKER "' '") +
                     before.string() + "' '" + file_.string() + "'";
  EXPECT_EQ(std::system(check.c_str()), 0);
}

TEST_F(SampleIdentityTest, UnsavedWorkIsGivenUpOnlyAfterBothQuestions) {
  const auto before = ReadFile(file_);
  Start();
  driver_->ChooseRule("mnuMod", RowOf("Famille"));
  const auto words = Lines("lstBox(0)");
  driver_->ClickLine("lstBox(0)", 0);
  driver_->Click("cmdDel(0)");
  EXPECT_EQ(Lines("lstBox(0)").size(), words.size() - 1);
  driver_->Answer("Oui");
  driver_->Answer("Non");
  EXPECT_FALSE(window_->Close());
  EXPECT_EQ(Lines("lstBox(0)").size(), words.size() - 1);
  driver_->Click("cmdRestore(0)");
  EXPECT_EQ(Lines("lstBox(0)"), words);
  driver_->Click("cmdCancelRule(0)");
  EXPECT_TRUE(Lines("lstBox(0)").empty());
  EXPECT_EQ(ReadFile(file_), before);
}

}  // namespace
}  // namespace morvelle
