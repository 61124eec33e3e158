#include "fuzz/fuzzer.h"
#include "platform/hive_cells.h"
#include "platform/hive_reader.h"

namespace morvelle {

void TryInput(std::string_view input) {
  RegistryTree tree;
  try {
    ReadHive(input, tree,
             tree.AddSubkey(tree.Top(), u"HKEY_CURRENT_USER", RegistryTree::Placing::Nowhere),
             nullptr);
  } catch (const HiveError&) {
    // Refused, as a damaged hive should be.
    return;
  }
}

}  // namespace morvelle
