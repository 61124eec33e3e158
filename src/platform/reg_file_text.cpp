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
  if (!body.starts_with(header)) return false;
  body.remove_prefix(header.size());
  return body.empty() || body.front() == u'\r' || body.front() == u'\n';
}

bool DecodeWide(std::string_view bytes, RegFileText& text) {
  text.format.encoding = RegFileFormat::Encoding::Utf16;
  text.format.byteOrderMark = bytes.starts_with(kUtf16Mark);
  text.body = WideView(bytes);
  if (text.format.byteOrderMark) text.body.remove_prefix(1);
  return CutHeader(text.body, kHeader5);
}

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

}  // namespace

std::u16string_view RegFileHeader(int version) { return version == 4 ? kHeader4 : kHeader5; }

bool DecodeRegFile(std::string_view bytes, RegFileText& text) {
  constexpr std::string_view kWideStart{"W\0i\0", 4};
  text.format.version = 5;
  if (bytes.starts_with(kUtf16Mark) || bytes.starts_with(kWideStart)) {
    return DecodeWide(bytes, text);
  }
  text.format.byteOrderMark = bytes.starts_with(kUtf8Mark);
  if (text.format.byteOrderMark) bytes.remove_prefix(kUtf8Mark.size());
  const bool isVersion4 = !text.format.byteOrderMark && bytes.starts_with("REGEDIT4");
  auto utf8 = isVersion4 ? std::nullopt : Utf16FromUtf8(bytes);
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
