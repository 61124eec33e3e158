#include "platform/programs_posix.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace morvelle {

namespace {

/// The descriptors of this process when it is asked.
std::vector<int> OpenDescriptors() {
  std::vector<int> descriptors;
  std::error_code error;
  for (std::filesystem::directory_iterator entry("/proc/self/fd", error), end;
       !error && entry != end; entry.increment(error)) {
    descriptors.push_back(std::atoi(entry->path().filename().c_str()));
  }
  return descriptors;
}

/// In the child, as all that follows: only what is safe between fork and exec. The toolkit's
/// connections are not all marked to be closed.
void LeaveDescriptors(const std::vector<int>& descriptors) {
  const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    ::dup2(nothing, standard);
  }
  for (const int descriptor : descriptors) {
    if (descriptor > STDERR_FILENO) ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  }
}

/// A process of a session of its own, whose parent is not this program, so that nobody has to wait
/// for it.
[[noreturn]] void RunDetached(char* const* words, const std::vector<int>& descriptors, int report) {
  ::setsid();
  if (::fork() == 0) {
    LeaveDescriptors(descriptors);
    ::execv(words[0], words);
    const int failure = errno;
    [[maybe_unused]] const auto written = ::write(report, &failure, sizeof failure);
  }
  ::_exit(0);
}

bool IsProgram(const std::filesystem::path& file) {
  std::error_code error;
  return std::filesystem::is_regular_file(file, error) && ::access(file.c_str(), X_OK) == 0;
}

}  // namespace

std::filesystem::path FindProgram(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::string_view folders = path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin";
  while (!folders.empty()) {
    const auto end = std::min(folders.find(':'), folders.size());
    const std::filesystem::path folder(folders.substr(0, end));
    if (folder.is_absolute() && IsProgram(folder / name)) return folder / name;
    folders.remove_prefix(std::min(end + 1, folders.size()));
  }
  return {};
}

bool StartProgram(std::vector<std::string> words) {
  if (words.empty() || !words.front().starts_with('/')) return false;
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (auto& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  std::array<int, 2> report{};
  if (::pipe2(report.data(), O_CLOEXEC) != 0) return false;
  const auto descriptors = OpenDescriptors();
  const auto child = ::fork();
  if (child == 0) RunDetached(pointers.data(), descriptors, report[1]);
  ::close(report[1]);
  int failure = child < 0 ? errno : 0;
  // Closed without a word when the program has taken the place of our copy.
  if (child > 0 && ::read(report[0], &failure, sizeof failure) <= 0) failure = 0;
  ::close(report[0]);
  if (child > 0) ::waitpid(child, nullptr, 0);
  return failure == 0;
}

}  // namespace morvelle
