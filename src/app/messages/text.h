#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Windows-1252 text. A text of the program is a std::string of that code page, one byte a
/// character, from the registry to the control; UTF-8 and UTF-16 exist only at the edges and pass
/// through here.
namespace morvelle {

/// Windows-1252 as MultiByteToWideChar reads it: the five bytes without a character (81, 8D, 8F,
/// 90, 9D) stand for the control characters of the same number, so that every byte survives a
/// round trip.
inline constexpr std::array<char16_t, 32> kWindows1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char16_t CodeUnitOf(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code >= 0x80 && code < 0xA0 ? kWindows1252High[code - 0x80U] : char16_t{code};
}

/// The byte of a UTF-16 code unit; nothing when Windows-1252 lacks the character.
constexpr std::optional<char> ByteOf(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
  for (std::size_t i = 0; i < kWindows1252High.size(); ++i) {
    if (kWindows1252High[i] == unit) return static_cast<char>(0x80U + i);
  }
  return std::nullopt;
}

namespace detail {

template <std::size_t Size>
struct Utf8Literal {
  // NOLINTNEXTLINE(google-explicit-constructor): a literal's parameter is made by conversion.
  consteval Utf8Literal(const char (&text)[Size]) {
    for (std::size_t i = 0; i < Size; ++i) bytes[i] = text[i];
  }
  char bytes[Size]{};
};

template <std::size_t Size>
struct ConvertedLiteral {
  consteval explicit ConvertedLiteral(const Utf8Literal<Size>& literal) {
    for (std::size_t i = 0; i + 1 < Size;) {
      const auto lead = static_cast<unsigned char>(literal.bytes[i]);
      const std::size_t count = lead < 0x80 ? 1U : lead < 0xE0 ? 2U : 3U;
      unsigned unit = lead < 0x80 ? lead : lead < 0xE0 ? lead & 0x1FU : lead & 0x0FU;
      for (std::size_t k = 1; k < count; ++k) {
        unit = (unit << 6U) | (static_cast<unsigned char>(literal.bytes[i + k]) & 0x3FU);
      }
      // A character that the code page lacks makes this a compile-time error.
      bytes[length++] = ByteOf(static_cast<char16_t>(unit)).value();
      i += count;
    }
  }
  char bytes[Size]{};
  std::size_t length = 0;
};

// The type is written out: where GCC 12 has to deduce it, one translation unit keeps a literal
// among the constants and another among the variables, and the linker of Windows merges no such
// two.
template <Utf8Literal Literal>
inline constexpr ConvertedLiteral<sizeof(Literal.bytes)> kConverted{Literal};

}  // namespace detail

/// "été"_cp: a literal written in UTF-8, as Windows-1252 text, converted by the compiler.
template <detail::Utf8Literal Literal>
constexpr std::string_view operator""_cp() {
  return {detail::kConverted<Literal>.bytes, detail::kConverted<Literal>.length};
}

std::u16string ToUtf16(std::string_view text);
/// Nothing when a character is not of Windows-1252.
std::optional<std::string> FromUtf16(std::u16string_view text);
/// As WideCharToMultiByte does without strictness: "?" for what Windows-1252 lacks.
std::string FromUtf16Lossy(std::u16string_view text);
std::string ToUtf8(std::string_view text);
/// Nothing when the bytes are not UTF-8 or a character is not of Windows-1252.
std::optional<std::string> FromUtf8(std::string_view utf8);
/// Any text; nothing when the bytes are not well-formed UTF-8.
std::optional<std::u16string> Utf16FromUtf8(std::string_view utf8);

/// A line break, a tab, a zero, or one of the five bytes that Windows-1252 leaves without a
/// character: what has no shape of its own.
bool IsControlCharacter(char character);

/// Whether a text holds a line break, a tab, a zero or another control character; the five bytes
/// that Windows-1252 leaves without a character are some too. The user brings none into a word or
/// a name; what is stored may hold them.
bool HoldsControlCharacter(std::string_view text);

/// Lower case by Windows-1252's own letters (É becomes é, Š š, Ÿ ÿ).
char LowerCase(char character);
std::string LowerCase(std::string_view text);
bool EqualIgnoringCase(std::string_view left, std::string_view right);
/// Order of the UTF-16 code units: capitals before small letters, é after z, € and œ after é.
std::strong_ordering CompareBinary(std::string_view left, std::string_view right);

/// The last three characters of "000" followed by the number in upper-case hexadecimal: the form of
/// a rule, action or criterion id.
std::string ThreeDigitId(int number);
/// Three hexadecimal digits, of either case.
bool IsThreeDigitId(std::string_view id);

}  // namespace morvelle
