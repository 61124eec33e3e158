#include <windows.h>

#include "platform/desktop.h"
#include "platform/environment_win32.h"
#include "platform/programs_win32.h"
#include "platform/shell_win32.h"
#include "platform/system_processes.h"
#include "platform/system_shell.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/temp_folder.h"
#include "tests/windows/started_process.h"

namespace morvelle {

namespace {

constexpr const char* kName = "K9-F.exe";

ProcessId Find(Processes& processes) {
  for (const auto& process : processes.Snapshot()) {
    if (process.exeName == kName) return process.id;
  }
  return 0;
}

/// What tests.cmake builds beside this program.
std::filesystem::path BesideUs(const std::string& name) {
  return Win32Environment(std::nullopt).ProgramFile().parent_path() / name;
}

/// The stand-in of K9's filter, which tests.cmake builds beside this program.
TEST(WindowsProcesses, AProgramIsFoundEndedAndStartedAgain) {
  const auto processes = MakeProcesses();
  const FileFolder folder;
  // A path with blanks, part of which is a program too, and with letters that no French code page
  // has.
  const auto file = folder / "Program Files" / u"\u0414\u043E\u043C" / kName;
  std::filesystem::create_directories(file.parent_path());
  const auto built = BesideUs(kName);
  std::filesystem::copy_file(built, file);
  std::filesystem::copy_file(built, folder / "Program.exe");
  ASSERT_EQ(Find(*processes), 0U);
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(processes->StartProcess(file));
    const auto process = Find(*processes);
    ASSERT_NE(process, 0U);
    ASSERT_TRUE(HasItsPath(*processes, process));
    EXPECT_TRUE(std::filesystem::equivalent(processes->ProcessPath(process), file));
    EXPECT_TRUE(processes->KillProcess(process));
    EXPECT_EQ(Find(*processes), 0U);
    // Gone, its file is free.
    EXPECT_TRUE(::DeleteFileW(file.c_str()));
    std::filesystem::copy_file(built, file);
  }
}

TEST(WindowsProcesses, WhatIsNoProgramIsRefused) {
  const auto processes = MakeProcesses();
  const FileFolder folder;
  EXPECT_FALSE(processes->StartProcess(folder / "absent.exe"));
  // It lies beside this program, where a search would find it.
  EXPECT_FALSE(processes->StartProcess(kName));
  EXPECT_EQ(processes->ProcessPath(0), "[System Process]");
  EXPECT_EQ(processes->ProcessPath(4), "System");
  constexpr ProcessId kNone = 0xFFFFFFF0;
  EXPECT_EQ(processes->ProcessPath(kNone), "");
  EXPECT_FALSE(processes->KillProcess(kNone));
}

TEST(WindowsProcesses, AProgramGetsNoHandleOfOurs) {
  const auto processes = MakeProcesses();
  const FileFolder folder;
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  const auto file = folder / "a.txt";
  auto* const handle = ::CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                     CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_TRUE(processes->StartProcess(BesideUs(kName)));
  ::CloseHandle(handle);
  EXPECT_TRUE(::DeleteFileW(file.c_str())) << "it is open in the other program";
  EXPECT_TRUE(processes->KillProcess(Find(*processes)));
}

TEST(WindowsProcesses, NoLibraryComesFromTheWorkingFolder) {
  const FileFolder folder;
  std::filesystem::copy_file(BesideUs("kWab.dll"), folder / "ailleurs.dll");
  std::filesystem::current_path(folder.Path());
  PrepareProcess();
  EXPECT_EQ(::LoadLibraryW(L"ailleurs.dll"), nullptr);
  std::filesystem::current_path(BesideUs("."));
  EXPECT_EQ(LoadLibraryAt("kWab.dll"), nullptr) << "no full path";
}

/// What cannot be opened is told, and nothing is started.
TEST(WindowsShell, OpensOnlyFoldersAndWebPages) {
  const auto file = BesideUs(kName);
  ScriptedDialogs dialogs;
  const auto shell = MakeShell(dialogs, Win32Environment(std::nullopt));
  dialogs.Expect("Fichier " + file.string() + " introuvable ou endommag\xE9");
  shell->OpenFolder(file);
  dialogs.Expect("Aucun navigateur n'a pu ouvrir " + file.string());
  shell->OpenLink(file.string());
  EXPECT_EQ(FolderCommand(L"C:\\W\\e.exe", L"D:/a, /select/b c/"),
            L"\"C:\\W\\e.exe\" /n,/root,\"D:\\a, \\select\\b c\"");
  EXPECT_EQ(FolderCommand(L"e", L"D:\\"), L"\"e\" /n,/root,\"D:\\\"");
}

}  // namespace

}  // namespace morvelle
