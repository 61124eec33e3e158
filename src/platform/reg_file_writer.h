#pragma once

#include <cstddef>
#include <string>

#include "platform/reg_file_text.h"
#include "platform/registry_tree.h"

namespace morvelle {

/// The text of a `.reg` file, header (and byte order mark of a UTF-16 one) included, as the
/// registry editor exports it: CR LF, keys with an empty line between them, hexadecimal lines
/// broken where the editor breaks them. `expectedSize` (characters) saves growing the text as it is
/// made, and a `buffer` that is done with lends its memory.
std::u16string FormatRegText(const RegistryTree& tree, const RegFileFormat& format,
                             std::size_t expectedSize, std::u16string buffer = {});

}  // namespace morvelle
