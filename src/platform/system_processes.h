#pragma once

#include <memory>

#include "ports/processes.h"

namespace morvelle {

/// The programs of this machine.
std::unique_ptr<Processes> MakeProcesses();

}  // namespace morvelle
