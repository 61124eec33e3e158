#include <gtest/gtest.h>
#include <sched.h>

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <string>

#include "fuzz/endurance/edited_store.h"

namespace morvelle {
namespace {

/// How a process of its own ended that ran this.
int InChild(const std::function<int()>& body) {
  const pid_t child = fork();
  if (child == 0) _exit(body());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

constexpr int kGood = 0;
constexpr int kChanged = 10;
constexpr int kUnsaid = 11;
constexpr int kNotPossibleHere = 12;

/// Adds a word where it cannot be saved: the file must stay as it was, and the user must be told.
int TryToSave(StoreKind kind, const std::filesystem::path& file,
              const std::function<void()>& fill) {
  const auto before = ReadFile(file);
  bool told = false;
  {
    Editor editor(kind, file);
    fill();
    const auto boxes = editor.desktop.prompts.size();
    editor.AddWord(u"de trop");
    told = editor.desktop.prompts.size() > boxes;
  }
  if (ReadFile(file) != before) return kChanged;
  return told ? kGood : kUnsaid;
}

class FullDiskTest : public testing::TestWithParam<StoreKind> {};

TEST_P(FullDiskTest, AFileThatMayNotGrowStaysAsItWas) {
  const TempFolder folder;
  const auto file = folder / "edited";
  MakeRules(GetParam(), file, 60);
  EXPECT_EQ(kGood, InChild([&] {
              return TryToSave(GetParam(), file, [&] {
                signal(SIGXFSZ, SIG_IGN);
                const rlimit half{std::filesystem::file_size(file) / 2, RLIM_INFINITY};
                setrlimit(RLIMIT_FSIZE, &half);
              });
            }));
}

/// On a file system of its own that is filled to the last block (a mount that only this process
/// sees, which some machines do not allow).
TEST_P(FullDiskTest, ADiskWithoutRoomLeavesTheFileAsItWas) {
  const TempFolder folder;
  const auto status = InChild([&] {
    const auto user = std::to_string(getuid());
    const auto group = std::to_string(getgid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return kNotPossibleHere;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " + user + " 1";
    std::ofstream("/proc/self/gid_map") << "0 " + group + " 1";
    if (mount("none", folder.Path().c_str(), "tmpfs", 0, "size=1m") != 0) return kNotPossibleHere;
    const auto file = folder / "edited";
    MakeRules(GetParam(), file, 60);
    return TryToSave(GetParam(), file, [&] {
      std::ofstream rest(folder / "rest", std::ios::binary);
      while (rest.write(std::string(4096, 'x').data(), 4096).flush()) {
      }
    });
  });
  if (status == kNotPossibleHere) GTEST_SKIP() << "no mounts of one's own here";
  EXPECT_EQ(kGood, status);
}

INSTANTIATE_TEST_SUITE_P(Files, FullDiskTest, testing::Values(StoreKind::RegFile, StoreKind::Hive),
                         [](const auto& kind) {
                           return kind.param == StoreKind::RegFile ? "RegFile" : "Hive";
                         });

}  // namespace
}  // namespace morvelle
