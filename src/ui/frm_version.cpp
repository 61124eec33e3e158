#include "ui/frm_version.h"

#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <string>
#include <system_error>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr std::string_view kCredits =
    "Ce programme a été réalisé par l'équipe de Morvelle et ses utilisateurs."_cp;
constexpr std::string_view kDisclaimer =
    "\rLe programme utilise, pour les fonctions relatives au carnet d'adresses,\r"
    "la bibliothèque kWab (kWab.dll), qui appartient à son auteur.\r"
    "Le contrat de licence correspondant (Licence-kWab.txt) se trouve dans\r"
    "le répertoire de l'application."_cp;

/// The file's date as dd/mm/yyyy hh:mm:ss, local time; empty for a file that is not there.
std::string DateOf(const std::filesystem::path& file) {
  std::error_code error;
  const auto written = std::filesystem::last_write_time(file, error);
  if (error) return {};
  const auto system = std::chrono::file_clock::to_sys(written);
  const auto seconds = std::chrono::system_clock::to_time_t(
      std::chrono::time_point_cast<std::chrono::system_clock::duration>(system));
  // The program has one thread; localtime is the one form that every system has.
  const std::tm* local = std::localtime(&seconds);  // NOLINT
  if (local == nullptr) return {};
  std::array<char, 32> text{};
  const auto length = std::strftime(text.data(), text.size(), "%d/%m/%Y %H:%M:%S", local);
  return {text.data(), length};
}

}  // namespace

frmVersion::frmVersion(Ports& ports, const ProgramState& state)
    : form("frmVersion", nullptr, std::string("À propos de "_cp) + std::string(kAppTitle)),
      Picture1("Picture1", &form),
      picIcon("picIcon", &form),
      lblDescription("lblDescription", &form),
      lblVersion("lblVersion", &form),
      lblUpDateLine("lblUpDateLine", &form, "Mises à jour sur le site d'Orvic"_cp),
      lblUpDate("lblUpDate", &form, MORVELLE_UPDATE_ADDRESS),
      lblDisclaimer("lblDisclaimer", &form, kDisclaimer),
      cmdOK("cmdOK", &form, "OK"),
      ports_(ports),
      state_(state) {
  lblDescription.SetCaption(
      std::string(kAppTitle) +
      std::string(" est un programme destiné à compléter le gestionnaire des 'Règles\r\n"_cp) +
      std::string("de message' d'Outlook Express\r\n"_cp) + std::string(kCredits));
  const bool hasAddress = !lblUpDate.Caption().empty();
  lblUpDateLine.SetVisible(hasAddress);
  lblUpDate.SetVisible(hasAddress);
  lblUpDate.onClick = [this] { lblUpDate_Click(); };
  cmdOK.onClick = [this] {
    if (onClose) onClose();
  };
}

void frmVersion::Form_Load() {
  Trap(ports_.dialogs, "Form_Load", [&] {
    lblVersion.SetCaption(state_.settings.VersionText + " du " +
                          DateOf(ports_.environment.ProgramFile()));
  });
}

void frmVersion::lblUpDate_Click() {
  Trap(ports_.dialogs, "lblUpDate_Click", [&] { ports_.shell.OpenLink(lblUpDate.Caption()); });
}

}  // namespace morvelle
