#include "platform/environment_win32.h"

#include <windows.h>

#include "app/messages/text.h"
#include "tests/support/temp_folder.h"

namespace morvelle {

namespace {

TEST(Win32Environment, GivesVariablesAsThePercentSignsWould) {
  const Win32Environment environment(std::nullopt);
  ::SetEnvironmentVariableW(L"MorvelleTest", L"C:\\Été");
  EXPECT_EQ(environment.Variable("MORVELLETEST"), std::string("C:\\Été"_cp));
  EXPECT_EQ(environment.Variable("MorvelleNone"), std::nullopt);
}

TEST(Win32Environment, APathKeepsTheLettersOfAVariableThatTheCodePageLacks) {
  ::SetEnvironmentVariableW(L"MorvelleTest", L"C:\\Ωmega");
  const FileFolder folder;
  for (const auto& folders : {std::optional<WindowsFolders>(), {{{}, {}, folder.Path()}}}) {
    const Win32Environment environment(folders);
    EXPECT_EQ(environment.Variable("MorvelleTest"), std::nullopt);
    EXPECT_EQ(environment.HostPath(std::string("%morvelleTEST%\\Été"_cp)), L"C:\\Ωmega\\Été");
    EXPECT_EQ(environment.HostPath("%MorvelleNone%\\x"), L"%MorvelleNone%\\x");
    EXPECT_EQ(environment.HostPath("%"), L"%");
  }
}

TEST(Win32Environment, ReadsTheVersionResourceOfAFile) {
  const Win32Environment environment(std::nullopt);
  // The resource of this very program, given in tests.cmake.
  EXPECT_EQ(environment.GetFileVersion(environment.ProgramFile()), "1.2.3.65535");
  const FileFolder folder;
  const auto copy = folder.Path() / L"Ωmega.exe";
  std::filesystem::copy_file(environment.ProgramFile(), copy);
  EXPECT_EQ(environment.GetFileVersion(copy), "1.2.3.65535");
  EXPECT_EQ(environment.GetFileVersion(folder.Write("none.txt", "text")), "");
  EXPECT_EQ(environment.GetFileVersion(folder.Path() / "missing.exe"), "");
}

TEST(Win32Environment, ItsFolderIsTheProgramsOwn) {
  const Win32Environment environment(std::nullopt);
  EXPECT_EQ(environment.UserFolder() / "windows_tests.exe", environment.ProgramFile());
}

TEST(Win32Environment, APathIsItselfUnlessItsDriveLiesBesideTheRegistryFile) {
  EXPECT_EQ(Win32Environment(std::nullopt).HostPath(std::string("C:\\Été\\x"_cp)), L"C:\\Été\\x");
  const FileFolder folder;
  const Win32Environment environment(WindowsFolders{{}, {}, folder.Path()});
  EXPECT_EQ(environment.HostPath("C:\\x"), L"C:\\x");
  std::filesystem::create_directories(folder.Path() / "drive_c" / L"Été");
  EXPECT_EQ(environment.HostPath(std::string("c:\\Été\\x"_cp)),
            folder.Path() / "drive_c" / L"Été" / "x");
}

}  // namespace

}  // namespace morvelle
