#include "disk/whole_file.h"

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <functional>

#include "app/messages/errors.h"
#include "tests/support/full_disk.h"
#include "tests/support/temp_folder.h"

namespace {
/// What is looked at when something is brought down to the disk.
std::function<void(bool isFolder)> onFlush;
}  // namespace

/// Stands in front of the system's own, which it calls.
extern "C" int fsync(int handle) {
  struct stat status {};
  if (onFlush && ::fstat(handle, &status) == 0) onFlush(S_ISDIR(status.st_mode));
  return static_cast<int>(::syscall(SYS_fsync, handle));
}

namespace morvelle {
namespace {

int ErrorOf(const std::filesystem::path& file) {
  try {
    WriteWholeFile(file, "neuf");
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

TEST(WholeFileTest, AFileIsReplacedWhole) {
  const FileFolder folder;
  const auto file = folder.Write("a.roe", "ancien");
  std::filesystem::create_symlink(file, folder / "lien.roe");
  EXPECT_EQ(ErrorOf(folder / "lien.roe"), 0);
  EXPECT_EQ(folder.Read("a.roe"), "neuf");
  EXPECT_EQ(folder.Names(), (std::set<std::string>{"a.roe", "lien.roe"}));
  WriteOverLink(folder / "lien.roe", "à lui");
  EXPECT_EQ(folder.Read("a.roe") + folder.Read("lien.roe"), "neufà lui");
}

TEST(WholeFileTest, ReachesTheDiskBeforeItTakesTheName) {
  const FileFolder folder;
  const auto file = folder.Write("a.roe", "ancien");
  std::string seen;
  onFlush = [&](bool isFolder) {
    seen += (isFolder ? "dossier:" : "fichier:") + folder.Read("a.roe") + " ";
  };
  EXPECT_EQ(ErrorOf(file), 0);
  onFlush = nullptr;
  EXPECT_EQ(seen, "fichier:ancien dossier:neuf ");
}

TEST(WholeFileTest, WhatCannotBeWrittenSaysWhy) {
  const FileFolder folder;
  {
    const FullDisk full;
    EXPECT_EQ(ErrorOf(folder.Write("plein.roe", "")), 61);
  }
  EXPECT_EQ(ErrorOf(folder / "absent" / "a.roe"), 76);
  std::filesystem::create_directory(folder / "dossier.roe");
  EXPECT_EQ(ErrorOf(folder / "dossier.roe"), 70);
  std::filesystem::create_symlink("/dev/null", folder / "rien.roe");
  EXPECT_EQ(ErrorOf(folder / "rien.roe"), 70);
  EXPECT_EQ(folder.Names(), (std::set<std::string>{"dossier.roe", "plein.roe", "rien.roe"}));
}

}  // namespace
}  // namespace morvelle
