#include <wx/app.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "app/program.h"
#include "platform/command_line.h"
#include "platform/dialogs_wx.h"
#include "platform/environment_posix.h"
#include "platform/host_files.h"
#include "platform/registry_hive.h"
#include "platform/registry_regfile.h"
#include "platform/sample_identity.h"
#include "ui/frm_morvelle.h"
#include "view/french.h"
#include "view/main_window.h"

namespace morvelle {

namespace {

/// What lives as long as the program does, in the order in which one needs the other.
struct Desktop {
  Desktop(std::unique_ptr<PosixEnvironment> environmentUsed,
          std::unique_ptr<RegistryStore> storeUsed)
      : environment(std::move(environmentUsed)),
        store(std::move(storeUsed)),
        ports{*store, dialogs, *environment},
        form(ports, state) {}

  std::unique_ptr<PosixEnvironment> environment;
  std::unique_ptr<RegistryStore> store;
  WxDialogs dialogs;
  Ports ports;
  ProgramState state;
  frmMorvelle form;
};

/// Shipped beside the program: `bin/morvelle` and `share/morvelle/`.
std::filesystem::path ShippedSample(const PosixEnvironment& environment) {
  return environment.ProgramFile().parent_path().parent_path() / "share" / "morvelle" / "identite";
}

class MorvelleApp final : public wxApp {
 public:
  explicit MorvelleApp(CommandLine commandLine) : commandLine_(std::move(commandLine)) {}

  bool OnInit() override {
    UseFrenchCatalogue();
    SetAppName("morvelle");
    SetAppDisplayName("Morvelle");
    auto environment = std::make_unique<PosixEnvironment>(
        WindowsFolders{commandLine_.drives, commandLine_.profile, {}}, MORVELLE_VERSION);
    auto store = OpenStore(*environment);
    if (store == nullptr) return false;
    desktop_ = std::make_unique<Desktop>(std::move(environment), std::move(store));
    auto* window = new MainWindow(desktop_->form);
    desktop_->dialogs.BeforeBox([window] { window->ShowChanges(); });
    window->Start();
    return true;
  }

 private:
  std::unique_ptr<RegistryStore> OpenStore(PosixEnvironment& environment) {
    WxDialogs dialogs;
    std::string error;
    try {
      const auto file = commandLine_.file ? *commandLine_.file
                                          : OwnSampleIdentity(ShippedSample(environment),
                                                              environment.UserFolder());
      environment.SetRegistryFolder(file.parent_path());
      // An NTUSER.DAT lies in the profile's own folder.
      const bool isHive = IsHive(file);
      if (isHive && !commandLine_.profile) environment.SetProfile(file.parent_path());
      const auto open = isHive ? OpenHive : OpenRegFile;
      auto opened = open(file, MakeHostFiles(), [] { return std::chrono::system_clock::now(); });
      if (opened.store != nullptr) return std::move(opened.store);
      error = std::move(opened.error);
    } catch (const std::filesystem::filesystem_error& failure) {
      error = FromUtf16Lossy(failure.path1().u16string()) +
              std::string(" : ne peut être ouvert ("_cp) +
              FromUtf8(failure.code().message()).value_or("") + ")";
    }
    dialogs.ShowMessage(error, kBoxStop, std::string(kAppTitle));
    return nullptr;
  }

  CommandLine commandLine_;
  std::unique_ptr<Desktop> desktop_;
};

}  // namespace

}  // namespace morvelle

int main(int argc, char** argv) {
  auto commandLine = morvelle::ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
  if (!commandLine.error.empty()) {
    std::fprintf(stderr, "morvelle : %s\n", commandLine.error.c_str());
    return 2;
  }
  if (commandLine.help) {
    std::fputs(morvelle::CommandLineHelp().c_str(), stdout);
    return 0;
  }
  if (commandLine.version) {
    std::printf("Morvelle %s\n", MORVELLE_VERSION);
    return 0;
  }
  morvelle::AskDesktopForFrench();
  wxApp::SetInstance(new morvelle::MorvelleApp(std::move(commandLine)));
  int none = 1;
  return wxEntry(none, argv);
}
