#include <fcntl.h>
#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <thread>

#include "platform/desktop.h"
#include "platform/system_processes.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

namespace fs = std::filesystem;

/// Programs that are started, found and ended for real.
class PosixProcesses : public testing::Test {
 protected:
  ~PosixProcesses() override {
    for (const auto& name : {kName, kLongName}) {
      if (const auto process = Find(name); process != 0) processes->KillProcess(process);
    }
  }
  ProcessId Find(const std::string& name) {
    for (const auto& process : processes->Snapshot()) {
      if (process.exeName == name) return process.id;
    }
    return 0;
  }
  ProcessId WaitFor(const std::string& name) {
    for (int i = 0; i < 250; ++i) {
      if (const auto process = Find(name); process != 0) return process;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    ADD_FAILURE() << name << " does not run";
    return 0;
  }
  fs::path Script(const std::string& name, const std::string& lines) {
    const auto file = folder.Write(name, "#!/bin/sh\n" + lines);
    fs::permissions(file, fs::perms::owner_all);
    return file;
  }

  // The machine's processes are everybody's: another run of these tests has other names.
  const std::string kName = "K9-" + std::to_string(getpid() % 10000) + ".exe";
  const std::string kLongName = "K9-avec-un-long-nom-" + std::to_string(getpid()) + ".exe";
  FileFolder folder;
  std::unique_ptr<Processes> processes = MakeProcesses();
};

TEST_F(PosixProcesses, AProgramIsFoundEndedAndStartedAgain) {
  for (const auto& name : {kName, kLongName}) {
    SCOPED_TRACE(name);
    // A name with a blank before it, and a program that is not the first word of its command line.
    const auto file = Script("dossier à blancs/" + name, "while :; do sleep 0.05; done\n");
    ASSERT_EQ(Find(name), 0U);
    ASSERT_TRUE(processes->StartProcess(file));
    const auto first = WaitFor(name);
    EXPECT_EQ(processes->ProcessPath(first), file);
    EXPECT_TRUE(processes->KillProcess(first));
    EXPECT_EQ(Find(name), 0U);
    ASSERT_TRUE(processes->StartProcess(file));
    EXPECT_NE(WaitFor(name), first);
  }
}

TEST_F(PosixProcesses, OneThatDoesNotListenIsForced) {
  const auto marker = folder / "prêt";
  const auto file =
      Script(kName, "trap '' TERM\n: > '" + marker.string() + "'\nwhile :; do sleep 0.05; done\n");
  ASSERT_TRUE(processes->StartProcess(file));
  const auto process = WaitFor(kName);
  for (int i = 0; i < 250 && !fs::exists(marker); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  EXPECT_TRUE(processes->KillProcess(process));
  EXPECT_EQ(Find(kName), 0U);
  EXPECT_FALSE(processes->StartProcess(folder / "absent"));
  EXPECT_FALSE(processes->KillProcess(0)) << "our own group of processes";
  EXPECT_EQ(processes->ProcessPath(static_cast<ProcessId>(-1)), "");
}

TEST_F(PosixProcesses, ItIsFoundByFullPathsAloneAndGetsNothingOfOurs) {
  const int ours = ::open("/dev/null", O_RDWR);
  const auto said = folder / "dit";
  const auto file = "'" + said.string() + "'";
  const auto wine =
      Script("bin/wine", "{ echo \"$1\"; ls /proc/$$/fd/" + std::to_string(ours) + "; } >" + file +
                             ".neu 2>/dev/null\nmv " + file + ".neu " + file + "\n");
  const std::string usual = ::getenv("PATH");
  fs::current_path(wine.parent_path());
  // Where a search through the working folder would find it.
  ::setenv("PATH", ".::../bin:bin", 1);
  EXPECT_FALSE(processes->StartProcess("wine"));
  EXPECT_FALSE(processes->StartProcess("C:\\K9\\K9-F.exe"));
  ::setenv("PATH", (".:" + wine.parent_path().string() + ":" + usual).c_str(), 1);
  EXPECT_TRUE(processes->StartProcess("C:\\K9\\K9-F.exe"));
  for (int i = 0; i < 250 && !fs::exists(said); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  EXPECT_EQ(ReadFile(said), "C:\\K9\\K9-F.exe\n");
  ::close(ours);
}

TEST(PreparedProcess, NoFileGetsTheNumberOfAStandardStream) {
  const auto next = [] {
    for (const int standard : {0, 1, 2}) ::close(standard);
    PrepareProcess();
    ::_exit(::open("/dev/null", O_RDONLY) > STDERR_FILENO ? 0 : 1);
  };
  EXPECT_EXIT(next(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace morvelle
