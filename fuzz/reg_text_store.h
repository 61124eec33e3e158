#pragma once

#include <string>
#include <string_view>

#include "platform/reg_file_reader.h"
#include "platform/reg_file_text.h"
#include "platform/tree_store.h"

namespace morvelle {

/// A registry in memory, filled from the bytes of a `.reg` file.
class RegTextStore final : public TreeStore {
 public:
  explicit RegTextStore(std::string_view bytes) {
    // Memory of its own: the text of a UTF-16 file must lie at an even address.
    const std::string own(bytes);
    RegFileText text;
    if (DecodeRegFile(own, text)) ReadRegText(text.body, text.format.version, Tree());
    UseRoot();
  }

  /// Times that a changed tree was put away.
  int writes = 0;

 protected:
  CommitOutcome WriteOut(bool overwriteChanged, std::string& error) override {
    ++writes;
    return TreeStore::WriteOut(overwriteChanged, error);
  }
};

}  // namespace morvelle
