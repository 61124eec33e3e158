#pragma once

#include <memory>

#include "ports/registry_store.h"

namespace morvelle {

/// The registry of the Windows user who runs the program, through the single-byte functions of
/// advapi32. Every write is final.
std::unique_ptr<RegistryStore> OpenWindowsRegistry();

}  // namespace morvelle
