#include "platform/memory_guard.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <new>
#include <string>
#include <vector>

namespace morvelle {
namespace {

TEST(MemoryGuardTest, MoreThanTheMachineHasFails) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer ends the program itself";
#endif
  constexpr std::size_t kPiece = std::size_t{64} << 20U;
  const auto pieces = static_cast<std::size_t>(::sysconf(_SC_PHYS_PAGES)) *
                          static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) / kPiece +
                      1;
  // Never written to: the kernel only promises.
  std::vector<std::unique_ptr<char[]>> taken;
  const auto takeAll = [&] {
    while (taken.size() < pieces) {
      taken.push_back(std::make_unique_for_overwrite<char[]>(kPiece));
    }
  };
  {
    const MemoryGuard guard;
    EXPECT_THROW(takeAll(), std::bad_alloc);
  }
  takeAll();
}

}  // namespace
}  // namespace morvelle
