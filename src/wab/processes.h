#pragma once

#include <string_view>

#include "ports/processes.h"

namespace morvelle {

/// The first running process whose executable name ends with `exeName`, letter case ignored; 0
/// when there is none.
ProcessId FindProcess(Processes& processes, std::string_view exeName);

}  // namespace morvelle
