#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "disk/edited_file.h"
#include "ports/registry_store.h"

namespace morvelle {

/// A store, or the French message that says why there is none.
struct OpenedStore {
  std::unique_ptr<RegistryStore> store;
  std::string error;  ///< Windows-1252; empty when there is a store.
};

/// Opens a registry export (`.reg`, version 4 or 5) as a store. The program sees what the file
/// gives under HKEY_CURRENT_USER; all else is kept. Each batch that changes something rewrites the
/// file, as EditedFile says.
OpenedStore OpenRegFile(const std::filesystem::path& path, std::shared_ptr<HostFiles> files,
                        EditedFile::Clock now);

}  // namespace morvelle
