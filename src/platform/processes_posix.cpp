#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

#include "platform/programs_posix.h"
#include "platform/system_processes.h"

namespace morvelle {

namespace {

using std::chrono::milliseconds;

/// How long a process is given to end when it is asked to, and then when it is forced to.
constexpr milliseconds kPatience{2000};
constexpr milliseconds kStep{20};

std::filesystem::path FolderOf(ProcessId process) {
  return std::filesystem::path("/proc") / std::to_string(process);
}

std::string Content(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
}

/// What stands after the last separator of a host path or a Windows path.
std::string FileNameOf(std::string_view path) {
  const auto slash = path.find_last_of("/\\");
  return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::vector<std::string> CommandLineOf(ProcessId process) {
  std::vector<std::string> words;
  const auto text = Content(FolderOf(process) / "cmdline");
  for (std::size_t from = 0; from < text.size();) {
    const auto end = std::min(text.find('\0', from), text.size());
    words.push_back(text.substr(from, end - from));
    from = end + 1;
  }
  return words;
}

/// The kernel keeps 15 bytes of the name (TASK_COMM_LEN is 16); the rest is in the command line,
/// where a script and a Windows program under Wine stand by their own names too.
std::string NameOf(ProcessId process) {
  constexpr std::size_t kLongestKept = 15;
  auto name = Content(FolderOf(process) / "comm");
  if (name.ends_with('\n')) name.pop_back();
  if (name.size() < kLongestKept) return name;
  for (const auto& word : CommandLineOf(process)) {
    auto whole = FileNameOf(word);
    if (whole.starts_with(name)) return whole;
  }
  return name;
}

/// A process that has ended and waits for its parent to take note of it runs no more.
bool IsRunning(ProcessId process) {
  const auto status = Content(FolderOf(process) / "stat");
  const auto name = status.rfind(") ");
  return name != std::string::npos && name + 2 < status.size() && status[name + 2] != 'Z' &&
         status[name + 2] != 'X';
}

bool EndsWithin(ProcessId process, milliseconds patience) {
  for (auto waited = milliseconds{0}; waited < patience; waited += kStep) {
    if (!IsRunning(process)) return true;
    std::this_thread::sleep_for(kStep);
  }
  return !IsRunning(process);
}

/// A path of Windows, which Wine runs.
bool IsWindowsPath(const std::string& path) {
  return path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
}

class PosixProcesses final : public Processes {
 public:
  std::vector<RunningProcess> Snapshot() override {
    std::vector<RunningProcess> processes;
    std::error_code error;
    for (std::filesystem::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
      const auto name = entry->path().filename().string();
      ProcessId id = 0;
      const auto [rest, failure] = std::from_chars(name.data(), name.data() + name.size(), id);
      if (failure != std::errc{} || rest != name.data() + name.size() || !IsRunning(id)) continue;
      processes.push_back({id, NameOf(id)});
    }
    std::sort(processes.begin(), processes.end(),
              [](const auto& left, const auto& right) { return left.id < right.id; });
    return processes;
  }

  std::filesystem::path ProcessPath(ProcessId process) override {
    const auto name = NameOf(process);
    std::error_code error;
    auto executable = std::filesystem::read_symlink(FolderOf(process) / "exe", error);
    if (!error && executable.filename() == name) return executable;
    for (const auto& word : CommandLineOf(process)) {
      if (FileNameOf(word) != name) continue;
      if (IsWindowsPath(word) || word.starts_with('/')) return word;
      const auto folder = std::filesystem::read_symlink(FolderOf(process) / "cwd", error);
      if (!error) return folder / word;
    }
    return executable;
  }

  bool KillProcess(ProcessId process) override {
    const auto id = static_cast<pid_t>(process);
    // 0 and what is no positive number would be a group of processes, or all of them.
    if (id <= 0 || ::kill(id, SIGTERM) != 0) return false;
    if (EndsWithin(process, kPatience)) return true;
    return ::kill(id, SIGKILL) == 0 && EndsWithin(process, kPatience);
  }

  bool StartProcess(const std::filesystem::path& program) override {
    if (!IsWindowsPath(program.string())) return StartProgram({program.string()});
    const auto wine = FindProgram("wine");
    return !wine.empty() && StartProgram({wine.string(), program.string()});
  }
};

}  // namespace

std::unique_ptr<Processes> MakeProcesses() { return std::make_unique<PosixProcesses>(); }

}  // namespace morvelle
