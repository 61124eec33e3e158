#include "platform/hive_writer.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>
#include <vector>

#include "app/messages/text.h"
#include "platform/hive_cells.h"
#include "platform/unicode.h"

namespace morvelle {

namespace {

constexpr std::string_view kHintIndex = "lf";  // Since version 1.3: cell and start of the name.
constexpr std::string_view kHashIndex = "lh";  // Since version 1.5: cell and hash of the name.
constexpr std::string_view kPlainIndex = "li";
constexpr std::string_view kIndexOfIndexes = "ri";
constexpr std::size_t kIndexHead = 4;
/// Windows lets an index of subkeys fill one block; hivex reads no tree of indexes deeper than two.
constexpr std::size_t kLongestIndex = 500;
/// Documented limit of a value in the older form of hives.
constexpr std::size_t kLargestUndividedValue = 1'048'576;

bool IsLatin(std::u16string_view name) {
  return std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit < 0x100; });
}

std::string Encoded(std::u16string_view name) {
  std::string bytes;
  const bool latin = IsLatin(name);
  for (const char16_t unit : name) {
    bytes += static_cast<char>(unit & 0xFFU);
    if (!latin) bytes += static_cast<char>(unit >> 8U);
  }
  return bytes;
}

std::uint32_t Hash(std::u16string_view name) {
  std::uint32_t hash = 0;
  for (const char16_t unit : name) hash = hash * 37 + UpperCase(unit);
  return hash;
}

/// The first four characters; 0 where they are not single bytes, and Windows compares in full.
std::uint32_t Hint(std::u16string_view name) {
  const auto start = name.substr(0, 4);
  if (!IsLatin(start)) return 0;
  std::uint32_t hint = 0;
  for (std::size_t i = 0; i < start.size(); ++i) hint |= std::uint32_t{start[i]} << (8 * i);
  return hint;
}

std::uint32_t MarkOf(std::u16string_view name, std::string_view kind) {
  if (kind == kHashIndex) return Hash(name);
  return kind == kHintIndex ? Hint(name) : 0;
}

/// A line of an index of subkeys.
struct IndexEntry {
  std::uint32_t cell = 0;
  std::uint32_t mark = 0;  ///< Hint or hash, as the index has it.
};
struct SubkeyIndex {
  std::string kind;
  std::vector<IndexEntry> entries;
  std::vector<std::uint32_t> cells;  ///< That the index itself takes.
};

bool SameEntry(const RegistryEntry& left, const RegistryEntry& right) {
  return left.name == right.name && left.kind == right.kind && left.data == right.data;
}

class Writer {
 public:
  Writer(std::string_view base, const HiveOrigins& origins, std::uint64_t time)
      : cells_(base), origins_(origins), time_(time) {}

  std::string Write(std::string_view base, const RegistryKey& root) {
    Bring(root, origins_.at(&root).cell);
    return changed_ ? cells_.Finish(time_) : std::string(base);
  }

 private:
  // Keys.
  void Bring(const RegistryKey& key, std::uint32_t cell);
  std::uint32_t Make(const RegistryKey& key, std::uint32_t parent);
  std::uint32_t Rename(const RegistryKey& key, std::uint32_t cell);
  void Delete(std::uint32_t cell);
  void Touch(std::uint32_t cell);
  void RaiseTo(std::uint32_t cell, std::size_t field, std::size_t size, std::size_t width = 4);
  void AddUse(std::uint32_t security);
  void DropUse(std::uint32_t security);

  // Their indexes of subkeys.
  SubkeyIndex ReadIndex(std::uint32_t cell);
  void ReadIndexCell(std::uint32_t index, SubkeyIndex& found, int level);
  void WriteIndex(std::uint32_t cell, const SubkeyIndex& index);
  std::uint32_t MakeIndex(const SubkeyIndex& index, std::size_t from, std::size_t count);

  // Their values.
  std::vector<std::uint32_t> ReadValueList(std::uint32_t cell);
  void WriteValues(std::uint32_t cell, const RegistryKey& key,
                   const std::vector<RegistryEntry>& before);
  std::uint32_t MakeValue(const RegistryEntry& entry);
  std::uint32_t MakeData(const RegistryEntry& entry);
  void FreeValue(std::uint32_t value);

  HiveCells cells_;
  const HiveOrigins& origins_;
  std::uint64_t time_;
  bool changed_ = false;
};

void Writer::Bring(const RegistryKey& key, std::uint32_t cell) {
  const auto& origin = origins_.at(&key);
  if (!std::equal(key.entries.begin(), key.entries.end(), origin.entries.begin(),
                  origin.entries.end(), SameEntry)) {
    WriteValues(cell, key, origin.entries);
    Touch(cell);
  }
  SubkeyIndex index = ReadIndex(cell);
  std::unordered_map<std::uint32_t, const RegistryKey*> kept;
  std::vector<std::pair<const RegistryKey*, std::uint32_t>>
      below;  // Kept ones, where they are now.
  std::vector<std::pair<const RegistryKey*, IndexEntry>> placed;
  bool changed = false;
  for (const auto& subkey : key.subkeys) {
    const auto known = origins_.find(subkey.get());
    if (known == origins_.end()) {
      placed.push_back(
          {subkey.get(), {Make(*subkey, cell), MarkOf(subkey->name->text, index.kind)}});
      continue;
    }
    std::uint32_t place = known->second.cell;
    kept.emplace(place, subkey.get());
    if (known->second.name != subkey->name) {
      place = Rename(*subkey, place);
      placed.push_back({subkey.get(), {place, MarkOf(subkey->name->text, index.kind)}});
    }
    below.emplace_back(subkey.get(), place);
  }
  // Those that stay where they were keep their line and their order.
  std::vector<std::pair<const RegistryKey*, IndexEntry>> lines;
  for (const auto& entry : index.entries) {
    const auto at = kept.find(entry.cell);
    if (at == kept.end()) {
      Delete(entry.cell);
      changed = true;
    } else if (origins_.at(at->second).name == at->second->name) {
      lines.emplace_back(at->second, entry);
    }
  }
  if (changed || !placed.empty()) {
    auto at = lines.begin();
    for (const auto& line : placed) {
      const auto& text = line.first->name->folded->text;
      while (at != lines.end() && at->first->name->folded->text < text) ++at;
      at = lines.insert(at, line) + 1;
      RaiseTo(cell, hive::kKeyLongestSubkeyName, line.first->name->text.size() * 2, 2);
    }
    index.entries.clear();
    for (const auto& line : lines) index.entries.push_back(line.second);
    WriteIndex(cell, index);
    Touch(cell);
  }
  for (const auto& [subkey, place] : below) Bring(*subkey, place);
}

std::uint32_t Writer::Make(const RegistryKey& key, std::uint32_t parent) {
  const auto name = Encoded(key.name->text);
  const auto cell = cells_.Allocate(hive::kKeyName + name.size());
  const auto security = cells_.Number(parent, hive::kKeySecurity);
  AddUse(security);
  cells_.Put(cell, 0, "nk");
  cells_.Put(cell, hive::kKeyFlags, IsLatin(key.name->text) ? hive::kKeyNameIsLatin : 0, 2);
  cells_.Put(cell, hive::kKeyParent, parent);
  cells_.Put(cell, hive::kKeySecurity, security);
  for (const auto none :
       {hive::kKeySubkeys, hive::kKeyVolatileSubkeys, hive::kKeyValues, hive::kKeyClass}) {
    cells_.Put(cell, none, hive::kNone);
  }
  cells_.Put(cell, hive::kKeyNameSize, name.size(), 2);
  cells_.Put(cell, hive::kKeyName, name);
  Touch(cell);
  WriteValues(cell, key, {});
  SubkeyIndex index = ReadIndex(cell);
  for (const auto& subkey : key.subkeys) {
    index.entries.push_back({Make(*subkey, cell), MarkOf(subkey->name->text, index.kind)});
    RaiseTo(cell, hive::kKeyLongestSubkeyName, subkey->name->text.size() * 2, 2);
  }
  WriteIndex(cell, index);
  return cell;
}

std::uint32_t Writer::Rename(const RegistryKey& key, std::uint32_t cell) {
  const auto name = Encoded(key.name->text);
  std::uint32_t place = cell;
  if (hive::kKeyName + name.size() > cells_.Content(cell).size()) {
    const std::string before(cells_.Content(cell).substr(0, hive::kKeyName));
    place = cells_.Allocate(hive::kKeyName + name.size());
    cells_.Put(place, 0, before);
    for (const auto& entry : ReadIndex(cell).entries) {
      cells_.Put(entry.cell, hive::kKeyParent, place);
    }
    cells_.Free(cell);
  }
  const auto flags = cells_.Number(place, hive::kKeyFlags, 2) & ~hive::kKeyNameIsLatin;
  cells_.Put(place, hive::kKeyFlags,
             IsLatin(key.name->text) ? flags | hive::kKeyNameIsLatin : flags, 2);
  cells_.Put(place, hive::kKeyNameSize, name.size(), 2);
  cells_.Put(place, hive::kKeyName, name);
  changed_ = true;
  return place;
}

void Writer::Delete(std::uint32_t cell) {
  const auto index = ReadIndex(cell);
  for (const auto& entry : index.entries) Delete(entry.cell);
  for (const auto part : index.cells) cells_.Free(part);
  const auto values = ReadValueList(cell);
  for (const auto value : values) FreeValue(value);
  if (!values.empty()) cells_.Free(cells_.Number(cell, hive::kKeyValues));
  const auto keyClass = cells_.Number(cell, hive::kKeyClass);
  if (keyClass != hive::kNone) cells_.Free(keyClass);
  DropUse(cells_.Number(cell, hive::kKeySecurity));
  cells_.Free(cell);
}

void Writer::Touch(std::uint32_t cell) {
  cells_.Put(cell, hive::kKeyTime, time_, 8);
  changed_ = true;
}

void Writer::RaiseTo(std::uint32_t cell, std::size_t field, std::size_t size, std::size_t width) {
  if (size > cells_.Number(cell, field, width)) cells_.Put(cell, field, size, width);
}

void Writer::AddUse(std::uint32_t security) {
  if (security == hive::kNone) return;
  if (!cells_.Is(security, "sk")) throw HiveError("il est endommagé"_cp);
  cells_.Put(security, hive::kSecurityUses, cells_.Number(security, hive::kSecurityUses) + 1U);
}

void Writer::DropUse(std::uint32_t security) {
  if (security == hive::kNone) return;
  if (!cells_.Is(security, "sk")) throw HiveError("il est endommagé"_cp);
  const auto uses = cells_.Number(security, hive::kSecurityUses);
  const auto next = cells_.Number(security, hive::kSecurityNext);
  if (uses > 1) {
    cells_.Put(security, hive::kSecurityUses, uses - 1U);
  } else if (next != security) {
    const auto previous = cells_.Number(security, hive::kSecurityPrevious);
    cells_.Put(next, hive::kSecurityPrevious, previous);
    cells_.Put(previous, hive::kSecurityNext, next);
    cells_.Free(security);
  }
}

SubkeyIndex Writer::ReadIndex(std::uint32_t cell) {
  SubkeyIndex index;
  if (cells_.Number(cell, hive::kKeySubkeyCount) != 0) {
    ReadIndexCell(cells_.Number(cell, hive::kKeySubkeys), index, 0);
  }
  if (index.kind.empty()) {
    const auto minor = cells_.Minor();
    index.kind = minor >= 5 ? kHashIndex : minor >= 3 ? kHintIndex : kPlainIndex;
  }
  return index;
}

void Writer::ReadIndexCell(std::uint32_t index, SubkeyIndex& found, int level) {
  const auto kind = cells_.Content(index).substr(0, 2);
  const bool isPlain = kind == kPlainIndex;
  const bool isUpper = kind == kIndexOfIndexes && level == 0;
  if (!isPlain && !isUpper && kind != kHintIndex && kind != kHashIndex) {
    throw HiveError("il est endommagé"_cp);
  }
  found.cells.push_back(index);
  if (found.kind.empty() && !isUpper) found.kind = kind;
  const std::size_t width = isPlain || isUpper ? 4 : 8;
  const std::size_t count = cells_.Number(index, 2, 2);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = kIndexHead + i * width;
    const auto cell = cells_.Number(index, at);
    if (isUpper) {
      ReadIndexCell(cell, found, level + 1);
    } else {
      // A mark that stands is worth more than ours: it was made with Windows' own upper case.
      found.entries.push_back({cell, width == 8 && found.kind == kind
                                         ? cells_.Number(index, at + 4)
                                         : MarkOf(cells_.KeyName(cell), found.kind)});
    }
  }
}

void Writer::WriteIndex(std::uint32_t cell, const SubkeyIndex& index) {
  for (const auto part : index.cells) cells_.Free(part);
  const auto count = index.entries.size();
  cells_.Put(cell, hive::kKeySubkeyCount, count);
  std::vector<std::uint32_t> leaves;
  for (std::size_t from = 0; from < count; from += kLongestIndex) {
    leaves.push_back(MakeIndex(index, from, std::min(kLongestIndex, count - from)));
  }
  std::uint32_t top = leaves.empty() ? hive::kNone : leaves.front();
  if (leaves.size() > 1) {
    top = cells_.Allocate(kIndexHead + 4 * leaves.size());
    cells_.Put(top, 0, kIndexOfIndexes);
    cells_.Put(top, 2, leaves.size(), 2);
    for (std::size_t i = 0; i < leaves.size(); ++i) cells_.Put(top, kIndexHead + 4 * i, leaves[i]);
  }
  cells_.Put(cell, hive::kKeySubkeys, top);
}

std::uint32_t Writer::MakeIndex(const SubkeyIndex& index, std::size_t from, std::size_t count) {
  const std::size_t width = index.kind == kPlainIndex ? 4 : 8;
  const auto cell = cells_.Allocate(kIndexHead + width * count);
  cells_.Put(cell, 0, index.kind);
  cells_.Put(cell, 2, count, 2);
  for (std::size_t i = 0; i < count; ++i) {
    const auto& entry = index.entries[from + i];
    cells_.Put(cell, kIndexHead + width * i, entry.cell);
    if (width == 8) cells_.Put(cell, kIndexHead + width * i + 4, entry.mark);
  }
  return cell;
}

std::vector<std::uint32_t> Writer::ReadValueList(std::uint32_t cell) {
  const auto count = cells_.Number(cell, hive::kKeyValueCount);
  std::vector<std::uint32_t> values;
  if (count == 0) return values;
  const auto list = cells_.Number(cell, hive::kKeyValues);
  for (std::size_t i = 0; i < count; ++i) values.push_back(cells_.Number(list, 4 * i));
  return values;
}

void Writer::WriteValues(std::uint32_t cell, const RegistryKey& key,
                         const std::vector<RegistryEntry>& before) {
  const auto old = ReadValueList(cell);
  // Both come from the same list, once through hivex.
  if (old.size() != before.size()) throw HiveError("il est endommagé"_cp);
  std::vector<bool> isKept(old.size());
  std::vector<std::uint32_t> values;
  for (const auto& entry : key.entries) {
    std::size_t at = 0;
    while (at < old.size() && (isKept[at] || !SameEntry(before[at], entry))) ++at;
    if (at < old.size()) {
      isKept[at] = true;
      values.push_back(old[at]);
      continue;
    }
    values.push_back(MakeValue(entry));
    RaiseTo(cell, hive::kKeyLongestValueName, entry.name->text.size() * 2);
    RaiseTo(cell, hive::kKeyLargestValue, entry.data.size());
  }
  for (std::size_t i = 0; i < old.size(); ++i) {
    if (!isKept[i]) FreeValue(old[i]);
  }
  if (!old.empty()) cells_.Free(cells_.Number(cell, hive::kKeyValues));
  const auto list = values.empty() ? hive::kNone : cells_.Allocate(4 * values.size());
  for (std::size_t i = 0; i < values.size(); ++i) cells_.Put(list, 4 * i, values[i]);
  cells_.Put(cell, hive::kKeyValueCount, values.size());
  cells_.Put(cell, hive::kKeyValues, list);
}

std::uint32_t Writer::MakeValue(const RegistryEntry& entry) {
  const auto name = Encoded(entry.name->text);
  const auto cell = cells_.Allocate(hive::kValueName + name.size());
  cells_.Put(cell, 0, "vk");
  cells_.Put(cell, hive::kValueNameSize, name.size(), 2);
  cells_.Put(cell, hive::kValueName, name);
  cells_.Put(cell, hive::kValueKind, entry.kind);
  if (!name.empty() && IsLatin(entry.name->text)) {
    cells_.Put(cell, hive::kValueFlags, hive::kValueNameIsLatin, 2);
  }
  if (entry.data.size() <= 4) {
    cells_.Put(cell, hive::kValueSize, entry.data.size() | hive::kValueIsInPlace);
    cells_.Put(cell, hive::kValueData, entry.data);
  } else {
    cells_.Put(cell, hive::kValueSize, entry.data.size());
    const auto data = MakeData(entry);
    cells_.Put(cell, hive::kValueData, data);
  }
  return cell;
}

std::uint32_t Writer::MakeData(const RegistryEntry& entry) {
  const std::string_view data = entry.data;
  if (data.size() <= hive::kPieceSize || cells_.Minor() < hive::kFirstMinorWithPieces) {
    if (data.size() > kLargestUndividedValue) {
      throw HiveError(
          std::string("la valeur « "_cp) + FromUtf16Lossy(entry.name->text) +
          std::string(" » dépasse un mégaoctet, ce que cette ruche ne peut contenir"_cp));
    }
    const auto cell = cells_.Allocate(data.size());
    cells_.Put(cell, 0, data);
    return cell;
  }
  std::vector<std::uint32_t> pieces;
  for (std::size_t at = 0; at < data.size(); at += hive::kPieceSize) {
    const auto piece = data.substr(at, hive::kPieceSize);
    // Readers take a piece's size from its cell, less 4 bytes that Windows leaves behind it.
    pieces.push_back(cells_.Allocate(piece.size() + 4));
    cells_.Put(pieces.back(), 0, piece);
  }
  const auto list = cells_.Allocate(4 * pieces.size());
  for (std::size_t i = 0; i < pieces.size(); ++i) cells_.Put(list, 4 * i, pieces[i]);
  const auto cell = cells_.Allocate(8);
  cells_.Put(cell, 0, "db");
  cells_.Put(cell, hive::kPieceCount, pieces.size(), 2);
  cells_.Put(cell, hive::kPieceList, list);
  return cell;
}

void Writer::FreeValue(std::uint32_t value) {
  const auto size = cells_.Number(value, hive::kValueSize);
  const auto data = cells_.Number(value, hive::kValueData);
  cells_.Free(value);
  if (size == 0 || (size & hive::kValueIsInPlace) != 0) return;
  if (size > hive::kPieceSize && cells_.Minor() >= hive::kFirstMinorWithPieces &&
      cells_.Is(data, "db")) {
    const auto list = cells_.Number(data, hive::kPieceList);
    const std::size_t count = cells_.Number(data, hive::kPieceCount, 2);
    for (std::size_t i = 0; i < count; ++i) cells_.Free(cells_.Number(list, 4 * i));
    cells_.Free(list);
  }
  cells_.Free(data);
}

}  // namespace

std::string WriteHive(std::string_view base, const RegistryKey& root, const HiveOrigins& origins,
                      std::uint64_t time) {
  return Writer(base, origins, time).Write(base, root);
}

}  // namespace morvelle
