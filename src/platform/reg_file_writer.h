#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include "disk/host_files.h"
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
  /// This piece and the one before, by turns, where they are not UTF-16. They are never moved: a
  /// short text would move with its string.
  std::array<std::string, 2> narrow_;
  std::size_t turn_ = 0;
  bool begun_ = false;
};

}  // namespace morvelle
