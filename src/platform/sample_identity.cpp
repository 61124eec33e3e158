#include "platform/sample_identity.h"

namespace morvelle {

namespace {

/// Shipped files may be write-protected, and are there for all; the user's own are to be written,
/// and for the user alone.
void MakeOwn(const std::filesystem::path& folder) {
  using std::filesystem::perms;
  std::filesystem::permissions(folder, perms::owner_all);
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const bool isFolder = entry.is_directory();
    std::filesystem::permissions(
        entry.path(), isFolder ? perms::owner_all : perms::owner_read | perms::owner_write);
  }
}

}  // namespace

std::filesystem::path OwnSampleIdentity(const std::filesystem::path& shippedFolder,
                                        const std::filesystem::path& userFolder) {
  const auto own = userFolder / "identite";
  auto file = own / "identite.reg";
  if (std::filesystem::exists(own)) return file;
  const auto unfinished = userFolder / "identite.copie-en-cours";
  std::filesystem::remove_all(unfinished);
  std::filesystem::copy(shippedFolder, unfinished, std::filesystem::copy_options::recursive);
  MakeOwn(unfinished);
  std::filesystem::rename(unfinished, own);
  return file;
}

}  // namespace morvelle
