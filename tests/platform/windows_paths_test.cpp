#include <cstdlib>
#include <sstream>

#include "app/messages/text.h"
#include "platform/environment_posix.h"
#include "tests/support/text_cases.h"

namespace morvelle {
namespace {

using std::string_literals::operator""s;

/// An old disk beside its registry file, in a folder that has a neighbour; links lead out of it.
struct WindowsPathsTest : testing::Test {
  WindowsPathsTest() {
    WriteFile(base / "home" / ".profile", "");
    WriteFile(base / "reg" / "drive_c" / "Docs" / u8"Été.txt", "");
    WriteFile(base / "reg" / "marie" / "x", "");
    std::filesystem::create_directory(base / "xp");
    const std::pair<const char*, const char*> links[] = {
        {"reg/drive_c/out", "../../home"},
        {"reg/drive_c/dangling", "../../home/new"},
        {"reg/drive_c/loop", "loop"},
        {"reg/drive_c/in", "docs2/../Docs"},
        {"reg/drive_c/Docs/whitelist.txt", "../../../home/.profile"},
        {"reg/drive_d", "../home"},
        {"reg/drive_e", "."},
        {"reg/drive_g", "../home/new"},
        {"link", "home"}};
    for (const auto& [name, target] : links) std::filesystem::create_symlink(target, base / name);
  }
  /// Below the base, in UTF-8; "-" for what is not there.
  [[nodiscard]] std::string Find(const std::string& windowsPath) const {
    const auto found = environment.HostPath(windowsPath);
    return found.empty() ? "-" : found.lexically_relative(base.Path()).string();
  }

  TempFolder base;
  PosixEnvironment environment{
      WindowsFolders{{{'F', base / "link"}, {'X', base / "xp"}, {'Y', base / "absent"}},
                     base / "reg" / "marie",
                     base / "reg"},
      ""};
};

TEST_F(WindowsPathsTest, NothingLeavesTheFolderThatItStartsFrom) {
  for (const auto& [what, in, out] : TextCases(MORVELLE_PATH_CASES)) {
    std::string found;
    std::istringstream paths(in);
    for (std::string path; std::getline(paths, path);) found += Find(FromUtf8(path).value()) + "\n";
    EXPECT_EQ(found, out) << what;
  }
  EXPECT_EQ(Find("C:\\Docs\0.txt"s), "-");
}

TEST_F(WindowsPathsTest, ThisMachineHasNoSayInThePathsOfTheOldOne) {
  ASSERT_NE(std::getenv("HOME"), nullptr);
  EXPECT_EQ(environment.Variable("HOME"), std::nullopt);
  const PosixEnvironment bare(WindowsFolders{{}, {}, base / "reg"}, "");
  EXPECT_EQ(bare.HostPath("%UserProfile%\\x"), "");
}

}  // namespace
}  // namespace morvelle
