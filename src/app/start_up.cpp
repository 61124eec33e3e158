#include "app/start_up.h"

#include <filesystem>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "disk/host_files.h"
#include "wab/book_rule.h"

namespace morvelle {

namespace {

constexpr std::string_view kBookRuleNotMade =
    "La règle \"Carnet d'adresses\" ne peut être mise à jour.\r"
    "Cette règle n'a pas été créée"_cp;
constexpr std::string_view kBookRuleUpdate =
    "Votre règle \"Carnet d'adresses\" va être mise à jour"_cp;

}  // namespace

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
  TrapAndContinue(ports_.dialogs, "InitVLX", [&] { MakeOwnFolder(settings.UserFilesFolder); });
}

void StartUp::OpenBook(StartUpWindow& window) {
  const bool automatic = state_.settings.BookIsAutomatic();
  // Whether it can be read is all that is wanted of it here: what needs its addresses reads them.
  const bool opened = program_.addressReader.OpenWab();
  program_.addressReader.CloseWab();
  if (!automatic) return;
  if (opened) {
    UpdateBookRule(window);
  } else {
    program_.messages.Msg(kBookRuleNotMade, kBoxExclamation);
  }
}

void StartUp::UpdateBookRule(StartUpWindow& window) {
  const int row = RowOfBookRule(state_.tables);
  if (row < 0) return;
  if (program_.messages.Msg(kBookRuleUpdate, kBoxOkCancel + kBoxQuestion) != Button::Ok) return;
  const auto words = program_.addressReader.ReadWords();
  if (words.empty()) return;
  WriteBookWords(program_.registry, state_.identity.MailKey, state_.tables, row, words);
  window.LoadRules();
}

void StartUp::InitVLX(StartUpWindow& window) {
  Trap(ports_.dialogs, "InitVLX", [&] {
    FindOwnPlaces();
    state_.tables.SlotType = {"12", "8", "9", "22"};
    IdentityFinder finder(program_.registry, ports_.environment, window.Panels(), state_.identity);
    if (!finder.FindID()) {
      program_.damage.EndStart();
      return;
    }
    window.EnableWab(program_.addressReader.FindWab());
    window.LoadRules();
    program_.damage.EndStart();
    window.TickAutoUpdateBook(state_.settings.BookIsAutomatic());
    OpenBook(window);
    program_.deletedItems.Read();
    window.FinishStart();
    state_.EmailsFile = program_.k9.EmailsPath();
    window.ShowWhiteListK9(!state_.EmailsFile.empty());
  });
}

}  // namespace morvelle
