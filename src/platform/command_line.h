#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace morvelle {

/// What the program was started with: `morvelle [OPTIONS] [FICHIER]`.
struct CommandLine {
  /// Registry file; the user's copy of the sample identity when there is none.
  std::optional<std::filesystem::path> file;
  /// `--lecteur C:=DOSSIER`: folders of drives, by capital letter.
  std::map<char, std::filesystem::path> drives;
  /// `--profil DOSSIER`: what %UserProfile% stands for.
  std::optional<std::filesystem::path> profile;
  bool help = false;
  bool version = false;
  /// In French, UTF-8; empty when all was understood.
  std::string error;
};

/// `arguments` without the program's own name, as the system encodes them.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

/// UTF-8.
std::string CommandLineHelp();

}  // namespace morvelle
