#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morvelle {

/// Said wherever a move to "Éléments supprimés" would be made without knowing that folder.
inline constexpr std::string_view kFoldersUnreadable = "Erreur de lecture du fichier Folders.dbx";

/// Bytes of a value that designates "Éléments supprimés": eight of the store, three of the folder.
inline constexpr std::size_t kDeletedItemsLength = 11;

/// Where the value of a move to "Éléments supprimés" comes from.
class DeletedItemsSource {
 public:
  virtual ~DeletedItemsSource() = default;
  /// The value less its closing zero; read when first asked for. Anything but kDeletedItemsLength
  /// characters designates no folder.
  virtual const std::string& DeletedItems() = 0;
};

inline bool IsDeletedItems(std::string_view value) { return value.size() == kDeletedItemsLength; }

}  // namespace morvelle
