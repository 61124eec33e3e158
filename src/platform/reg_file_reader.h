#pragma once

#include <string_view>

#include "platform/registry_tree.h"

namespace morvelle {

/// Reads the text of a `.reg` file that follows its header into an empty tree, as the registry
/// editor imports it: later values replace earlier ones, deletions are applied and kept as
/// directives. A line that means nothing is passed over and kept as a remark, so that writing the
/// file back loses no text.
void ReadRegText(std::u16string_view body, int version, RegistryTree& tree);

}  // namespace morvelle
