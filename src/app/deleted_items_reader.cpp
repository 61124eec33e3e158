#include "app/deleted_items_reader.h"

namespace morvelle {

void DeletedItemsReader::Read() {
  read_ = true;
  deletedItemsValue_ = folders_.ReadFolders();
}

const std::string& DeletedItemsReader::DeletedItems() {
  if (!read_) Read();
  return deletedItemsValue_;
}

}  // namespace morvelle
