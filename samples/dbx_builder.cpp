#include "samples/dbx_builder.h"

#include <algorithm>
#include <string_view>

namespace morvelle {

namespace {

constexpr std::size_t kHeaderSize = 0x24BC;
constexpr std::size_t kNodeHeaderSize = 24;
constexpr std::size_t kNodeEntrySize = 12;
/// A node has room for 51 entries, used or not; a test may ask for more.
constexpr std::size_t kNodeRoom = 51;
constexpr std::uint32_t kRecordHeaderSize = 12;

// What the file begins with: its magic number, then the class of a folder list and the version 5.5.
constexpr std::string_view kHead{
    "\xCF\xAD\x12\xFE\xC6\xFD\x74\x6F\x66\xE3\xD1\x11\x9A\x4E\x00\xC0\x4F\xA3\x09\xD4"
    "\x05\x00\x00\x00\x05\x00\x00\x00",
    28};

// Places in the header.
constexpr std::size_t kRecordCount = 0xC4;
constexpr std::size_t kFirstTree = 0xE4;
constexpr std::size_t kFolderTree = 0xEC;

// Attributes of a folder. A number with the high bit set carries its value in the table.
constexpr std::uint8_t kDirect = 0x80;
constexpr std::uint8_t kId = 0;
constexpr std::uint8_t kParent = 1;
constexpr std::uint8_t kName = 2;
constexpr std::uint8_t kFileName = 3;
constexpr std::uint8_t kMessageCount = 7;
constexpr std::uint8_t kUnreadCount = 8;

void AppendNumber(std::string& bytes, std::uint32_t value, int width) {
  for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i));
}

void AppendString(std::string& bytes, std::string_view text) {
  bytes += text;
  bytes += '\0';
}

}  // namespace

void DbxImage::PutLong(std::size_t offset, std::uint32_t value) {
  std::string number;
  AppendNumber(number, value, 4);
  bytes.replace(offset, 4, number);
}

DbxBuilder& DbxBuilder::Add(const DbxFolder& folder) {
  std::vector<DbxAttribute> attributes;
  std::string data;
  const auto offset = [&data] { return static_cast<std::uint32_t>(data.size()); };
  attributes.push_back({kDirect | kId, folder.id});
  if (folder.parent == kNoParent) {
    // Four bytes do not fit into the table: they go into the data.
    attributes.push_back({kParent, offset()});
    AppendNumber(data, folder.parent, 4);
  } else {
    attributes.push_back({kDirect | kParent, folder.parent});
  }
  attributes.push_back({kName, offset()});
  AppendString(data, folder.name);
  if (!folder.fileName.empty()) {
    attributes.push_back({kFileName, offset()});
    AppendString(data, folder.fileName);
  }
  attributes.push_back({kDirect | kMessageCount, folder.messageCount});
  attributes.push_back({kDirect | kUnreadCount, folder.unreadCount});
  return AddRaw(attributes, data);
}

DbxBuilder& DbxBuilder::AddRaw(const std::vector<DbxAttribute>& attributes,
                               const std::string& data) {
  records_.push_back({attributes, data});
  return *this;
}

DbxImage DbxBuilder::Build() const {
  DbxImage image;
  auto& bytes = image.bytes;
  bytes = kHead;
  bytes.resize(kHeaderSize, '\0');
  bytes += mark_;
  for (const auto& record : records_) {
    bytes.resize((bytes.size() + 3) / 4 * 4, '\0');
    const auto offset = static_cast<std::uint32_t>(bytes.size());
    image.recordOffsets.push_back(offset);
    const auto length =
        static_cast<std::uint32_t>(4 * record.attributes.size() + record.data.size());
    AppendNumber(bytes, offset, 4);
    AppendNumber(bytes, length, 4);
    AppendNumber(bytes, kRecordHeaderSize + length, 2);
    AppendNumber(bytes, static_cast<std::uint32_t>(record.attributes.size()), 1);
    AppendNumber(bytes, 0, 1);
    for (const auto& attribute : record.attributes) {
      AppendNumber(bytes, attribute.number, 1);
      AppendNumber(bytes, attribute.value, 3);
    }
    bytes += record.data;
  }

  bytes.resize((bytes.size() + 3) / 4 * 4, '\0');
  image.nodeOffset = static_cast<std::uint32_t>(bytes.size());
  const auto count = static_cast<std::uint32_t>(records_.size());
  AppendNumber(bytes, image.nodeOffset, 4);
  bytes.resize(image.nodeOffset + 17, '\0');
  AppendNumber(bytes, count, 1);
  bytes.resize(image.nodeOffset + kNodeHeaderSize, '\0');
  for (const auto offset : image.recordOffsets) {
    AppendNumber(bytes, offset, 4);
    AppendNumber(bytes, 0, 4);
    AppendNumber(bytes, 0, 4);
  }
  const auto room = std::max(kNodeRoom, records_.size());
  bytes.resize(image.nodeOffset + kNodeHeaderSize + room * kNodeEntrySize, '\0');

  image.PutLong(kRecordCount, count);
  image.PutLong(kFirstTree, image.nodeOffset);
  image.PutLong(kFolderTree, image.nodeOffset);
  return image;
}

}  // namespace morvelle
