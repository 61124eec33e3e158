#include "disk/device_names.h"

#include <algorithm>
#include <array>
#include <string>

#include "app/messages/text.h"

namespace morvelle {

bool IsDeviceName(std::string_view name) {
  constexpr std::array<std::string_view, 6> kDevices = {"con", "prn",    "aux",
                                                        "nul", "conin$", "conout$"};
  // The raised digits too.
  constexpr std::string_view kNumbers = "123456789¹²³"_cp;
  name = name.substr(0, name.find('.'));
  const auto stem = LowerCase(std::string(name.substr(0, name.find_last_not_of(' ') + 1)));
  if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) return true;
  return stem.size() == 4 && (stem.starts_with("com") || stem.starts_with("lpt")) &&
         kNumbers.find(stem.back()) != std::string_view::npos;
}

}  // namespace morvelle
