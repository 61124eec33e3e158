#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "platform/environment_win32.h"
#include "platform/system_processes.h"

namespace morvelle {

namespace {

TEST(Win32Processes, FindsAProgramThatRunsAndItsFile) {
  const auto processes = MakeProcesses();
  const auto own = ProcessId{::GetCurrentProcessId()};
  const auto running = processes->Snapshot();
  EXPECT_TRUE(std::any_of(running.begin(), running.end(), [&](const RunningProcess& process) {
    return process.id == own && process.exeName == "windows_tests.exe";
  }));
  EXPECT_EQ(processes->ProcessPath(own), Win32Environment(std::nullopt).ProgramFile());
}

TEST(Win32Processes, SaysWhatItCannotDo) {
  const auto processes = MakeProcesses();
  constexpr ProcessId kNone = 0x7FFFFFFC;
  EXPECT_EQ(processes->ProcessPath(kNone), "");
  EXPECT_FALSE(processes->KillProcess(kNone));
  EXPECT_FALSE(processes->StartProcess(L"C:\\none\\none.exe"));
  EXPECT_FALSE(processes->StartProcess(L"C:\\\u03A9\\none.exe"));
}

}  // namespace

}  // namespace morvelle
