#pragma once

#include <filesystem>
#include <memory>

#include "disk/edited_file.h"
#include "platform/registry_regfile.h"

namespace morvelle {

/// True when the file starts as a registry hive does, of Windows NT or of Windows 9x: OpenHive then
/// opens it or says why not.
bool IsHive(const std::filesystem::path& path);

/// Opens a user's hive (`NTUSER.DAT`) as a store; its root is HKEY_CURRENT_USER. Refused are hives
/// of Windows 9x and those that are damaged anywhere or that Windows had not finished writing.
///
/// The whole hive is read once. Each batch that changes something makes the file anew from the
/// bytes that were opened, so that one run adds to it only what it leaves changed; the new bytes
/// are read back by hivex and take the place of the file, as EditedFile says, only when they hold
/// exactly what is meant.
OpenedStore OpenHive(const std::filesystem::path& path, std::shared_ptr<HostFiles> files,
                     EditedFile::Clock now);

}  // namespace morvelle
