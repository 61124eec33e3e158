#include "app/settings.h"

#include <algorithm>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "disk/whole_file.h"

namespace morvelle {

namespace {

/// The next line of the text, which loses it and its end (CR, LF or both).
std::string TakeLine(std::string_view& text) {
  const auto end = std::min(text.find_first_of("\r\n"), text.size());
  std::string line(text.substr(0, end));
  text.remove_prefix(end);
  if (text.starts_with("\r\n")) {
    text.remove_prefix(2);
  } else if (!text.empty()) {
    text.remove_prefix(1);
  }
  return line;
}

}  // namespace

bool Settings::BookIsAutomatic() const { return BookMode == "Auto"; }

bool Settings::IsQuiet() const { return EqualIgnoringCase(QuietMode, "Silent"); }

void SettingsFile::Read() {
  Trap(messages_.Boxes(), "ReadSettings", [&] {
    settings_.QuietMode.clear();
    if (!messages_.FileExists(Path())) return;
    FileFault fault;
    const auto content = ReadWholeFile(Path(), kSmallFileLimit, &fault);
    // Taken for empty, it would be written over.
    if (TellTooLarge(messages_, Path(), fault)) throw ProgramEnd{};
    if (!content) throw RuntimeError(ErrorNumber::PermissionDenied);
    std::string_view rest = *content;
    if (!rest.empty()) settings_.BookMode = TakeLine(rest);
    if (!rest.empty()) settings_.QuietMode = TakeLine(rest);
  });
}

bool SettingsFile::Write() {
  bool written = false;
  TrapAndContinue(messages_.Boxes(), "WriteSettings", [&] {
    const auto content = settings_.BookMode + "\r\n" + settings_.QuietMode + "\r\n";
    if (ReadWholeFile(Path(), kSmallFileLimit) != content) {
      // A new file under that name would pass over the mark.
      if (IsReadOnly(Path())) throw RuntimeError(ErrorNumber::PermissionDenied);
      WriteWholeFile(Path(), content);
    }
    written = true;
  });
  return written;
}

}  // namespace morvelle
