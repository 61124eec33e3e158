#pragma once

#include <string>

#include "core/registry_access.h"

namespace morvelle {

/// Whether an exchange file holds, for certain, every rule that its machine had when it was made,
/// all their keys included: whoever imports the file may then lose those of the rules key that it
/// does not hold. Without this certainty a file that had lost its end would delete the rules that
/// went with it. True for a store that is no exchange file.
bool HoldsAllRules(RegistryAccess& registry, const std::string& mailKey);

}  // namespace morvelle
