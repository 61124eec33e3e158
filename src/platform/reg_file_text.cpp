#include "platform/reg_file_text.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "app/messages/text.h"
#include "platform/unicode.h"

namespace morvelle {

namespace {

// UTF-16LE bytes are read and written as they lie in memory.
static_assert(std::endian::native == std::endian::little);

constexpr std::u16string_view kHeader4 = u"REGEDIT4";
constexpr std::u16string_view kHeader5 = u"Windows Registry Editor Version 5.00";

/// A remark that is no UTF-8 in Windows-1252.
constexpr std::u16string_view kNotUtf8 = u"; é\r\n";

std::u16string_view WideView(std::string_view bytes) {
  return {reinterpret_cast<const char16_t*>(bytes.data()), bytes.size() / sizeof(char16_t)};
}

/// Cuts the header line off; false when the text starts with another one.
bool CutHeader(std::u16string_view& body, std::u16string_view header) {
  body.remove_prefix(std::min(body.find_first_not_of(u" \t"), body.size()));
  if (!body.starts_with(header)) return false;
  body.remove_prefix(header.size());
  return body.empty() || body.front() == u'\r' || body.front() == u'\n';
}

/// Whether the bytes are UTF-16 without a byte order mark.
bool StartsWide(std::string_view bytes) {
  constexpr std::string_view kWideStart{"W\0i\0", 4};
  constexpr std::string_view kWideBlank{" \0", 2};
  constexpr std::string_view kWideTab{"\t\0", 2};
  while (bytes.starts_with(kWideBlank) || bytes.starts_with(kWideTab)) bytes.remove_prefix(2);
  return bytes.starts_with(kWideStart);
}

bool DecodeWide(std::string_view bytes, RegFileText& text) {
  text.format.encoding = RegFileFormat::Encoding::Utf16;
  text.format.byteOrderMark = bytes.starts_with(kUtf16Mark);
  text.cut = bytes.size() % sizeof(char16_t) != 0;
  text.body = WideView(bytes);
  if (text.format.byteOrderMark) text.body.remove_prefix(1);
  return CutHeader(text.body, kHeader5);
}

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// Less the first bytes of a UTF-8 character that lacks its others.
std::string_view WithoutCutCharacter(std::string_view bytes) {
  constexpr std::size_t kLongest = 4;
  for (std::size_t count = 1; count < kLongest && count <= bytes.size(); ++count) {
    const auto lead = static_cast<unsigned char>(bytes[bytes.size() - count]);
    if (lead < 0x80) break;
    if (lead < 0xC0) continue;
    const std::size_t wanted = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : kLongest;
    if (count < wanted) bytes.remove_suffix(count);
    break;
  }
  return bytes;
}

/// A file that was cut within a character was UTF-8 where its mark or another character says so.
std::optional<std::u16string> DecodeUtf8(std::string_view bytes, RegFileText& text) {
  auto utf8 = Utf16FromUtf8(bytes);
  if (utf8) return utf8;
  const auto whole = WithoutCutCharacter(bytes);
  if (whole.size() == bytes.size() || (!text.format.byteOrderMark && IsAscii(whole))) return utf8;
  utf8 = Utf16FromUtf8(whole);
  text.cut = utf8.has_value();
  return utf8;
}

}  // namespace

std::u16string_view RegFileHeader(int version) { return version == 4 ? kHeader4 : kHeader5; }

bool DecodeRegFile(std::string_view bytes, RegFileText& text) {
  text.format.version = 5;
  if (bytes.starts_with(kUtf16Mark) || StartsWide(bytes)) return DecodeWide(bytes, text);
  text.format.byteOrderMark = bytes.starts_with(kUtf8Mark);
  if (text.format.byteOrderMark) bytes.remove_prefix(kUtf8Mark.size());
  const auto header = bytes.substr(std::min(bytes.find_first_not_of(" \t"), bytes.size()));
  const bool isVersion4 = !text.format.byteOrderMark && header.starts_with("REGEDIT4");
  auto utf8 = isVersion4 ? std::nullopt : DecodeUtf8(bytes, text);
  // A file of ASCII alone is single-byte until it gains another character: the registry editor
  // takes it for the system code page.
  const bool isUtf8 = utf8 && (text.format.byteOrderMark || !IsAscii(bytes));
  text.format.version = isVersion4 ? 4 : 5;
  text.format.encoding =
      isUtf8 ? RegFileFormat::Encoding::Utf8 : RegFileFormat::Encoding::Windows1252;
  text.converted = utf8 ? *std::move(utf8) : ToUtf16(bytes);
  text.body = text.converted;
  return CutHeader(text.body, RegFileHeader(text.format.version));
}

std::string Windows1252File(std::u16string_view text, int version) {
  std::string bytes = FromUtf16Lossy(text);
  // A version-5 text that happens to be UTF-8 too would be read as that. The remark stands where it
  // is written again: before the first key, after the blank line that follows the header.
  if (version == 5 && !IsAscii(bytes) && Utf16FromUtf8(bytes)) {
    constexpr std::string_view kBlankLine = "\r\n\r\n";
    bytes.insert(bytes.find(kBlankLine) + kBlankLine.size(), FromUtf16Lossy(kNotUtf8));
  }
  return bytes;
}

}  // namespace morvelle
