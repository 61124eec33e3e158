#include <wx/app.h>

#include <cstdio>
#include <ctime>
#include <memory>
#include <string>

#include "bench/silent_desktop.h"
#include "disk/host_files.h"
#include "platform/registry_regfile.h"
#include "ui/frm_morvelle.h"
#include "view/main_window.h"

/// window_probe FILE: opens the window on a rule set and prints the seconds from the start of the
/// process to the first moment at which the window is drawn and has nothing left to do.
namespace morvelle::bench {

namespace {

timespec MonotonicNow() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now;
}

class ProbeApp final : public wxApp {
 public:
  ProbeApp(std::string file, timespec start) : file_(std::move(file)), start_(start) {}

  bool OnInit() override {
    folder_ = std::filesystem::temp_directory_path() / "morvelle-window-probe";
    std::filesystem::create_directories(folder_);
    desktop_ = std::make_unique<SilentDesktop>(folder_);
    opened_ = OpenRegFile(file_, MakeHostFiles(), std::chrono::system_clock::now);
    if (opened_.store == nullptr) return false;
    auto& desktop = *desktop_;
    ports_ = std::make_unique<Ports>(Ports{*opened_.store, desktop, desktop, desktop, desktop,
                                           desktop, desktop, desktop, desktop});
    form_ = std::make_unique<frmMorvelle>(*ports_, state_);
    window_ = new MainWindow(*form_, WindowPlace(wxString::FromUTF8((folder_ / "place").string())));
    Bind(wxEVT_IDLE, &ProbeApp::OnIdle, this);
    window_->Start();
    return true;
  }

 private:
  void OnIdle(wxIdleEvent& event) {
    event.Skip();
    if (!window_->IsShownOnScreen() || done_) return;
    // The rules come once the empty window is drawn; the first idle moment with them only asks for
    // their drawing.
    if (state_.tables.RuleCount == 0) return;
    window_->Update();
    if (++idleMoments_ < 2) {
      event.RequestMore();
      return;
    }
    done_ = true;
    const auto now = MonotonicNow();
    std::printf("%.6f\n", static_cast<double>(now.tv_sec - start_.tv_sec) +
                              static_cast<double>(now.tv_nsec - start_.tv_nsec) / 1e9);
    std::fflush(stdout);
    ExitMainLoop();
  }

  std::string file_;
  timespec start_;
  std::filesystem::path folder_;
  std::unique_ptr<SilentDesktop> desktop_;
  OpenedStore opened_;
  std::unique_ptr<Ports> ports_;
  ProgramState state_;
  std::unique_ptr<frmMorvelle> form_;
  MainWindow* window_ = nullptr;
  int idleMoments_ = 0;
  bool done_ = false;
};

}  // namespace

}  // namespace morvelle::bench

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  wxApp::SetInstance(new morvelle::bench::ProbeApp(argv[1], morvelle::bench::MonotonicNow()));
  int none = 1;
  return wxEntry(none, argv);
}
