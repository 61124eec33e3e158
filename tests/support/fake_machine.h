#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/program.h"
#include "ports/file_dialogs.h"
#include "tests/support/fake_environment.h"
#include "tests/support/fake_registry.h"
#include "tests/support/rule_set.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/temp_folder.h"

namespace morvelle {

/// An address book that a test fills. It is to be closed, its entries freed.
class FakeAddressBook : public AddressBook {
 public:
  ~FakeAddressBook() override { EXPECT_EQ(open_ + given_, 0U) << "the book was left open"; }

  /// The e-mail address of each entry, as it is copied into the buffer; nothing where it has none.
  std::vector<std::optional<std::string>> addresses;
  std::int32_t leftOut = 0;
  bool readable = true;
  std::filesystem::path openedFile;

  bool Open(const std::filesystem::path& file, BookHandle& /*book*/) override {
    openedFile = file;
    open_ += readable ? 1 : 0;
    return readable;
  }
  std::int32_t NumEntries(BookHandle& /*book*/) override {
    return static_cast<std::int32_t>(addresses.size());
  }
  void GetEntries(BookHandle& /*book*/, std::span<EntryId> ids) override {
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = kFirstId + static_cast<EntryId>(i);
    given_ += ids.size();
  }
  bool GetString(BookHandle& /*book*/, EntryId entry, std::uint32_t property,
                 std::span<char> buffer) override {
    if (property != kPropertyEmailAddress) return false;
    const auto& address = addresses.at(static_cast<std::size_t>(entry - kFirstId));
    if (!address || address->size() > buffer.size()) return false;
    std::copy(address->begin(), address->end(), buffer.begin());
    return true;
  }
  std::int32_t LeftOut(BookHandle& /*book*/) override { return open_ > 0 ? leftOut : 0; }
  void FreeEntries(BookHandle& /*book*/, std::span<EntryId> ids) override { given_ -= ids.size(); }
  void Close(BookHandle& /*book*/) override { open_ -= open_ > 0 ? 1 : 0; }

 private:
  static constexpr EntryId kFirstId = 1000;
  std::size_t open_ = 0;
  std::size_t given_ = 0;
};

/// A printer that keeps what it was given; `outcome` is what the user or the paper makes of it.
class FakePrinter final : public Printer {
 public:
  PrintOutcome outcome = PrintOutcome::Printed;
  std::vector<std::vector<std::string>> jobs;
  std::vector<std::string> titles;

  PrintOutcome Print(const std::string& title, const std::vector<std::string>& lines) override {
    titles.push_back(title);
    jobs.push_back(lines);
    return outcome;
  }
};

/// Programs that a test says to be running.
class FakeProcesses : public Processes {
 public:
  std::vector<RunningProcess> running;
  std::filesystem::path path;
  bool canBeStopped = true;
  /// Whatever is told to end has just done so.
  bool endsByItself = false;
  bool canBeStarted = true;
  std::vector<ProcessId> killed;
  std::vector<std::filesystem::path> started;

  std::vector<RunningProcess> Snapshot() override { return running; }
  std::filesystem::path ProcessPath(ProcessId process) override {
    const auto isIt = [&](const RunningProcess& one) { return one.id == process; };
    return std::any_of(running.begin(), running.end(), isIt) ? path : std::filesystem::path{};
  }
  bool KillProcess(ProcessId process) override {
    if (!canBeStopped) return false;
    std::erase_if(running, [&](const RunningProcess& one) { return one.id == process; });
    if (endsByItself) return false;
    killed.push_back(process);
    return true;
  }
  bool StartProcess(const std::filesystem::path& program) override {
    if (!canBeStarted) return false;
    started.push_back(program);
    return true;
  }
};

/// Keeps the works that were shown; one that nests or goes beyond its end fails the test.
class FakeProgress final : public Progress {
 public:
  std::vector<std::string> works;

  void Begin(const std::string& what, int steps) override {
    EXPECT_FALSE(running_) << "works nest";
    running_ = true;
    steps_ = steps;
    works.push_back(what);
  }
  void Done(int steps) override {
    EXPECT_TRUE(running_);
    EXPECT_LE(steps, steps_);
  }
  void End() override { running_ = false; }

 private:
  bool running_ = false;
  int steps_ = 0;
};

/// Notes what the desktop was asked to open.
class FakeShell : public Shell {
 public:
  std::vector<std::filesystem::path> folders;
  std::vector<std::string> links;
  std::vector<std::string> helpPages;
  std::filesystem::path helpFile;

  void OpenFolder(const std::filesystem::path& folder) override { folders.push_back(folder); }
  void OpenLink(const std::string& address) override { links.push_back(address); }
  void ShowHelp(const std::filesystem::path& file, const std::string& page) override {
    helpFile = file;
    helpPages.push_back(page);
  }
};

/// File dialogs that a test plays by a script: each takes the next answer, in order; one without an
/// answer, or an answer never asked for, fails the test.
class ScriptedFileDialogs final : public FileDialogs {
 public:
  ~ScriptedFileDialogs() override {
    EXPECT_TRUE(answers_.empty()) << "a file dialog was never shown";
  }
  /// The file chosen in the next dialog; nothing cancels it.
  void Choose(std::optional<std::filesystem::path> file) { answers_.push_back(std::move(file)); }

  /// Every question so far.
  std::vector<FileQuestion> asked;

  std::optional<std::filesystem::path> AskFileToOpen(const FileQuestion& question) override {
    asked.push_back(question);
    if (answers_.empty()) {
      ADD_FAILURE() << "unexpected file dialog: " << question.title;
      return std::nullopt;
    }
    auto answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
  }
  std::optional<std::filesystem::path> AskFileToSave(const FileQuestion& question) override {
    auto file = AskFileToOpen(question);
    if (file) file = WithExtensionOf(question.pattern, std::move(*file));
    return file;
  }

 private:
  std::deque<std::optional<std::filesystem::path>> answers_;
};

/// What lies around the program on a machine of a test's own, but for the registry, the boxes and
/// the printer.
struct FakeMachine : testing::Test {
  TempFolder folder;
  FakeEnvironment environment{folder.Path()};
  FakeAddressBook addressBook;
  FakeProcesses processes;
  FakeShell shell;
};

/// The same with boxes, file dialogs, printer and progress that a test plays by a script.
struct ScriptedMachine : FakeMachine {
  Ports On(RegistryStore& store) {
    return {store,    dialogs,     environment, fileDialogs, printer,
            progress, addressBook, processes,   shell};
  }
  ScriptedDialogs dialogs;
  ScriptedFileDialogs fileDialogs;
  FakePrinter printer;
  FakeProgress progress;
};

}  // namespace morvelle
