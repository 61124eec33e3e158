#include "app/settings.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

std::string WholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

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

/// Writes a file beside and gives it the name of the other, which is whole at every moment; its
/// rights stay.
void Replace(const std::filesystem::path& path, const std::string& content) {
  std::error_code error;
  // The file itself behind links.
  auto target = std::filesystem::canonical(path, error);
  if (error) target = path;
  const auto old = std::filesystem::status(target, error);
  const bool wasThere = std::filesystem::exists(old);
  // A new name would pass over the rights of the file.
  if (wasThere && !std::ofstream(target, std::ios::binary | std::ios::app)) {
    throw RuntimeError(ErrorNumber::PermissionDenied);
  }
  auto aside = target;
  aside += ".tmp";
  std::ofstream file(aside, std::ios::binary | std::ios::trunc);
  if (!file) throw RuntimeError(ErrorNumber::PermissionDenied);
  file << content;
  file.close();
  const bool whole = !file.fail();
  if (whole && wasThere) std::filesystem::permissions(aside, old.permissions(), error);
  if (whole) std::filesystem::rename(aside, target, error);
  if (whole && !error) return;
  std::error_code ignored;
  std::filesystem::remove(aside, ignored);
  if (whole) throw std::system_error(error);
  throw RuntimeError(ErrorNumber::DiskFull);
}

}  // namespace

bool Settings::BookIsAutomatic() const { return BookMode == "Auto"; }

bool Settings::IsQuiet() const { return EqualIgnoringCase(QuietMode, "Silent"); }

void SettingsFile::Read() {
  Trap(messages_.Boxes(), "ReadSettings", [&] {
    settings_.QuietMode.clear();
    if (!messages_.FileExists(Path())) return;
    const auto content = WholeFile(Path());
    std::string_view rest = content;
    if (!rest.empty()) settings_.BookMode = TakeLine(rest);
    if (!rest.empty()) settings_.QuietMode = TakeLine(rest);
  });
}

void SettingsFile::Write() {
  TrapAndContinue(messages_.Boxes(), "WriteSettings", [&] {
    const auto content = settings_.BookMode + "\r\n" + settings_.QuietMode + "\r\n";
    if (WholeFile(Path()) != content) Replace(Path(), content);
  });
}

}  // namespace morvelle
