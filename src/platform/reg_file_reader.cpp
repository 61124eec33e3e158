#include "platform/reg_file_reader.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "app/messages/text.h"
#include "platform/reg_file_text.h"
#include "ports/registry_store.h"

namespace morvelle {

namespace {

constexpr std::uint8_t kNoDigit = 0xFF;

constexpr auto kDigitOf = [] {
  std::array<std::uint8_t, 128> table{};
  table.fill(kNoDigit);
  for (std::uint8_t i = 0; i < 10; ++i) table[std::size_t{'0'} + i] = i;
  for (std::uint8_t i = 0; i < 6; ++i) {
    table[std::size_t{'a'} + i] = table[std::size_t{'A'} + i] = static_cast<std::uint8_t>(10 + i);
  }
  return table;
}();

std::uint32_t DigitOf(char16_t unit) { return unit < kDigitOf.size() ? kDigitOf[unit] : kNoDigit; }

constexpr bool IsLineEnd(char16_t unit) { return unit == u'\n' || unit == u'\r'; }
constexpr bool IsBlank(char16_t unit) { return unit == u' ' || unit == u'\t'; }

std::string Bytes(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

/// The entries of the key whose section is being read. They are gathered here and go to the key at
/// once, so that its list takes no more room than it needs.
class Section {
 public:
  void Begin(RegistryKey& key) {
    End();
    key_ = &key;
    entries_.assign(std::make_move_iterator(key.entries.begin()),
                    std::make_move_iterator(key.entries.end()));
    key.entries = {};
  }
  /// What follows belongs to no key.
  void End() {
    if (key_ == nullptr) return;
    key_->entries.assign(std::make_move_iterator(entries_.begin()),
                         std::make_move_iterator(entries_.end()));
    entries_.clear();
    positions_.clear();
    key_ = nullptr;
  }
  [[nodiscard]] bool Open() const { return key_ != nullptr; }

  void Put(RegistryEntry entry) {
    RegistryEntry* known = entry.name == nullptr ? nullptr : Find(entry.name->folded);
    if (known == nullptr) {
      entries_.push_back(std::move(entry));
    } else {
      *known = std::move(entry);
    }
  }

 private:
  /// Up to here a look at each entry is faster than an index.
  static constexpr std::size_t kSmall = 32;

  RegistryEntry* Find(const RegistryName* folded) {
    if (entries_.size() <= kSmall) {
      for (auto& entry : entries_) {
        if (entry.name != nullptr && entry.name->folded == folded) return &entry;
      }
      return nullptr;
    }
    if (positions_.empty()) indexed_ = 0;
    for (; indexed_ < entries_.size(); ++indexed_) {
      const auto* name = entries_[indexed_].name;
      if (name != nullptr) positions_[name->folded] = indexed_;
    }
    const auto found = positions_.find(folded);
    return found == positions_.end() ? nullptr : &entries_[found->second];
  }

  RegistryKey* key_ = nullptr;
  std::vector<RegistryEntry> entries_;
  std::unordered_map<const RegistryName*, std::size_t> positions_;
  std::size_t indexed_ = 0;
};

class Reader {
 public:
  Reader(std::u16string_view body, int version, RegistryTree& tree)
      : at_(body.data()), end_(body.data() + body.size()), version_(version), tree_(tree) {}

  RegTextEnd Read() {
    while (at_ < end_) {
      const char16_t* line = at_;
      SkipBlanks();
      if (AtLineEnd()) {
        afterBlankLine_ = true;
      } else if (const char16_t start = *at_; !ReadLine()) {
        at_ = line;
        if (LooksCut(start)) found_.incomplete = true;
        if (RestOfLine() == kInPartRemark) found_.inPart = true;
        KeepRemark(Peek() == u';' || Peek() == u'#' ? u"" : u";");
      } else {
        if (start != u'[' && afterBlankLine_) blankLineInKey_ = true;
        afterBlankLine_ = false;
      }
      SkipLine();
    }
    section_.End();
    found_.closed = afterBlankLine_ && !blankLineInKey_;
    return found_;
  }

 private:
  /// A line end stands where the text ends.
  [[nodiscard]] char16_t Peek() const { return at_ < end_ ? *at_ : u'\n'; }
  [[nodiscard]] bool AtLineEnd() const { return IsLineEnd(Peek()); }
  [[nodiscard]] bool AtLineEndOrComment() {
    SkipBlanks();
    return AtLineEnd() || *at_ == u';';
  }
  void SkipBlanks() {
    while (at_ < end_ && IsBlank(*at_)) ++at_;
  }
  [[nodiscard]] std::u16string_view RestOfLine() const {
    const char16_t* stop = at_;
    while (stop < end_ && !IsLineEnd(*stop)) ++stop;
    return {at_, static_cast<std::size_t>(stop - at_)};
  }
  /// Moves past the line end; a CR LF counts as one.
  void SkipLine() {
    at_ += RestOfLine().size();
    if (at_ == end_) return;
    at_ += *at_ == u'\r' && at_ + 1 < end_ && at_[1] == u'\n' ? 2 : 1;
  }
  bool Take(std::u16string_view text) {
    if (!std::u16string_view(at_, static_cast<std::size_t>(end_ - at_)).starts_with(text)) {
      return false;
    }
    at_ += text.size();
    return true;
  }

  /// Whether a line that means nothing does so because the text ends in it; `start` is its first
  /// character.
  [[nodiscard]] bool LooksCut(char16_t start) const {
    const auto rest = RestOfLine();
    if (at_ + rest.size() < end_) return false;
    if (start == u'[') return rest.find(u']') == std::u16string_view::npos;
    return start == u'"' || start == u'@';
  }

  /// False when the line means nothing.
  bool ReadLine() {
    role_ = RegistryEntry::Role::Value;
    switch (*at_) {
      case u';':
        if (!Take(kCutValueRemark) || AtLineEnd()) return false;
        role_ = RegistryEntry::Role::CutValue;
        return *at_ != u'[' && ReadValueLine();
      case u'[':
        ++at_;
        return ReadKeyLine();
      default:
        return ReadValueLine();
    }
  }

  bool ReadValueLine() {
    switch (*at_) {
      case u'@':
        ++at_;
        return section_.Open() && ReadValue({});
      case u'"':
        ++at_;
        return section_.Open() && ReadQuoted() && ReadValue(quoted_);
      default:
        return false;
    }
  }

  bool ReadKeyLine() {
    section_.End();
    auto path = RestOfLine();
    const auto close = path.rfind(u']');
    if (close == std::u16string_view::npos) return false;
    at_ += path.size();
    path = path.substr(0, close);
    const bool deletion = path.starts_with(u'-');
    if (deletion) path.remove_prefix(1);
    // Written without a "\\" before it, a root " A" would mean nothing and a root "-A" a deletion.
    std::size_t at = 0;
    const auto root = PathCursor::NextName(path, at);
    if (root.empty() || IsBlank(root.front())) return false;
    if (deletion) return ReadDeletion(path);
    if (root.front() == u'-') return false;
    auto* key = cursor_.Create(tree_.Top(), path, RegistryTree::Placing::Nowhere);
    if (key == nullptr || key == &tree_.Top()) return false;
    tree_.ListAtEnd(*key);
    section_.Begin(*key);
    found_.lastKey = key;
    return true;
  }

  bool ReadDeletion(std::u16string_view path) {
    auto* key = cursor_.Find(tree_.Top(), path);
    std::u16string plain;
    std::size_t at = 0;
    for (auto name = PathCursor::NextName(path, at); !name.empty();
         name = PathCursor::NextName(path, at)) {
      if (!plain.empty()) plain += u'\\';
      plain += name;
    }
    // A root cannot be deleted.
    if (plain.find(u'\\') == std::u16string::npos) return false;
    found_.lastKey = nullptr;
    if (key != nullptr) tree_.Delete(*key);
    tree_.AddDeletion(plain);
    return true;
  }

  /// Reads into quoted_ up to the closing quote. Line breaks inside belong to the text.
  bool ReadQuoted() {
    quoted_.clear();
    while (true) {
      const char16_t* start = at_;
      while (at_ < end_ && *at_ != u'"' && *at_ != u'\\') ++at_;
      quoted_.append(start, at_);
      if (at_ == end_) {
        found_.incomplete = true;
        return false;
      }
      if (*at_++ == u'"') return true;
      const bool escapes = at_ < end_ && (*at_ == u'"' || *at_ == u'\\');
      quoted_ += escapes ? *at_++ : u'\\';
    }
  }

  bool ReadValue(std::u16string_view name) {
    SkipBlanks();
    if (!Take(u"=")) return false;
    SkipBlanks();
    RegistryEntry entry;
    entry.name = tree_.Names().Intern(name);
    entry.role = role_;
    if (!ReadData(entry)) return false;
    section_.Put(std::move(entry));
    return true;
  }

  bool ReadData(RegistryEntry& entry) {
    if (Take(u"\"")) {
      if (!ReadQuoted() || !AtLineEndOrComment()) return false;
      quoted_ += u'\0';
      entry.kind = static_cast<std::uint32_t>(ValueKind::String);
      entry.data = Bytes(quoted_);
      return true;
    }
    if (Take(u"dword:")) return ReadDword(entry);
    if (Take(u"hex")) return ReadHexKind(entry) && ReadHex() && TakeHex(entry);
    if (!Take(u"-") || !AtLineEndOrComment()) return false;
    entry.role = RegistryEntry::Role::Deletion;
    return true;
  }

  /// More of the value may have stood where the text ends.
  void MayBeCut(RegistryEntry& entry) {
    entry.role = RegistryEntry::Role::CutValue;
    found_.incomplete = true;
  }

  /// One to eight digits.
  std::optional<std::uint32_t> ReadNumber() {
    std::uint32_t number = 0;
    int count = 0;
    for (auto digit = DigitOf(Peek()); digit != kNoDigit; digit = DigitOf(Peek())) {
      if (++count > 8) return std::nullopt;
      number = number * 16 + digit;
      ++at_;
    }
    if (count == 0) return std::nullopt;
    return number;
  }

  bool ReadDword(RegistryEntry& entry) {
    SkipBlanks();
    const char16_t* start = at_;
    const auto number = ReadNumber();
    if (!number || !AtLineEndOrComment()) return false;
    // The registry editor writes eight digits.
    if (at_ == end_ && at_ - start < 8) MayBeCut(entry);
    entry.kind = static_cast<std::uint32_t>(ValueKind::Dword);
    for (unsigned shift = 0; shift < 32; shift += 8) {
      entry.data += static_cast<char>(*number >> shift);
    }
    return true;
  }

  bool ReadHexKind(RegistryEntry& entry) {
    entry.kind = static_cast<std::uint32_t>(ValueKind::Binary);
    if (Take(u":")) return true;
    if (!Take(u"(")) return false;
    const auto kind = ReadNumber();
    entry.kind = kind.value_or(0);
    return kind && Take(u"):");
  }

  /// Bytes into hex_, over as many lines as they take.
  bool ReadHex() {
    hex_.clear();
    while (true) {
      ReadPlainBytes();
      SkipBlanks();
      const auto high = DigitOf(Peek());
      if (high == kNoDigit) {
        // A comma with nothing behind it, or the end of a value that lost its "\\".
        if (Peek() != u'\\') return AtLineEndOrComment() && (hex_.empty() || !BytesFollow());
        ++at_;
        if (!AtLineEndOrComment()) return false;
        if (!SkipToNextBytes()) return true;
        continue;
      }
      ++at_;
      const auto low = DigitOf(Peek());
      if (low != kNoDigit) ++at_;
      hex_ += static_cast<char>(low != kNoDigit ? high * 16 + low : high);
      if (Peek() == u',') {
        ++at_;
        continue;
      }
      SkipBlanks();
      if (Peek() != u',') return AtLineEndOrComment();
      ++at_;
    }
  }

  /// Bytes of two digits with a comma behind them: nearly all there are.
  void ReadPlainBytes() {
    std::array<char, 64> bytes;  // Only what is filled is read.
    std::size_t count = 0;
    while (end_ - at_ >= 3) {
      const auto high = DigitOf(at_[0]);
      const auto low = DigitOf(at_[1]);
      if ((high | low) > 0xF || at_[2] != u',') break;
      if (count == bytes.size()) {
        hex_.append(bytes.data(), count);
        count = 0;
      }
      bytes[count++] = static_cast<char>(high * 16 + low);
      at_ += 3;
    }
    hex_.append(bytes.data(), count);
  }

  /// Whether the next line is one of bytes alone.
  bool BytesFollow() {
    const char16_t* here = at_;
    SkipLine();
    SkipBlanks();
    const char16_t* start = at_;
    while (DigitOf(Peek()) != kNoDigit) ++at_;
    const auto digits = at_ - start;
    const bool follow =
        (digits == 1 || digits == 2) && (Peek() == u',' || Peek() == u'\\' || AtLineEndOrComment());
    at_ = here;
    return follow;
  }

  /// Past blank lines and comments; false when the text ends.
  bool SkipToNextBytes() {
    do {
      SkipLine();
      if (at_ == end_) return false;
    } while (AtLineEndOrComment());
    return true;
  }

  bool TakeHex(RegistryEntry& entry) {
    const auto kind = static_cast<ValueKind>(entry.kind);
    const bool isText = kind == ValueKind::String || kind == ValueKind::ExpandString ||
                        kind == ValueKind::MultiString;
    if (at_ == end_) MayBeCut(entry);
    entry.data = version_ == 4 && isText ? Bytes(ToUtf16(hex_)) : hex_;
    return true;
  }

  /// Keeps the line at hand, in the section that it stands in unless an empty line parts them.
  void KeepRemark(std::u16string_view mark) {
    std::u16string text(mark);
    text += RestOfLine();
    if (!section_.Open() || afterBlankLine_) {
      tree_.AddRemark(text);
      return;
    }
    RegistryEntry entry;
    entry.role = RegistryEntry::Role::Remark;
    entry.data = Bytes(text);
    section_.Put(std::move(entry));
  }

  const char16_t* at_;
  const char16_t* end_;
  int version_;
  RegistryTree& tree_;
  PathCursor cursor_{tree_};
  Section section_;
  std::u16string quoted_;
  std::string hex_;
  RegistryEntry::Role role_ = RegistryEntry::Role::Value;
  RegTextEnd found_;
  bool afterBlankLine_ = true;
  bool blankLineInKey_ = false;
};

}  // namespace

RegTextEnd ReadRegText(std::u16string_view body, int version, RegistryTree& tree) {
  return Reader(body, version, tree).Read();
}

}  // namespace morvelle
