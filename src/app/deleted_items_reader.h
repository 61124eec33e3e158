#pragma once

#include <string>

#include "core/deleted_items.h"
#include "dbx/folder_store.h"

namespace morvelle {

/// Reads the folder store once and keeps the value that designates "Éléments supprimés".
class DeletedItemsReader final : public DeletedItemsSource {
 public:
  DeletedItemsReader(Dialogs& dialogs, const Environment& environment, const std::string& storeRoot)
      : folders_(dialogs, environment, storeRoot) {}

  void Read();
  /// Reads the folder store first, where the start of the program ended before it could.
  const std::string& DeletedItems() override;
  [[nodiscard]] const FolderStore& Folders() const { return folders_; }

 private:
  FolderStore folders_;
  std::string deletedItemsValue_;
  bool read_ = false;
};

}  // namespace morvelle
