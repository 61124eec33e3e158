#include <wx/app.h>

#include <memory>
#include <string>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/messages.h"
#include "app/program.h"
#include "core/identity.h"
#include "platform/command_line.h"
#include "platform/desktop.h"
#include "platform/dialogs_wx.h"
#include "platform/file_dialogs_wx.h"
#include "platform/printer_wx.h"
#include "platform/progress_wx.h"
#include "platform/system_shell.h"
#include "ui/frm_morvelle.h"
#include "view/french.h"
#include "view/main_window.h"

namespace morvelle {

namespace {

/// What lives as long as the program does, in the order in which one needs the other.
struct Desktop {
  explicit Desktop(OpenedDesktop openedDesktop)
      : opened(std::move(openedDesktop)),
        shell(MakeShell(dialogs, *opened.environment)),
        ports{*opened.store,       dialogs,           *opened.environment,
              fileDialogs,         printer,           progress,
              *opened.addressBook, *opened.processes, *shell},
        form(ports, state) {}

  OpenedDesktop opened;
  WxDialogs dialogs;
  WxFileDialogs fileDialogs{dialogs};
  WxPrinter printer{dialogs};
  WxProgress progress;
  std::unique_ptr<Shell> shell;
  Ports ports;
  ProgramState state;
  frmMorvelle form;
};

class MorvelleApp final : public wxApp {
 public:
  explicit MorvelleApp(CommandLine commandLine) : commandLine_(std::move(commandLine)) {}

  bool OnInit() override {
    UseFrenchCatalogue();
    SetAppName("morvelle");
    SetAppDisplayName("Morvelle");
    auto opened = OpenThisDesktop(commandLine_, MORVELLE_VERSION);
    if (opened.store == nullptr) {
      WxDialogs().ShowMessage(opened.error, kBoxStop, std::string(kAppTitle));
      return false;
    }
    // What is opened goes, its lock with it, before the program ends.
    if (WxDialogs boxes; !MayOpen(*opened.store, Messages(boxes))) return false;
    desktop_ = std::make_unique<Desktop>(std::move(opened));
    auto* window = new MainWindow(desktop_->form);
    desktop_->dialogs.BeforeBox([window] { window->ShowChanges(); });
    window->Start();
    return true;
  }

  // What no command of the window has caught: there was not even the memory to show something.
  bool OnExceptionInMainLoop() override {
    OnUnhandledException();
    return false;
  }
  void OnUnhandledException() override {
    WxDialogs boxes;
    ReportCurrentError(boxes, "Morvelle");
  }

  int OnExit() override {
    // The help window is the toolkit's, and goes before it does.
    if (desktop_) desktop_->shell.reset();
    return wxApp::OnExit();
  }

 private:
  CommandLine commandLine_;
  std::unique_ptr<Desktop> desktop_;
};

}  // namespace

}  // namespace morvelle

int main(int argc, char** argv) {
  morvelle::PrepareProcess();
  auto commandLine = morvelle::ParseCommandLine(morvelle::Arguments(argc, argv));
  if (!commandLine.error.empty()) {
    morvelle::Say(morvelle::Saying::Complaint, "morvelle : " + commandLine.error + "\n");
    return 2;
  }
  if (commandLine.help) {
    morvelle::Say(morvelle::Saying::Answer, morvelle::CommandLineHelp());
    return 0;
  }
  if (commandLine.version) {
    morvelle::Say(morvelle::Saying::Answer, "Morvelle " MORVELLE_VERSION "\n");
    return 0;
  }
  morvelle::AskDesktopForFrench();
  wxApp::SetInstance(new morvelle::MorvelleApp(std::move(commandLine)));
  int none = 1;
  return wxEntry(none, argv);
}
