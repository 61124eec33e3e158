#pragma once

#include <memory>

#include "ports/dialogs.h"
#include "ports/environment.h"
#include "ports/shell.h"

namespace morvelle {

/// The desktop's file manager, browser and help viewer. What they cannot open is told in a box.
std::unique_ptr<Shell> MakeShell(Dialogs& dialogs, const Environment& environment);

}  // namespace morvelle
