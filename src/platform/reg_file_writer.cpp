#include "platform/reg_file_writer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "app/messages/text.h"
#include "platform/unicode.h"
#include "ports/registry_store.h"

namespace morvelle {

namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";

/// Column from which the registry editor goes on in a new line.
constexpr std::size_t kLastHexColumn = 77;

constexpr std::array<char16_t, 16> kDigits = {u'0', u'1', u'2', u'3', u'4', u'5', u'6', u'7',
                                              u'8', u'9', u'a', u'b', u'c', u'd', u'e', u'f'};

/// Two digits and a comma.
constexpr std::size_t kHexWidth = 3;

/// Each byte as it stands in a line, padded to a size that is copied at once.
constexpr auto kHexOf = [] {
  std::array<std::array<char16_t, 4>, 256> table{};
  for (std::size_t code = 0; code < table.size(); ++code) {
    table[code] = {kDigits[code >> 4U], kDigits[code & 0xFU], u',', u'\0'};
  }
  return table;
}();

std::u16string_view Units(std::string_view bytes) {
  return {reinterpret_cast<const char16_t*>(bytes.data()), bytes.size() / sizeof(char16_t)};
}

}  // namespace

/// Makes the text of a file, as much at a time as the processor's own memory holds. What it gives
/// is good until the call after the next.
class RegTextWriter {
 public:
  RegTextWriter(const RegistryTree& tree, const RegFileFormat& format)
      : format_(format), place_(tree.FirstPlace()) {
    out_ += RegFileHeader(format.version);
    out_ += kLineEnd;
  }

  /// The next lines; nothing behind the last one.
  std::u16string_view Next() {
    // The last piece may be a short text, which a swap would move with its string.
    if (done_) return {};
    if (begun_) {
      std::swap(out_, before_);
      out_.clear();
    }
    begun_ = true;
    for (; out_.size() < kPiece && place_->role != FilePlace::Role::Ends; place_ = place_->next) {
      WritePlace(*place_);
    }
    done_ = place_->role == FilePlace::Role::Ends;
    if (done_) out_ += kLineEnd;
    return out_;
  }

 private:
  /// Characters, about.
  static constexpr std::size_t kPiece = std::size_t{1} << 18U;

  void WritePlace(const FilePlace& place) {
    if (!inRemarks_) out_ += kLineEnd;
    inRemarks_ = place.role == FilePlace::Role::Remark;
    if (place.role == FilePlace::Role::Key) {
      WriteKey(static_cast<const RegistryKey&>(place));
    } else {
      WriteLine(place.role, static_cast<const FileLine&>(place).text);
    }
  }

  void WriteLine(FilePlace::Role role, std::u16string_view text) {
    if (role == FilePlace::Role::Deletion) out_ += u"[-";
    out_ += text;
    if (role == FilePlace::Role::Deletion) out_ += u']';
    out_ += kLineEnd;
  }

  void WriteKey(const RegistryKey& key) {
    WriteDeletions(key);
    out_ += u'[';
    WritePath(key);
    out_ += u"]\r\n";
    for (const auto& entry : key.entries) {
      if (entry.role == RegistryEntry::Role::Remark) {
        WriteLine(FilePlace::Role::Remark, Units(entry.data));
      } else {
        WriteValue(entry);
      }
    }
  }

  /// The deletions that stand before the first line of a key or of anything under it.
  void WriteDeletions(const RegistryKey& key) {
    if (key.parent == nullptr) return;
    // What is above the key was often looked at for its neighbour.
    if (key.parent != lastParent_) WriteDeletions(*key.parent);
    lastParent_ = key.parent;
    if (!key.replaced || !deleted_.insert(&key).second) return;
    out_ += u"[-";
    WritePath(key);
    out_ += u"]\r\n\r\n";
  }

  /// The key of a line is mostly a neighbour of the one before: what their paths share is kept.
  void WritePath(const RegistryKey& key) {
    while (!above_.empty() && above_.back().key != key.parent) above_.pop_back();
    if (above_.empty()) {
      path_ = RegistryTree::PathOf(*key.parent);
      above_.push_back({key.parent, path_.size()});
    }
    path_.resize(above_.back().length);
    if (!path_.empty()) path_ += u'\\';
    path_ += key.name->text;
    above_.push_back({&key, path_.size()});
    out_ += path_;
  }

  void WriteValue(const RegistryEntry& entry) {
    if (entry.role == RegistryEntry::Role::CutValue) out_ += kCutValueRemark;
    const std::size_t start = out_.size();
    if (entry.name->text.empty()) {
      out_ += u'@';
    } else {
      WriteQuoted(entry.name->text);
    }
    out_ += u'=';
    const auto kind = static_cast<ValueKind>(entry.kind);
    if (entry.role == RegistryEntry::Role::Deletion) {
      out_ += u'-';
    } else if (kind == ValueKind::Dword && entry.data.size() == sizeof(std::uint32_t)) {
      out_ += u"dword:";
      for (std::size_t i = entry.data.size(); i-- > 0;) WriteByte(entry.data[i]);
    } else if (kind == ValueKind::String && IsPlain(entry.data)) {
      const auto text = Units(entry.data);
      WriteQuoted(text.substr(0, text.size() - 1));
    } else {
      WriteHex(entry, start);
    }
    out_ += kLineEnd;
  }

  /// What a quoted string can hold in this file: a final zero and no other, no line break, no
  /// character that the encoding lacks.
  [[nodiscard]] bool IsPlain(std::string_view data) const {
    if (data.size() % sizeof(char16_t) != 0 || data.empty()) return false;
    auto text = Units(data);
    if (text.back() != u'\0') return false;
    text.remove_suffix(1);
    bool ascii = true;
    for (const char16_t unit : text) {
      if (unit == u'\0' || unit == u'\r' || unit == u'\n') return false;
      ascii = ascii && unit < 0x80;
    }
    if (ascii) return true;
    return format_.encoding == RegFileFormat::Encoding::Windows1252 ? FromUtf16(text).has_value()
                                                                    : IsWellFormed(text);
  }

  void WriteQuoted(std::u16string_view text) {
    out_ += u'"';
    for (auto stop = text.find_first_of(u"\\\""); stop != std::u16string_view::npos;
         stop = text.find_first_of(u"\\\"")) {
      out_ += text.substr(0, stop);
      out_ += {u'\\', text[stop]};
      text.remove_prefix(stop + 1);
    }
    out_ += text;
    out_ += u'"';
  }

  void WriteByte(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    out_ += kDigits[code >> 4U];
    out_ += kDigits[code & 0xFU];
  }

  void WriteHex(const RegistryEntry& entry, std::size_t lineStart) {
    out_ += u"hex";
    const auto kind = static_cast<ValueKind>(entry.kind);
    if (kind != ValueKind::Binary) WriteKind(entry.kind);
    out_ += u':';
    const bool isText = kind == ValueKind::String || kind == ValueKind::ExpandString ||
                        kind == ValueKind::MultiString;
    // Version 4 knows single-byte strings only; those of its files hold nothing else.
    const std::string narrow =
        format_.version == 4 && isText ? FromUtf16Lossy(Units(entry.data)) : std::string();
    const std::string_view data = format_.version == 4 && isText ? narrow : entry.data;
    if (entry.role == RegistryEntry::Role::CutValue) {
      WriteOneLine(data);
    } else {
      WriteBytes(data, out_.size() - lineStart);
    }
  }

  /// A remark goes on in no other line.
  void WriteOneLine(std::string_view data) {
    for (std::size_t i = 0; i < data.size(); ++i) {
      if (i > 0) out_ += u',';
      WriteByte(data[i]);
    }
  }

  void WriteBytes(std::string_view data, std::size_t column) {
    if (data.empty()) return;
    const char last = data.back();
    data.remove_suffix(1);
    while (!data.empty()) {
      // Up to the byte whose comma reaches the last column; at least one.
      const std::size_t room = column < kLastHexColumn ? kLastHexColumn - column : 1;
      const std::size_t count = (room + kHexWidth - 1) / kHexWidth;
      const bool full = count <= data.size();
      WriteLineOfBytes(data.substr(0, count));
      if (full) out_ += u"\\\r\n  ";
      data.remove_prefix(std::min(count, data.size()));
      column = 2;
    }
    WriteByte(last);
  }

  void WriteLineOfBytes(std::string_view data) {
    std::array<char16_t, kLastHexColumn + 2 * kHexWidth> line;  // Only what is filled is read.
    char16_t* to = line.data();
    for (const char byte : data) {
      std::memcpy(to, kHexOf[static_cast<unsigned char>(byte)].data(), sizeof kHexOf[0]);
      to += kHexWidth;
    }
    out_.append(line.data(), to);
  }

  void WriteKind(std::uint32_t kind) {
    out_ += u'(';
    unsigned shift = 28;
    while (shift > 0 && (kind >> shift) == 0) shift -= 4;
    for (;; shift -= 4) {
      out_ += kDigits[(kind >> shift) & 0xFU];
      if (shift == 0) break;
    }
    out_ += u')';
  }

  const RegFileFormat& format_;
  const FilePlace* place_;  ///< The next one to be written.
  std::u16string out_;
  std::u16string before_;
  bool inRemarks_ = false;
  bool begun_ = false;
  bool done_ = false;
  const RegistryKey* lastParent_ = nullptr;
  struct Ancestor {
    const RegistryKey* key;
    std::size_t length;  ///< Of its path.
  };
  std::u16string path_;          ///< Of the last key.
  std::vector<Ancestor> above_;  ///< That key and keys above it, the last one lowest.
  std::unordered_set<const RegistryKey*> deleted_;
};

RegFileContent::RegFileContent(const RegistryTree& tree, const RegFileFormat& format)
    : format_(format), text_(std::make_unique<RegTextWriter>(tree, format_)) {}

RegFileContent::~RegFileContent() = default;

std::string_view RegFileContent::Next() {
  using Encoding = RegFileFormat::Encoding;
  const bool first = !std::exchange(begun_, true);
  if (format_.encoding == Encoding::Utf16) {
    if (first && format_.byteOrderMark) return kUtf16Mark;
    const auto text = text_->Next();
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
  }
  turn_ ^= 1U;
  auto& piece = narrow_[turn_];
  piece.clear();
  if (first && format_.byteOrderMark) piece = kUtf8Mark;
  if (format_.encoding == Encoding::Utf8) {
    piece += Utf8FromUtf16(text_->Next());
    return piece;
  }
  // What marks such a file as none of the others is told by its whole text.
  std::u16string whole;
  for (auto text = text_->Next(); !text.empty(); text = text_->Next()) whole += text;
  if (!whole.empty()) piece += Windows1252File(whole, format_.version);
  return piece;
}

}  // namespace morvelle
