#include "wab/k9_whitelist.h"

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/whole_file.h"
#include "wab/processes.h"
#include "wab/whitelist_file.h"

namespace morvelle {

namespace {

constexpr const char* kK9Key = "Software\\KeirNet\\K9";
constexpr std::string_view kFileName = "whitelist.txt";
constexpr std::string_view kK9Program = "K9-F.exe";
constexpr std::string_view kNotStopped =
    "K9 n'a pas pu être arrêté : sa 'whitelist' n'a pas été modifiée"_cp;
constexpr std::string_view kNotStarted = "K9 n'a pas pu être redémarré"_cp;

/// False, after saying so, when the whitelist is too large. Error 53 when it cannot be read, 70
/// when it is marked as not to be written: a new file under its name would pass over the mark.
bool MergeInto(const Messages& messages, const std::filesystem::path& emailsFile,
               std::vector<std::string> addresses, std::chrono::system_clock::time_point now) {
  FileFault fault;
  const auto present = ReadWholeFile(emailsFile, kTextFileLimit, &fault);
  if (TellTooLarge(messages, emailsFile, fault)) return false;
  if (!present) throw RuntimeError(ErrorNumber::FileNotFound);
  if (IsReadOnly(emailsFile)) throw RuntimeError(ErrorNumber::PermissionDenied);
  const auto merged = MergedWhitelist(*present, std::move(addresses));
  if (merged != *present) ReplaceWholeFile(emailsFile, merged, now);
  return true;
}

}  // namespace

std::filesystem::path K9Whitelist::EmailsPath() {
  return Trap(registry_.Boxes().Boxes(), "EmailsPath", [&]() -> std::filesystem::path {
    const OpenedKey key(registry_, kK9Key, false);
    if (!key.IsOpen()) return {};
    const auto folder = TextOf(registry_.Peek(key.Handle(), "EmailsPath"));
    if (folder.empty()) return {};
    auto file = environment_.HostPath(folder + "\\DB\\" + std::string(kFileName));
    // Through a link it could be any file, which would then be made over into a list.
    const bool isIt = EqualIgnoringCase(PathText(file.filename()), kFileName);
    return isIt && registry_.Boxes().FileExists(file) ? file : std::filesystem::path{};
  });
}

void K9Whitelist::UpDateWhiteListK9(const std::filesystem::path& emailsFile) {
  const auto& messages = registry_.Boxes();
  Trap(messages.Boxes(), "UpDateWhiteListK9", [&] {
    auto addresses = reader_.ReadWab();
    if (addresses.empty()) return;
    std::filesystem::path program;
    const auto process = FindProcess(processes_, kK9Program);
    if (process > 0) {
      program = processes_.ProcessPath(process);
      // Neither stopped for good nor left to write its own list over ours; one that has ended
      // meanwhile does neither.
      if ((program.empty() || !processes_.KillProcess(process)) &&
          FindProcess(processes_, kK9Program) > 0) {
        messages.Msg(kNotStopped, kBoxStop);
        return;
      }
    }
    // It was found when the program started: something else may stand there by now.
    if (EmailsPath() != emailsFile) throw RuntimeError(ErrorNumber::FileNotFound);
    const bool merged = MergeInto(messages, emailsFile, std::move(addresses), environment_.Now());
    if (!program.empty() && !processes_.StartProcess(program)) {
      messages.Msg(kNotStarted, kBoxExclamation);
    }
    if (merged) messages.Msg("La 'whitelist' de K9 a été mise à jour !"_cp, kBoxInformation);
  });
}

}  // namespace morvelle
