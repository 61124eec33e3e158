#include <algorithm>
#include <cstdint>
#include <fstream>
#include <limits>
#include <string>

#include "platform/memory_guard.h"

namespace morvelle {

namespace {

/// Bytes that stand in a line "NAME:  1234 kB" of a file of proc(5); 0 where there is none.
std::uint64_t BytesIn(const char* file, const std::string& name) {
  constexpr std::uint64_t kKilobyte = 1024;
  std::ifstream lines(file);
  for (std::string word; lines >> word;) {
    std::uint64_t count = 0;
    if (word == name + ":" && lines >> count) return count * kKilobyte;
    lines.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  }
  return 0;
}

}  // namespace

std::uint64_t MemoryLeft() { return BytesIn("/proc/meminfo", "MemAvailable") / 10 * 9; }

MemoryGuard::MemoryGuard() {
  const auto left = MemoryLeft();
  const auto taken = BytesIn("/proc/self/status", "VmData");
  if (left == 0 || taken == 0 || ::getrlimit(RLIMIT_DATA, &before_) != 0) return;
  auto limit = before_;
  limit.rlim_cur = std::min<rlim_t>(limit.rlim_cur, taken + left);
  holds_ = ::setrlimit(RLIMIT_DATA, &limit) == 0;
}

MemoryGuard::~MemoryGuard() {
  if (holds_) ::setrlimit(RLIMIT_DATA, &before_);
}

}  // namespace morvelle
