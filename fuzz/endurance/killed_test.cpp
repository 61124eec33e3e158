#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <random>
#include <string>
#include <vector>

#include "fuzz/endurance/edited_store.h"

namespace morvelle {
namespace {

constexpr int kRules = 60;

/// A file of three rules to import.
constexpr std::string_view kImported =
    "MAIL\r\nOrder\r\n000 001 002\r\nVersion\r\n327680\r\nEOT\r\n"
#define RULE(id, name)                                                                       \
  "-\r\n" id "\r\n-\r\n" name                                                                \
  "\r\n-\r\n0\r\n-\r\n1\r\nACTIONS\r\n-\r\n000\r\n-\r\n000\r\n-\r\n0\r\n-\r\n12\r\nCRITERIA" \
  "\r\n-\r\n000\r\n-\r\n000\r\n-\r\n0\r\n-\r\n0\r\n-\r\n20\r\nEOR\r\n"
    RULE("000", "Neuf A") RULE("001", "Neuf B") RULE("002", "Neuf C") "EOM\r\n";
#undef RULE

constexpr int kCommands = 10;

/// What the program does, command by command, each of them one that writes.
void Carry(Editor& editor, int command, const std::filesystem::path& imported) {
  switch (command % 5) {
    case 0:
      return editor.AddWord(u"ajout" + ToUtf16(std::to_string(command)));
    case 1:
      return editor.Import(imported);
    default:
      return editor.DeleteLast();
  }
}

class KilledTest : public testing::TestWithParam<StoreKind> {};

/// A process that runs the commands and says by one byte each that it begins; killed after a while.
/// Returns how many it began.
int RunAndKill(StoreKind kind, const std::filesystem::path& file,
               const std::filesystem::path& imported, std::chrono::microseconds after) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("pipe");
  const pid_t child = fork();
  if (child == 0) {
    {
      Editor editor(kind, file);
      for (int command = 0; command < kCommands; ++command) {
        if (write(ends[1], "x", 1) != 1) _exit(1);
        Carry(editor, command, imported);
      }
    }
    _exit(0);
  }
  close(ends[1]);
  // Counted from the first command: opening is another matter.
  char byte = 0;
  int begun = static_cast<int>(read(ends[0], &byte, 1));
  usleep(static_cast<useconds_t>(after.count()));
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  while (read(ends[0], &byte, 1) == 1) ++begun;
  close(ends[0]);
  return begun;
}

TEST_P(KilledTest, TheFileHoldsOneCommandMoreOrLessAndNothingBetween) {
  const TempFolder folder;
  const auto imported = folder / "regles.moe";
  WriteFile(imported, kImported);
  const auto original = folder / "original";
  MakeRules(GetParam(), original, kRules);

  // What the file holds after each command, and how long all of them take.
  const auto file = folder / "edited";
  std::filesystem::copy_file(original, file);
  std::vector<std::string> states = {Held(GetParam(), file)};
  std::chrono::microseconds duration{};
  {
    auto editor = std::make_unique<Editor>(GetParam(), file);
    for (int command = 0; command < kCommands; ++command) {
      const auto begin = std::chrono::steady_clock::now();
      Carry(*editor, command, imported);
      duration += std::chrono::duration_cast<std::chrono::microseconds>(
          std::chrono::steady_clock::now() - begin);
      const auto copy = folder / "copy";
      std::filesystem::copy_file(file, copy, std::filesystem::copy_options::overwrite_existing);
      states.push_back(Held(GetParam(), copy));
      ASSERT_NE(states.back(), states[states.size() - 2]) << "command " << command << " wrote";
    }
  }

  std::mt19937 random(20261123);
  std::uniform_int_distribution<long> delay(0, duration.count());
  const int rounds = GetParam() == StoreKind::RegFile ? 200 : 100;
  int before = 0;
  int after = 0;
  for (int round = 0; round < rounds; ++round) {
    const auto own = folder / ("round" + std::to_string(round));
    std::filesystem::create_directory(own);
    const auto edited = own / "edited";
    std::filesystem::copy_file(original, edited);
    const auto begun = static_cast<std::size_t>(
        RunAndKill(GetParam(), edited, imported, std::chrono::microseconds(delay(random))));
    ASSERT_GE(begun, 1U) << "the program started";
    const auto held = Held(GetParam(), edited);
    ASSERT_TRUE(held == states[begun - 1] || held == states[begun])
        << "killed in command " << begun << " of round " << round << ", the file holds\n"
        << held.substr(0, 400);
    (held == states[begun] ? after : before) += 1;
    std::filesystem::remove_all(own);
  }
  // A test that never met a command half done would prove nothing.
  EXPECT_GT(before, rounds / 10);
  EXPECT_GT(after, rounds / 50);
}

INSTANTIATE_TEST_SUITE_P(Files, KilledTest, testing::Values(StoreKind::RegFile, StoreKind::Hive),
                         [](const auto& kind) {
                           return kind.param == StoreKind::RegFile ? "RegFile" : "Hive";
                         });

}  // namespace
}  // namespace morvelle
