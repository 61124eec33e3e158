#pragma once

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "ports/address_book.h"
#include "ports/dialogs.h"
#include "ports/environment.h"
#include "ports/file_dialogs.h"
#include "ports/printer.h"
#include "ports/processes.h"
#include "ports/progress.h"
#include "ports/shell.h"

namespace morvelle::bench {

/// A desktop on which nothing is asked, until `agrees` says yes to everything: any other box but
/// the missing folder store's is a failure of the benchmark, and so is paper without `hasPaper`. A
/// file dialog gives the file set before it.
class SilentDesktop final : public Dialogs,
                            public Environment,
                            public FileDialogs,
                            public Printer,
                            public Progress,
                            public AddressBook,
                            public Processes,
                            public Shell {
 public:
  explicit SilentDesktop(std::filesystem::path folder) : folder_(std::move(folder)) {}

  bool agrees = false;
  /// Answer of every input box.
  std::string typed;

  Button ShowMessage(const std::string& prompt, int style, const std::string& title) override {
    if (agrees) return (style & kBoxYesNo) != 0 ? Button::Yes : Button::Ok;
    if (title != "Folders") throw std::runtime_error(title + ": " + prompt);
    return Button::Ok;
  }
  std::optional<std::string> AskText(const std::string& prompt, const std::string& /*title*/,
                                     const std::string& /*proposal*/) override {
    if (!agrees) throw std::runtime_error(prompt);
    return typed;
  }
  [[nodiscard]] std::filesystem::path ProgramFile() const override { return folder_ / "morvelle"; }
  [[nodiscard]] std::filesystem::path UserFolder() const override { return folder_; }
  [[nodiscard]] std::optional<std::string> Variable(const std::string& /*name*/) const override {
    return std::nullopt;
  }
  [[nodiscard]] std::string GetFileVersion(const std::filesystem::path& /*file*/) const override {
    return "0.0.0.0";
  }
  [[nodiscard]] std::filesystem::path HostPath(const std::string& /*windowsPath*/) const override {
    return folder_ / "Folders.dbx";
  }
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override {
    return std::chrono::system_clock::now();
  }
  void SetCurrentFolder(const std::filesystem::path& /*folder*/) override {}

  std::filesystem::path chosenFile;
  std::optional<std::filesystem::path> AskFileToOpen(const FileQuestion& /*question*/) override {
    return chosenFile;
  }
  std::optional<std::filesystem::path> AskFileToSave(const FileQuestion& /*question*/) override {
    return chosenFile;
  }
  bool hasPaper = false;
  PrintOutcome Print(const std::string& title, const std::vector<std::string>& /*lines*/) override {
    if (hasPaper) return PrintOutcome::Printed;
    throw std::runtime_error(title);
  }
  void Begin(const std::string& /*what*/, int /*steps*/) override {}
  void Done(int /*steps*/) override {}
  void End() override {}
  /// Addresses of the book.
  std::vector<std::string> addresses = {"a"};
  // No other program, nothing to open.
  bool Open(const std::filesystem::path& /*file*/, BookHandle& /*book*/) override { return true; }
  std::int32_t NumEntries(BookHandle& /*book*/) override {
    return static_cast<std::int32_t>(addresses.size());
  }
  void GetEntries(BookHandle& /*book*/, std::span<EntryId> ids) override {
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = static_cast<EntryId>(i);
  }
  bool GetString(BookHandle& /*book*/, EntryId entry, std::uint32_t /*property*/,
                 std::span<char> buffer) override {
    const auto& address = addresses[static_cast<std::size_t>(entry)];
    std::copy_n(address.begin(), std::min(address.size(), buffer.size()), buffer.begin());
    return true;
  }
  void FreeEntries(BookHandle& /*book*/, std::span<EntryId> /*ids*/) override {}
  void Close(BookHandle& /*book*/) override {}
  std::vector<RunningProcess> Snapshot() override { return {}; }
  std::filesystem::path ProcessPath(ProcessId /*process*/) override { return {}; }
  bool KillProcess(ProcessId /*process*/) override { return false; }
  bool StartProcess(const std::filesystem::path& /*program*/) override { return false; }
  void OpenFolder(const std::filesystem::path& /*folder*/) override {}
  void OpenLink(const std::string& /*address*/) override {}
  void ShowHelp(const std::filesystem::path& /*helpFile*/, const std::string& /*page*/) override {}

 private:
  std::filesystem::path folder_;
};

}  // namespace morvelle::bench
