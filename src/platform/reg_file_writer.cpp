#include "platform/reg_file_writer.h"

#include <array>
#include <cstdint>
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

std::u16string_view Units(std::string_view bytes) {
  return {reinterpret_cast<const char16_t*>(bytes.data()), bytes.size() / sizeof(char16_t)};
}

class Writer {
 public:
  Writer(const RegFileFormat& format, std::size_t expectedSize, std::u16string buffer)
      : format_(format), out_(std::move(buffer)) {
    out_.clear();
    out_.reserve(expectedSize + expectedSize / 8);
    const bool wide = format.encoding == RegFileFormat::Encoding::Utf16;
    if (wide && format.byteOrderMark) out_ += u'\uFEFF';
    out_ += RegFileHeader(format.version);
    out_ += kLineEnd;
  }

  std::u16string Write(const RegistryTree& tree) {
    bool inRemarks = false;
    const FilePlace* place = tree.FirstPlace();
    for (; place->role != FilePlace::Role::Ends; place = place->next) {
      if (!inRemarks) out_ += kLineEnd;
      inRemarks = place->role == FilePlace::Role::Remark;
      if (place->role == FilePlace::Role::Key) {
        WriteKey(*static_cast<const RegistryKey*>(place));
      } else {
        WriteLine(place->role, static_cast<const FileLine*>(place)->text);
      }
    }
    out_ += kLineEnd;
    return std::move(out_);
  }

 private:
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

  void WritePath(const RegistryKey& key) {
    // Neighbours share the path of their parent.
    if (key.parent != pathParent_) {
      pathParent_ = key.parent;
      parentPath_ = RegistryTree::PathOf(*key.parent);
      if (!parentPath_.empty()) parentPath_ += u'\\';
    }
    out_ += parentPath_;
    out_ += key.name->text;
  }

  void WriteValue(const RegistryEntry& entry) {
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
    WriteBytes(data, out_.size() - lineStart);
  }

  void WriteBytes(std::string_view data, std::size_t column) {
    if (data.empty()) return;
    // A line holds three characters a byte, and at most two beyond its last column.
    std::array<char16_t, kLastHexColumn + 3> line;
    std::size_t length = 0;
    for (const char byte : data.substr(0, data.size() - 1)) {
      const auto code = static_cast<unsigned char>(byte);
      line[length] = kDigits[code >> 4U];
      line[length + 1] = kDigits[code & 0xFU];
      line[length + 2] = u',';
      length += 3;
      if (column + length < kLastHexColumn) continue;
      out_.append(line.data(), length);
      out_ += u"\\\r\n  ";
      column = 2;
      length = 0;
    }
    out_.append(line.data(), length);
    WriteByte(data.back());
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
  std::u16string out_;
  const RegistryKey* lastParent_ = nullptr;
  const RegistryKey* pathParent_ = nullptr;
  std::u16string parentPath_;
  std::unordered_set<const RegistryKey*> deleted_;
};

}  // namespace

std::u16string FormatRegText(const RegistryTree& tree, const RegFileFormat& format,
                             std::size_t expectedSize, std::u16string buffer) {
  return Writer(format, expectedSize, std::move(buffer)).Write(tree);
}

}  // namespace morvelle
