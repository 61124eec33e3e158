#pragma once

#include <string_view>

namespace morvelle {

/// Whether Windows would take a file of this name, with or without an extension, for a device:
/// "con", "NUL.roe", "Com1 .txt".
bool IsDeviceName(std::string_view name);

}  // namespace morvelle
