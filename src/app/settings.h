#pragma once

#include <filesystem>
#include <string>

#include "app/messages/messages.h"

namespace morvelle {

/// Where the program stands and how its user wants it.
struct Settings {
  /// The program's folder, ending with a separator: settings file and user's files lie there.
  std::filesystem::path AppPath;
  /// "Version " and the four version numbers.
  std::string VersionText;
  /// "Auto" when the address-book rule is refreshed at every start; any other text is kept.
  std::string BookMode;
  /// "Silent", in any letter case, when quitting asks nothing; any other text is kept.
  std::string QuietMode;
  /// Default folder of the user's exported files.
  std::filesystem::path UserFilesFolder;
  std::filesystem::path helpFile;

  [[nodiscard]] bool BookIsAutomatic() const;
  [[nodiscard]] bool IsQuiet() const;
};

/// `Morvelle.ini`: two lines of Windows-1252 text ended by CR LF, BookMode and QuietMode.
class SettingsFile {
 public:
  SettingsFile(const Messages& messages, Settings& settings)
      : messages_(messages), settings_(settings) {}

  /// Lines that are not there leave the defaults. A file that cannot be read ends the program.
  void Read();
  /// Writes the file whole, or leaves it as it was and tells why; false then.
  bool Write();

 private:
  [[nodiscard]] std::filesystem::path Path() const { return settings_.AppPath / "Morvelle.ini"; }

  const Messages& messages_;
  Settings& settings_;
};

}  // namespace morvelle
