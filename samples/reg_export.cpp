#include "samples/reg_export.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";
/// A line of bytes that has reached this column goes on in the next one.
constexpr std::size_t kHexColumns = 77;

std::u16string HexDigits(std::uint32_t number, int width) {
  static constexpr std::u16string_view kDigits = u"0123456789abcdef";
  std::u16string digits;
  for (int i = width - 1; i >= 0; --i) digits += kDigits[(number >> (4 * i)) & 0xFU];
  return digits;
}

std::u16string Quoted(const std::u16string& text) {
  std::u16string quoted = u"\"";
  for (const auto unit : text) {
    if (unit == u'\\' || unit == u'"') quoted += u'\\';
    quoted += unit;
  }
  return quoted + u'"';
}

std::u16string NameOf(std::string_view name) { return name.empty() ? u"@" : Quoted(ToUtf16(name)); }

std::string LittleEndian(const std::u16string& text) {
  std::string bytes;
  bytes.reserve(2 * text.size());
  for (const auto unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

std::string StoredText(const std::u16string& text) { return LittleEndian(text + u'\0'); }

}  // namespace

RegExport::Key& RegExport::Key::Text(std::string_view name, std::string_view text) {
  return Text(name, ToUtf16(text));
}

RegExport::Key& RegExport::Key::Text(std::string_view name, const std::u16string& text) {
  if (text.find_first_of(u"\r\n") != std::u16string::npos) {
    return Typed(name, 1, StoredText(text));
  }
  lines_.append(NameOf(name)).append(u"=").append(Quoted(text)).append(kLineEnd);
  return *this;
}

RegExport::Key& RegExport::Key::Expand(std::string_view name, std::string_view text) {
  return Typed(name, 2, StoredText(ToUtf16(text)));
}

RegExport::Key& RegExport::Key::Dword(std::string_view name, std::uint32_t number) {
  lines_.append(NameOf(name)).append(u"=dword:").append(HexDigits(number, 8)).append(kLineEnd);
  return *this;
}

RegExport::Key& RegExport::Key::Binary(std::string_view name, std::string_view bytes) {
  Hex(NameOf(name) + u"=hex:", bytes);
  return *this;
}

RegExport::Key& RegExport::Key::Typed(std::string_view name, unsigned type,
                                      std::string_view bytes) {
  Hex(NameOf(name) + u"=hex(" + HexDigits(type, type < 16 ? 1 : 8) + u"):", bytes);
  return *this;
}

void RegExport::Key::Hex(std::u16string line, std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    line += HexDigits(static_cast<unsigned char>(bytes[i]), 2);
    if (i + 1 == bytes.size()) break;
    line += u',';
    if (line.size() < kHexColumns) continue;
    lines_.append(line).append(u"\\").append(kLineEnd);
    line = u"  ";
  }
  lines_.append(line).append(kLineEnd);
}

RegExport::Key& RegExport::At(std::string_view path) {
  auto* key = &top_;
  while (!path.empty()) {
    const auto end = std::min(path.find('\\'), path.size());
    const auto name = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    key = &key->subkeys_[LowerCase(name)];
    if (key->name_.empty()) key->name_ = ToUtf16(name);
  }
  return *key;
}

std::string RegExport::File() const {
  std::u16string text = u"\xFEFFWindows Registry Editor Version 5.00";
  text.append(kLineEnd).append(kLineEnd);
  Write(top_, top_.name_, text);
  return LittleEndian(text);
}

void RegExport::Write(const Key& key, const std::u16string& path, std::u16string& text) {
  text.append(u"[").append(path).append(u"]").append(kLineEnd);
  text.append(key.lines_).append(kLineEnd);
  for (const auto& entry : key.subkeys_) {
    Write(entry.second, path + u'\\' + entry.second.name_, text);
  }
}

}  // namespace morvelle
