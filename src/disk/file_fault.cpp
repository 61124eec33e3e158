#include <string>

#include "disk/host_files.h"

namespace morvelle {

FileFault TooLarge(std::uint64_t limit) {
  constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20U;
  constexpr std::uint64_t kGigabyte = std::uint64_t{1} << 30U;
  const bool inGigabytes = limit >= kGigabyte;
  const auto count = std::to_string(limit / (inGigabytes ? kGigabyte : kMegabyte));
  FileFault fault{"", ErrorNumber::OutOfMemory};
  fault.reason += "il dépasse la taille permise, "_cp;
  fault.reason += count + (inGigabytes ? " Go" : " Mo");
  return fault;
}

}  // namespace morvelle
