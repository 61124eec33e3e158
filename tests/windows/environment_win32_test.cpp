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
  const Win32Environment environment(std::nullopt);
  EXPECT_EQ(environment.Variable("MorvelleTest"), std::nullopt);
  EXPECT_EQ(environment.HostPath(std::string("%morvelleTEST%\\Été"_cp)), L"C:\\Ωmega\\Été");
  EXPECT_EQ(environment.HostPath("%MorvelleNone%\\x"), L"%MorvelleNone%\\x");
  EXPECT_EQ(environment.HostPath("%"), L"%");
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

TEST(Win32Environment, APathIsItselfWhereTheRegistryIsNoFile) {
  EXPECT_EQ(Win32Environment(std::nullopt).HostPath(std::string("C:\\Été\\x"_cp)), L"C:\\Été\\x");
}

TEST(Win32Environment, AFileHasNoSayInThePathsOfThisMachine) {
  const FileFolder folder;
  const Win32Environment environment(WindowsFolders{{}, {}, folder.Path()});
  ::SetEnvironmentVariableW(L"MorvelleTest", L"C:\\x");
  EXPECT_EQ(environment.Variable("MorvelleTest"), std::nullopt);
  for (const auto* path : {"C:\\windows", "%MorvelleTest%\\x", "%UserProfile%\\x", "\\\\pc\\x"}) {
    EXPECT_EQ(environment.HostPath(path), L"") << path;
  }
  std::filesystem::create_directories(folder.Path() / "drive_c" / L"Été");
  const auto drive = environment.HostPath("C:");
  EXPECT_TRUE(std::filesystem::equivalent(drive, folder.Path() / "drive_c"));
  EXPECT_EQ(environment.HostPath(std::string("c:\\..\\Été\\absent\\x"_cp)),
            drive / L"Été" / "absent" / "x");
  for (const std::string name : {"NUL", "com1.txt", "Lpt\xB9.x", "con .txt", "a.exe:s.txt",
                                 "s.txt.", "s.txt ", "CONOUT$", ".. "}) {
    EXPECT_EQ(environment.HostPath("C:\\" + name), L"") << name;
  }
  for (const auto* name : {"COM0.txt", "console.txt", "com10", "com.txt"}) {
    EXPECT_EQ(environment.HostPath(std::string("C:\\") + name), drive / name);
  }
}

}  // namespace

}  // namespace morvelle
