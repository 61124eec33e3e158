#pragma once

#include <sys/resource.h>

#include <cstdint>

namespace morvelle {

/// While it lives, asking for more memory than the machine has left fails with std::bad_alloc. The
/// kernel would otherwise promise it, and end this program or another one when the promise is
/// called in: a registry file of small values takes 25 times its size. Nothing is held where the
/// kernel does not say what is left (Linux: MemAvailable of proc(5)).
class MemoryGuard {
 public:
  MemoryGuard();
  MemoryGuard(const MemoryGuard&) = delete;
  MemoryGuard& operator=(const MemoryGuard&) = delete;
  ~MemoryGuard();

 private:
  rlimit before_{};
  bool holds_ = false;
};

/// Bytes of memory that the machine has left, a tenth of them kept for others; 0 where it does not
/// say.
std::uint64_t MemoryLeft();

}  // namespace morvelle
