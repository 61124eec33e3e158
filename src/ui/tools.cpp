#include "app/messages/errors.h"
#include "files/file_names.h"
#include "ui/frm_morvelle.h"

/// Folders, quiet quitting, help and the about box.
namespace morvelle {

namespace {

/// What a store names need not be a folder: a desktop would start a program of that name.
void OpenFolder(const Ports& ports, const std::filesystem::path& folder,
                const std::filesystem::path& shown) {
  if (Messages::FolderExists(folder)) {
    ports.shell.OpenFolder(folder);
  } else {
    Messages(ports.dialogs).FileDoesNotExist(shown);
  }
}

/// A folder of the old machine; where it has no place here, its name there is all that can be said.
void OpenWindowsFolder(const Ports& ports, const std::string& name) {
  const auto folder = ports.environment.HostPath(name);
  OpenFolder(ports, folder, folder.empty() ? ToPath(name) : folder);
}

}  // namespace

void frmMorvelle::ConnectTools() {
  Menu("mnuAddBook").onClick = [this] { mnuAddBook_Click(); };
  Menu("mnuChangeBook").onClick = [this] { mnuChangeBook_Click(); };
  Menu("mnuAutoUpdateBook").onClick = [this] { mnuAutoUpdateBook_Click(); };
  Menu("mnuWhiteListK9").onClick = [this] { mnuWhiteListK9_Click(); };
  Menu("mnuStore").onClick = [this] { mnuStore_Click(); };
  Menu("mnuWab").onClick = [this] { mnuWab_Click(); };
  Menu("mnufiles").onClick = [this] { mnufiles_Click(); };
  Menu("mnuSilent").onClick = [this] { mnuSilent_Click(); };
  Menu("mnuHelp").onClick = [this] { mnuHelp_Click(); };
  Menu("mnuPropos").onClick = [this] { mnuPropos_Click(); };
  EnableWab(false);
}

void frmMorvelle::EnableWab(bool known) { Menu("mnuWab").SetEnabled(known); }

void frmMorvelle::ShowWhiteListK9(bool shown) { Menu("mnuWhiteListK9").SetVisible(shown); }

void frmMorvelle::mnuStore_Click() {
  Ending("mnuStore_Click", [&] { OpenWindowsFolder(ports_, state_.identity.StoreRoot); });
}

void frmMorvelle::mnuWab_Click() {
  Ending("mnuWab_Click", [&] {
    const auto& folder = state_.book.WabFolder;
    if (!folder.empty()) OpenWindowsFolder(ports_, folder);
  });
}

void frmMorvelle::mnufiles_Click() {
  Ending("mnufiles_Click", [&] {
    const auto& folder = state_.settings.UserFilesFolder;
    OpenFolder(ports_, folder, folder);
  });
}

void frmMorvelle::mnuSilent_Click() {
  Ending("mnuSilent_Click", [&] {
    auto& mode = state_.settings.QuietMode;
    mode = mode.empty() ? "Silent" : "";
    Menu("mnuSilent").SetChecked(!mode.empty());
    program_.settingsFile.Write();
  });
}

std::string frmMorvelle::HelpPage() const {
  if (fraMerge.Visible()) return "fusion.htm";
  if (fraOrderRules.Enabled()) return "ordre.htm";
  if (editing_.openRuleId.empty()) return {};
  return editing_.modes.addressBook ? "carnet.htm" : "mots.htm";
}

void frmMorvelle::mnuHelp_Click() {
  Ending("mnuHelp_Click", [&] { ports_.shell.ShowHelp(state_.settings.helpFile, HelpPage()); });
}

void frmMorvelle::mnuPropos_Click() {
  Ending("mnuPropos_Click", [&] {
    aboutBox.Form_Load();
    if (onAbout) onAbout();
  });
}

}  // namespace morvelle
