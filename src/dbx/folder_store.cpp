#include "dbx/folder_store.h"

#include <array>
#include <exception>
#include <filesystem>
#include <string_view>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/deleted_items.h"
#include "dbx/hex.h"

namespace morvelle {

namespace {

constexpr std::string_view kFileSignature = "CFAD12FE";
constexpr std::string_view kFolderListSignature = "C6FD746F";

// Places in the file, in bytes.
constexpr std::int32_t kClassRest = 8;
constexpr std::int32_t kClassRestSize = 20;
constexpr std::int32_t kNodePointer = 0xEC;
constexpr std::int32_t kMark = 0x24BC;

// Places in a node.
constexpr std::int32_t kNodeCount = 17;
constexpr std::int32_t kNodeEntries = 24;
constexpr std::int32_t kNodeEntrySize = 12;

// Places in a record.
constexpr std::int32_t kRecordLength = 4;
constexpr std::int32_t kRecordAttributeCount = 10;
constexpr std::int32_t kRecordAttributes = 12;
constexpr std::int32_t kAttributeSize = 4;

/// Attributes below this one give an offset into the record's data.
constexpr std::uint8_t kOffsetAttributes = 20;
constexpr std::uint8_t kNameAttribute = 2;
constexpr std::uint8_t kIdAttribute = 0x80;

/// One entry of a record's attribute table: its number, then three bytes of value.
struct Attribute {
  std::uint8_t number;
  std::string value;
};

std::vector<Attribute> AttributesOf(const std::string& table) {
  std::vector<Attribute> attributes;
  for (std::size_t at = 0; at < table.size(); at += kAttributeSize) {
    attributes.push_back({static_cast<std::uint8_t>(table[at]), table.substr(at + 1, 3)});
  }
  return attributes;
}

/// Where each value given by an offset starts, and where the next one ends it. The limits are those
/// of 16-bit numbers, so that a larger offset is an error.
struct Extents {
  std::array<std::int16_t, kOffsetAttributes> start{};
  std::array<std::int16_t, kOffsetAttributes> end{};
};

Extents ExtentsOf(const std::vector<Attribute>& attributes, std::int16_t dataSize) {
  Extents extents;
  extents.end.fill(dataSize);
  extents.end[0] = 0;
  std::uint8_t previous = 0;
  for (const auto& attribute : attributes) {
    const auto number = attribute.number;
    if (number >= kOffsetAttributes) continue;
    const auto start = Checked<std::int16_t>(HexToLong24(StrToHex(attribute.value)));
    extents.start[number] = start;
    if (number >= 2 && previous >= 1) extents.end[previous] = Checked<std::int16_t>(start - 1);
    previous = number;
  }
  return extents;
}

/// As many characters of the data as there are from the name's start; none past the data's end. A
/// start before the data is an error.
std::string NameIn(const std::string& data, const Extents& extents) {
  const auto start = extents.start[kNameAttribute];
  const auto length = MaxInt(Checked<std::int16_t>(extents.end[kNameAttribute] - start), 1);
  if (start < 0) throw RuntimeError(ErrorNumber::InvalidCall);
  const auto from = static_cast<std::size_t>(start);
  return from < data.size() ? data.substr(from, static_cast<std::size_t>(length)) : std::string();
}

void FillFolder(FolderRec& folder, const std::vector<Attribute>& attributes,
                const std::string& data) {
  const auto extents = ExtentsOf(attributes, Checked<std::int16_t>(data.size()));
  for (const auto& attribute : attributes) {
    if (attribute.number == kNameAttribute) folder.Name = NameIn(data, extents);
    if (attribute.number == kIdAttribute) folder.Id = StrToHex(attribute.value);
  }
}

/// The result of a step; false when a run-time error ends it.
template <typename Body>
bool Step(Body&& body) {
  try {
    return body();
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

std::string FolderStore::ReadFolders() {
  std::string hex;
  const bool done = Step([&] {
    Open();
    std::int32_t nodeOffset = 0;
    if (!CheckDbxHeader(nodeOffset) || !ReadTreeNode(nodeOffset) ||
        !ReadFolderEntries(nodeOffset)) {
      return false;
    }
    hex = StrToHex(BytesAt(kMark, kMarkSize));
    return true;
  });
  Close();
  if (!done) {
    dialogs_.ShowMessage(std::string(kFoldersUnreadable), kBoxStop + kBoxOk, "Folders");
    return "False";
  }
  for (const auto& folder : Folders) {
    if (folder.Name != "Éléments supprimés"_cp) continue;
    hex += folder.Id;
    break;
  }
  return HexToStr(hex);
}

bool FolderStore::CheckDbxHeader(std::int32_t& nodeOffset) {
  return Step([&] {
    if (StrToHex(BytesAt(0, 4)) != kFileSignature) return false;
    if (StrToHex(BytesAt(4, 4)) != kFolderListSignature) return false;
    // The rest of the class identifier is not compared, but it has to be there.
    BytesAt(kClassRest, kClassRestSize);
    nodeOffset = LongAt(kNodePointer);
    return true;
  });
}

bool FolderStore::ReadTreeNode(std::int32_t nodeOffset) {
  const bool done = Step([&] {
    if (LongAt(nodeOffset) != nodeOffset) return false;
    FolderCount = ByteAt(std::int64_t{nodeOffset} + kNodeCount);
    Folders.assign(static_cast<std::size_t>(FolderCount), FolderRec{});
    return true;
  });
  if (!done) Report("Incohérence Lecture de l'arbre : "_cp, nodeOffset);
  return done;
}

bool FolderStore::ReadFolderEntries(std::int32_t nodeOffset) {
  return Step([&] {
    for (std::int16_t i = 1; i <= FolderCount; ++i) {
      ReadFolderRecord(i, LongAt(std::int64_t{nodeOffset} + kNodeEntries +
                                 kNodeEntrySize * std::int64_t{i - 1}));
    }
    return true;
  });
}

bool FolderStore::ReadFolderRecord(std::int16_t index, std::int32_t offset) {
  std::uint8_t lastAttribute = 0;
  const bool done = Step([&] {
    if (LongAt(offset) != offset) return false;
    const auto at = std::int64_t{offset};
    const auto length = LongAt(at + kRecordLength);
    const std::int32_t tableSize = kAttributeSize * ByteAt(at + kRecordAttributeCount);
    const auto attributes = AttributesOf(BytesAt(at + kRecordAttributes, tableSize));
    const auto dataSize = Checked<std::int16_t>(length - tableSize);
    const auto data = BytesAt(at + kRecordAttributes + tableSize, dataSize);
    if (index < 1 || index > FolderCount) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    FolderRec folder;
    FillFolder(folder, attributes, data);
    Folders[static_cast<std::size_t>(index - 1)] = folder;
    if (!attributes.empty()) lastAttribute = attributes.back().number;
    return true;
  });
  if (!done) Report("Incohérence Lecture de l'index : "_cp, offset);
  return done && lastAttribute != 0;
}

void FolderStore::Open() {
  const auto path = environment_.HostPath(storeRoot_ + "\\Folders.dbx");
  // Where a folder or a device has the file's name, opening it could succeed, or wait for ever.
  if (!std::filesystem::is_regular_file(path)) throw RuntimeError(ErrorNumber::FileNotFound);
  Close();
  file_.clear();
  file_.open(path, std::ios::binary);
  if (!file_) throw RuntimeError(ErrorNumber::PermissionDenied);
}

std::string FolderStore::BytesAt(std::int64_t offset, std::int32_t count) {
  if (offset < 0 || count < 0) throw RuntimeError(ErrorNumber::InvalidCall);
  std::string bytes(static_cast<std::size_t>(count), '\0');
  // A read that failed in an earlier record must not spoil this one.
  file_.clear();
  file_.seekg(Checked<std::int32_t>(offset));
  if (!file_.read(bytes.data(), count)) throw RuntimeError(ErrorNumber::EndOfFile);
  return bytes;
}

std::int32_t FolderStore::LongAt(std::int64_t offset) {
  return HexToLong(StrToHex(BytesAt(offset, 4)));
}

std::int16_t FolderStore::ByteAt(std::int64_t offset) {
  return static_cast<unsigned char>(BytesAt(offset, 1)[0]);
}

void FolderStore::Report(std::string_view what, std::int32_t offset) {
  dialogs_.ShowMessage(std::string(what) + std::to_string(offset), kBoxStop + kBoxOk,
                       "Lecture de Folders.dbx");
}

}  // namespace morvelle
