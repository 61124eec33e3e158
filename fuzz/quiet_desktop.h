#pragma once

#include <optional>
#include <string>
#include <vector>

#include "fuzz/fuzzer.h"
#include "ports/address_book.h"
#include "ports/environment.h"
#include "ports/file_dialogs.h"
#include "ports/printer.h"
#include "ports/processes.h"
#include "ports/progress.h"
#include "ports/shell.h"

namespace morvelle {

/// A desktop without files, paper or other programs, whose user answers as the input says.
class QuietDesktop final : public Dialogs,
                           public Environment,
                           public FileDialogs,
                           public Printer,
                           public Progress,
                           public AddressBook,
                           public Processes,
                           public Shell {
 public:
  /// One bit an answer: Oui or Ok where it is set, Non or Annuler where not.
  unsigned answers = 0;
  /// What is typed into input boxes.
  std::string typed;
  /// What is chosen in file dialogs; they are cancelled when it is empty.
  std::filesystem::path chosenFile;
  /// The boxes so far.
  std::vector<std::string> prompts;

  Button ShowMessage(const std::string& prompt, int style, const std::string& title) override {
    prompts.push_back(prompt);
    const auto refused = boxes_.ShowMessage(prompt, style, title);
    const bool agrees = (answers & 1U) != 0;
    answers = answers >> 1U | (answers & 1U) << 7U;
    if (!agrees) return refused;
    return refused == Button::No ? Button::Yes : Button::Ok;
  }
  std::optional<std::string> AskText(const std::string&, const std::string&,
                                     const std::string&) override {
    // A name that is refused is asked for again: the user gives up at the third time.
    if (++asked_ % 3 == 0) return std::nullopt;
    return typed;
  }

  [[nodiscard]] std::filesystem::path ProgramFile() const override { return "/nowhere/Morvelle"; }
  [[nodiscard]] std::filesystem::path UserFolder() const override { return "/nowhere"; }
  [[nodiscard]] std::optional<std::string> Variable(const std::string&) const override {
    return std::nullopt;
  }
  [[nodiscard]] std::string GetFileVersion(const std::filesystem::path&) const override {
    return "1.2.3.0";
  }
  [[nodiscard]] std::filesystem::path HostPath(const std::string&) const override {
    return "/nowhere/file";
  }
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override { return {}; }
  void SetCurrentFolder(const std::filesystem::path&) override {}

  std::optional<std::filesystem::path> AskFileToOpen(const FileQuestion&) override {
    return Chosen();
  }
  std::optional<std::filesystem::path> AskFileToSave(const FileQuestion&) override {
    return Chosen();
  }
  PrintOutcome Print(const std::string&, const std::vector<std::string>&) override {
    return PrintOutcome::Cancelled;
  }
  void Begin(const std::string&, int) override {}
  void Done(int) override {}
  void End() override {}

  bool Open(const std::filesystem::path&, BookHandle&) override { return true; }
  std::int32_t NumEntries(BookHandle&) override { return 1; }
  void GetEntries(BookHandle&, std::span<EntryId> ids) override { ids[0] = 0; }
  bool GetString(BookHandle&, EntryId, std::uint32_t, std::span<char> buffer) override {
    buffer[0] = 'a';
    return true;
  }
  void FreeEntries(BookHandle&, std::span<EntryId>) override {}
  void Close(BookHandle&) override {}
  std::vector<RunningProcess> Snapshot() override { return {}; }
  std::filesystem::path ProcessPath(ProcessId) override { return {}; }
  bool KillProcess(ProcessId) override { return false; }
  bool StartProcess(const std::filesystem::path&) override { return false; }
  void OpenFolder(const std::filesystem::path&) override {}
  void OpenLink(const std::string&) override {}
  void ShowHelp(const std::filesystem::path&, const std::string&) override {}

 private:
  [[nodiscard]] std::optional<std::filesystem::path> Chosen() const {
    if (chosenFile.empty()) return std::nullopt;
    return chosenFile;
  }

  ClosedBoxes boxes_;
  int asked_ = 0;
};

}  // namespace morvelle
