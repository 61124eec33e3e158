#include <wx/app.h>

#include <memory>
#include <string>
#include <utility>

#include "app/messages/messages.h"
#include "app/program.h"
#include "platform/command_line.h"
#include "platform/desktop.h"
#include "platform/dialogs_wx.h"
#include "platform/file_dialogs_wx.h"
#include "platform/printer_wx.h"
#include "platform/progress_wx.h"
#include "ui/frm_morvelle.h"
#include "view/french.h"
#include "view/main_window.h"

namespace morvelle {

namespace {

/// What lives as long as the program does, in the order in which one needs the other.
struct Desktop {
  Desktop(std::unique_ptr<Environment> environmentUsed, std::unique_ptr<RegistryStore> storeUsed)
      : environment(std::move(environmentUsed)),
        store(std::move(storeUsed)),
        ports{*store, dialogs, *environment, fileDialogs, printer, progress},
        form(ports, state) {}

  std::unique_ptr<Environment> environment;
  std::unique_ptr<RegistryStore> store;
  WxDialogs dialogs;
  WxFileDialogs fileDialogs{dialogs};
  WxPrinter printer{dialogs};
  WxProgress progress;
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
    desktop_ = std::make_unique<Desktop>(std::move(opened.environment), std::move(opened.store));
    auto* window = new MainWindow(desktop_->form);
    desktop_->dialogs.BeforeBox([window] { window->ShowChanges(); });
    window->Start();
    return true;
  }

 private:
  CommandLine commandLine_;
  std::unique_ptr<Desktop> desktop_;
};

}  // namespace

}  // namespace morvelle

int main(int argc, char** argv) {
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
