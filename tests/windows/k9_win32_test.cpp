#include "platform/address_book_win32.h"
#include "platform/environment_win32.h"
#include "platform/system_processes.h"
#include "tests/wab/book_machine.h"
#include "tests/windows/started_process.h"
#include "wab/k9_whitelist.h"
#include "wab/processes.h"

namespace morvelle {

namespace {

constexpr auto kDone = "La 'whitelist' de K9 a été mise à jour !"_cp;

/// K9 as a user has it: its filter runs from a folder with blanks in its name.
TEST_F(BookMachine, K9IsStoppedUpdatedAndStartedAgain) {
  const auto system = MakeProcesses();
  const auto file = folder / "K9 pour moi" / "DB" / "whitelist.txt";
  WriteFile(file, "# K9\r\nFrom :x@b.fr\r\nFrom :y@b.fr\r\n");
  const auto program = folder / "K9 pour moi" / "K9-F.exe";
  std::filesystem::copy_file(
      Win32Environment(std::nullopt).ProgramFile().parent_path() / "K9-F.exe", program);
  ASSERT_TRUE(system->StartProcess(program));
  const auto before = FindProcess(*system, "k9-f.EXE");
  ASSERT_NE(before, 0U);
  ASSERT_TRUE(HasItsPath(*system, before));
  rules.PutText("Software\\KeirNet\\K9", "EmailsPath", "K9 pour moi");
  Book({"a@b.fr"});
  dialogs.Expect(kDone, kBoxInformation, kAppTitle);
  K9Whitelist(registry, environment, *system, reader).UpDateWhiteListK9(file);
  EXPECT_EQ(ReadFile(file), "# K9\r\nFrom :a@b.fr\r\nFrom :y@b.fr\r\n");
  const auto after = FindProcess(*system, "K9-F.exe");
  EXPECT_NE(after, 0U);
  EXPECT_NE(after, before);
  EXPECT_TRUE(system->KillProcess(after));
}

}  // namespace

}  // namespace morvelle
