#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace morvelle {

/// A folder to put into a `Folders.dbx`. Texts are Windows-1252.
struct DbxFolder {
  std::uint32_t id = 0;
  std::uint32_t parent = 0;
  std::string name;
  /// Name of the file that holds the folder's messages; empty for a folder that was never used.
  std::string fileName;
  std::uint32_t messageCount = 0;
  std::uint32_t unreadCount = 0;
};

/// One entry of a record's attribute table: its number and its three bytes as a number.
struct DbxAttribute {
  std::uint8_t number;
  std::uint32_t value;
};

/// A `Folders.dbx`, and where its pieces lie, for who wants to damage it.
struct DbxImage {
  std::string bytes;
  std::uint32_t nodeOffset = 0;
  std::vector<std::uint32_t> recordOffsets;

  /// Overwrites four bytes, least significant first.
  void PutLong(std::size_t offset, std::uint32_t value);
};

/// Parent of the folder at the top of the tree.
inline constexpr std::uint32_t kNoParent = 0xFFFFFFFF;

/// Makes `Folders.dbx` files as the mail client lays them out: a header of 9404 bytes, the store's
/// mark, the records, and one index node that names them all in the order given.
class DbxBuilder {
 public:
  /// `mark`: the eight bytes after the header, the store's creation time.
  explicit DbxBuilder(std::string mark) : mark_(std::move(mark)) {}

  DbxBuilder& Add(const DbxFolder& folder);
  /// A record with this attribute table and data area, whatever they hold.
  DbxBuilder& AddRaw(const std::vector<DbxAttribute>& attributes, const std::string& data);

  [[nodiscard]] DbxImage Build() const;

 private:
  struct Record {
    std::vector<DbxAttribute> attributes;
    std::string data;
  };

  std::string mark_;
  std::vector<Record> records_;
};

}  // namespace morvelle
