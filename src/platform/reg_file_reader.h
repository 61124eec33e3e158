#pragma once

#include <string_view>

#include "platform/registry_tree.h"

namespace morvelle {

/// What the text of a `.reg` file says of its being whole.
struct RegTextEnd {
  /// It ends inside a string, bytes or a key's line, or with a line that seems to go on.
  bool incomplete = false;
  /// It holds kInPartRemark.
  bool inPart = false;
  /// A blank line ends it, and none stands within a key: the last key is there with all its values.
  bool closed = false;
  /// The key given last; null where something else comes last.
  const RegistryKey* lastKey = nullptr;
};

/// Reads the text of a `.reg` file that follows its header into an empty tree, as the registry
/// editor imports it: later values replace earlier ones, deletions are applied and kept as
/// directives. A line that means nothing is passed over and kept as a remark, so that writing the
/// file back loses no text. A value that the end of the text may have cut is a CutValue.
RegTextEnd ReadRegText(std::u16string_view body, int version, RegistryTree& tree);

}  // namespace morvelle
