#include <string>

#include "disk/host_files.h"

namespace morvelle {

FileFault TooLarge(std::uint64_t limit) {
  constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20U;
  constexpr std::uint64_t kGigabyte = std::uint64_t{1} << 30U;
  const bool inGigabytes = limit >= kGigabyte;
  return {"il est trop grand (plus de " +
              std::to_string(limit / (inGigabytes ? kGigabyte : kMegabyte)) +
              (inGigabytes ? " Go)" : " Mo)"),
          ErrorNumber::OutOfMemory};
}

}  // namespace morvelle
