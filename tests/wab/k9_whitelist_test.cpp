#include "wab/k9_whitelist.h"

#include "app/messages/errors.h"
#include "platform/windows_paths.h"
#include "tests/wab/book_machine.h"
#include "wab/processes.h"
#include "wab/whitelist_file.h"

namespace morvelle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kDefaultHead =
    "# Ceci est la liste blanche de K9.\r\n#\r\n"
    "# Visitez le site de K9 - http://keir.net/k9.html pour plus de détails.\r\n"_cp;
constexpr auto kDone = "La 'whitelist' de K9 a été mise à jour !"_cp;
constexpr auto kNotStopped = "K9 n'a pas pu être arrêté : sa 'whitelist' n'a pas été modifiée"_cp;
constexpr auto kNotStarted = "K9 n'a pas pu être redémarré"_cp;

std::string WithDefaultHead(std::string_view rest) {
  return std::string(kDefaultHead) + std::string(rest);
}

TEST(MergedWhitelist, IsTheHeadAndEachAddressOnce) {
  struct Case {
    const char* why;
    std::string_view file;
    const char* book;
    std::string expected;
  };
  const Case cases[] = {
      {"an empty file gets the head", "", "a@b.fr", WithDefaultHead("From :a@b.fr\r\n")},
      {"a head of two lines stays as it is", "# Un\r\n# Deux\r\nFrom :x@b.fr\r\n", "a@b.fr",
       "# Un\r\n# Deux\r\nFrom :a@b.fr\r\n"},
      {"the first address line is lost unless the book has it", "From :x@b.fr\r\nFrom :y@b.fr",
       "a@b.fr", WithDefaultHead("From :a@b.fr\r\nFrom :y@b.fr\r\n")},
      {"of equal addresses the last in sorted order stays", "From :x\r\nFrom :paul@b.fr\r\n",
       "Paul@b.fr", WithDefaultHead("From :paul@b.fr\r\n")},
      {"and that order is no stable one", "From :x\r\nFrom :b@b.fr\r\nFrom :a@b.fr", "B@b.fr",
       WithDefaultHead("From :a@b.fr\r\nFrom :B@b.fr\r\n")},
      {"blanks and letter case of From do not count", "#\nFrom:x\nFrom:a@b.fr\nFROM : b@b.fr \n",
       "c@b.fr", "#\r\nFrom :a@b.fr\r\nFrom :b@b.fr\r\nFrom :c@b.fr\r\n"},
      {"other lines are not kept behind the head", "#\rFrom :x\r# rien\rFrom nul\r: From\rz@b.fr",
       "a@b.fr", "#\r\nFrom :a@b.fr\r\n"},
      {"From within a line, and bytes of any kind",
       std::string_view("#\r\nFrom :x\r\n-- from >\0: \xFF@b.fr:\t\r\n", 33), "a@b.fr",
       "#\r\nFrom :a@b.fr\r\nFrom :\xFF@b.fr:\t\r\n"},
      {"a head of one empty line is none", "\r\nFrom :x\r\n", "a@b.fr",
       WithDefaultHead("From :a@b.fr\r\n")},
  };
  for (const auto& [why, file, book, expected] : cases) {
    EXPECT_EQ(MergedWhitelist(file, {book}), expected) << why;
  }
}

TEST(FindProcess, GoesByTheEndOfTheName) {
  FakeProcesses processes;
  processes.running = {{3, "K9-F.exe.bak"}, {5, "F.exe"}, {7, "monk9-f.EXE"}, {9, "K9-F.exe"}};
  EXPECT_EQ(FindProcess(processes, "K9-F.exe"), 7U);
  processes.running.resize(2);
  EXPECT_EQ(FindProcess(processes, "K9-F.exe"), 0U);
}

struct K9Test : BookMachine {
  K9Test() {
    rules.PutText("Software\\KeirNet\\K9", "EmailsPath", "C:\\K9");
    WriteFile(file, kOld);
    Book({"a@b.fr"});
  }
  void Running() {
    processes.running = {{4, "System"}, {12, "K9-F.exe"}};
    processes.path = "C:/K9/K9-F.exe";
  }
  static constexpr std::string_view kOld = "# K9\r\nFrom :x@b.fr\r\nFrom :y@b.fr\r\n";
  static constexpr std::string_view kNew = "# K9\r\nFrom :a@b.fr\r\nFrom :y@b.fr\r\n";

  std::filesystem::path file = folder / "drive_c" / "K9" / "DB" / "whitelist.txt";
  K9Whitelist k9{registry, environment, processes, reader};
};

TEST_F(K9Test, ItsFileIsBelowTheFolderOfTheRegistry) {
  EXPECT_EQ(k9.EmailsPath(), file);
  std::filesystem::remove(file);
  EXPECT_EQ(k9.EmailsPath(), "");
  WriteFile(file, "");
  EXPECT_EQ(k9.EmailsPath(), file);
  rules.Remove("Software\\KeirNet\\K9", "EmailsPath");
  EXPECT_EQ(k9.EmailsPath(), "");
  store.DeleteKey("Software\\KeirNet\\K9");
  EXPECT_EQ(k9.EmailsPath(), "");
}

TEST_F(K9Test, ItsFileIsNoOtherBehindALink) {
  environment.finder = [this](const auto& path) {
    return FindWindowsPath({{}, {}, folder.Path()}, path);
  };
  EXPECT_EQ(k9.EmailsPath(), file);
  for (const auto* name : {"whitelist.txt", "drive_c/.profile"}) {
    WriteFile(folder / name, kOld);
    std::filesystem::remove(file);
    std::filesystem::create_symlink(folder / name, file);
    EXPECT_EQ(k9.EmailsPath(), "") << name;
    // It became a link since the program started.
    dialogs.Expect("Fichier introuvable", kBoxOk, "UpDateWhiteListK9");
    EXPECT_THROW(k9.UpDateWhiteListK9(file), ProgramEnd);
    EXPECT_EQ(ReadFile(folder / name), kOld);
  }
}

TEST_F(K9Test, IsStoppedAndStartedAgain) {
  Running();
  dialogs.Expect(kDone, kBoxInformation, kAppTitle);
  k9.UpDateWhiteListK9(file);
  EXPECT_EQ(ReadFile(file), kNew);
  EXPECT_THAT(processes.killed, ElementsAre(12U));
  EXPECT_THAT(processes.started, ElementsAre("C:/K9/K9-F.exe"));
  processes.started.clear();
  dialogs.Expect(kDone);
  k9.UpDateWhiteListK9(file);
  EXPECT_THAT(processes.started, IsEmpty()) << "it was not running";
  Running();
  processes.endsByItself = true;
  WriteFile(file, kOld);
  dialogs.Expect(kDone);
  k9.UpDateWhiteListK9(file);
  EXPECT_EQ(ReadFile(file), kNew) << "it ended by itself meanwhile";
  processes.endsByItself = false;
  Running();
  processes.canBeStarted = false;
  dialogs.Expect(kNotStarted);
  dialogs.Expect(kDone);
  k9.UpDateWhiteListK9(file);
}

TEST_F(K9Test, OneThatCannotBeStoppedKeepsItsListAsDoesABookWithoutAddress) {
  Running();
  processes.canBeStopped = false;
  dialogs.Expect(kNotStopped, kBoxStop, kAppTitle);
  k9.UpDateWhiteListK9(file);
  processes.canBeStopped = true;
  processes.path.clear();
  dialogs.Expect(kNotStopped);
  k9.UpDateWhiteListK9(file);
  EXPECT_EQ(ReadFile(file), kOld);
  EXPECT_THAT(processes.killed, IsEmpty()) << "one that could not be started again is not stopped";
  Running();
  addressBook.addresses = {std::nullopt};
  k9.UpDateWhiteListK9(file);
  EXPECT_EQ(ReadFile(file), kOld);
  EXPECT_THAT(processes.killed, IsEmpty());
}

TEST_F(K9Test, AFileThatIsGoneEndsTheProgram) {
  Running();
  std::filesystem::remove(file);
  dialogs.Expect("Fichier introuvable", kBoxOk, "UpDateWhiteListK9");
  EXPECT_THROW(k9.UpDateWhiteListK9(file), ProgramEnd);
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_THAT(processes.killed, ElementsAre(12U));
  EXPECT_THAT(processes.started, IsEmpty()) << "it stays stopped";
}

TEST_F(K9Test, TheFileIsReplacedInOneStepUnlessItIsMarked) {
  const auto second = folder / "second.txt";
  std::filesystem::create_hard_link(file, second);
  dialogs.Expect(kDone);
  k9.UpDateWhiteListK9(file);
  EXPECT_EQ(ReadFile(file), kNew);
  EXPECT_EQ(ReadFile(second), kOld) << "the old file was not written into";
  EXPECT_THAT(DatedCopies(file.parent_path()), ElementsAre(kOld));
  WriteFile(file, kOld);
  std::filesystem::permissions(file, std::filesystem::perms{0400});
  dialogs.Expect("Permission refusée"_cp, kBoxOk, "UpDateWhiteListK9");
  EXPECT_THROW(k9.UpDateWhiteListK9(file), ProgramEnd);
  EXPECT_EQ(ReadFile(file), kOld) << "marked as not to be written";
}

}  // namespace
}  // namespace morvelle
