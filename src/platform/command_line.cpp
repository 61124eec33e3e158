#include "platform/command_line.h"

namespace morvelle {

namespace {

/// A path from an argument: UTF-8 on Windows, elsewhere the bytes as they are.
std::filesystem::path PathOf(const std::string& argument) {
  return std::filesystem::absolute(std::u8string(argument.begin(), argument.end()));
}

/// "C:=/mnt/xp", the colon being optional.
bool TakeDrive(const std::string& text, CommandLine& line) {
  const auto equals = text.find('=');
  if (equals == std::string::npos || equals + 1 == text.size()) return false;
  const auto name = text.substr(0, equals);
  if (name.empty() || name.size() > 2 || (name.size() == 2 && name[1] != ':')) return false;
  const char letter =
      name[0] >= 'a' && name[0] <= 'z' ? static_cast<char>(name[0] - 'a' + 'A') : name[0];
  if (letter < 'A' || letter > 'Z') return false;
  line.drives[letter] = PathOf(text.substr(equals + 1));
  return true;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  CommandLine line;
  bool optionsOver = false;
  for (std::size_t i = 0; i < arguments.size() && line.error.empty(); ++i) {
    const auto& argument = arguments[i];
    const bool hasNext = i + 1 < arguments.size();
    if (optionsOver || argument.empty() || argument[0] != '-') {
      if (line.file) {
        line.error = "Un seul fichier peut être ouvert : " + argument;
      } else {
        line.file = PathOf(argument);
      }
    } else if (argument == "--") {
      optionsOver = true;
    } else if (argument == "--aide" || argument == "--help" || argument == "-h") {
      line.help = true;
    } else if (argument == "--version") {
      line.version = true;
    } else if (argument == "--lecteur" && hasNext) {
      if (!TakeDrive(arguments[++i], line)) {
        line.error = "--lecteur attend une lettre et un dossier, comme C:=/mnt/xp";
      }
    } else if (argument == "--profil" && hasNext) {
      line.profile = PathOf(arguments[++i]);
    } else {
      line.error = "Option inconnue ou incomplète : " + argument;
    }
  }
  return line;
}

std::string CommandLineHelp() {
  return "Usage : morvelle [OPTIONS] [FICHIER]\n"
         "\n"
         "Ouvre les règles de message d'une identité d'Outlook Express dans FICHIER, un export du\n"
         "registre (.reg) ou, sous Linux, la ruche NTUSER.DAT d'un ancien disque. Sans FICHIER :\n"
         "sous Windows le registre, ailleurs votre exemplaire de l'identité d'exemple.\n"
         "\n"
         "  --lecteur C:=DOSSIER  dossier où se trouve le lecteur C: de l'ancienne machine\n"
         "                        (sans cette option : drive_c à côté de FICHIER)\n"
         "  --profil DOSSIER      dossier désigné par %UserProfile% (sans cette option : celui de\n"
         "                        la ruche)\n"
         "  --version             affiche la version\n"
         "  --aide                affiche cette aide\n";
}

}  // namespace morvelle
