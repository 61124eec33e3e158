#include <gtest/gtest.h>
#include <windows.h>

#include "platform/environment_win32.h"
#include "platform/system_processes.h"
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

/// The stand-in of K9's filter, which tests.cmake builds beside this program.
TEST(WindowsProcesses, AProgramIsFoundEndedAndStartedAgain) {
  const auto processes = MakeProcesses();
  const FileFolder folder;
  // A path with blanks, part of which is a program too.
  const auto file = folder.Write("Program Files/x", "").parent_path() / kName;
  const auto built = Win32Environment(std::nullopt).ProgramFile().parent_path() / kName;
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
  EXPECT_EQ(processes->ProcessPath(0), "[System Process]");
  EXPECT_EQ(processes->ProcessPath(4), "System");
  constexpr ProcessId kNone = 0xFFFFFFF0;
  EXPECT_EQ(processes->ProcessPath(kNone), "");
  EXPECT_FALSE(processes->KillProcess(kNone));
}

}  // namespace

}  // namespace morvelle
