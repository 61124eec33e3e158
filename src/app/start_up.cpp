#include "app/start_up.h"

#include <filesystem>

#include "app/messages/errors.h"

namespace morvelle {

void StartUp::FindOwnPlaces() {
  auto& settings = state_.settings;
  // A trailing empty component gives one separator at the end, a drive root's own included.
  settings.AppPath = ports_.environment.UserFolder() / "";
  ports_.environment.SetCurrentFolder(settings.AppPath);
  settings.VersionText =
      "Version " + ports_.environment.GetFileVersion(ports_.environment.ProgramFile());
  program_.settingsFile.Read();
  program_.settingsFile.Write();
  settings.helpFile = settings.AppPath / "Morvelle.chm";
  settings.UserFilesFolder = settings.AppPath / "Fichiers VLX";
  TrapAndContinue(ports_.dialogs, "InitVLX", [&] {
    if (!Messages::FolderExists(settings.UserFilesFolder)) {
      std::filesystem::create_directory(settings.UserFilesFolder);
    }
  });
}

void StartUp::InitVLX(StartUpWindow& window) {
  Trap(ports_.dialogs, "InitVLX", [&] {
    FindOwnPlaces();
    state_.tables.SlotType = {"12", "8", "9", "22"};
    IdentityFinder finder(program_.registry, ports_.environment, window.Panels(), state_.identity);
    if (!finder.FindID()) return;
    window.LoadRules();
    window.TickAutoUpdateBook(state_.settings.BookIsAutomatic());
    program_.deletedItems.Read();
    window.FinishStart();
  });
}

}  // namespace morvelle
