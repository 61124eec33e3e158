#pragma once

#include <windows.h>

#include "ports/processes.h"

namespace morvelle {

/// Waits until a process that was just started has loaded its first module: before that Windows
/// names no file for it.
inline bool HasItsPath(Processes& processes, ProcessId process) {
  for (int i = 0; i < 200; ++i) {
    if (!processes.ProcessPath(process).empty()) return true;
    ::Sleep(25);
  }
  return false;
}

}  // namespace morvelle
