#pragma once

#include <memory>
#include <string>

#include "platform/host_files.h"
#include "platform/reg_file_text.h"
#include "platform/registry_tree.h"

namespace morvelle {

class RegTextWriter;

/// A `.reg` file, header and byte order mark included, as the registry editor exports it: CR LF,
/// keys with an empty line between them, hexadecimal lines broken where the editor breaks them. The
/// tree stays as it is until the last piece was asked for.
class RegFileContent final : public FileContent {
 public:
  RegFileContent(const RegistryTree& tree, const RegFileFormat& format);
  ~RegFileContent() override;

  std::string_view Next() override;

 private:
  RegFileFormat format_;
  std::unique_ptr<RegTextWriter> text_;
  std::string narrow_;  ///< The last piece, where that is not UTF-16.
  std::string before_;  ///< The one before.
  bool begun_ = false;
};

}  // namespace morvelle
