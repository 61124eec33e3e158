#include "app/messages/text.h"

#include <algorithm>
#include <cstdint>

namespace morvelle {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// Windows-1252 follows Latin-1 above 0xC0; the four letters below it have pairs of their own.
constexpr char LowerOf(unsigned char code) {
  if (code >= 'A' && code <= 'Z') return static_cast<char>(code + 0x20U);
  if (code >= 0xC0 && code <= 0xDE && code != 0xD7) return static_cast<char>(code + 0x20U);
  switch (code) {
    case 0x8A:  // Š
    case 0x8C:  // Œ
    case 0x8E:  // Ž
      return static_cast<char>(code + 0x10U);
    case 0x9F:  // Ÿ
      return static_cast<char>(0xFF);
    default:
      return static_cast<char>(code);
  }
}

constexpr auto kLower = [] {
  std::array<char, 256> table{};
  for (unsigned code = 0; code < table.size(); ++code) {
    table[code] = LowerOf(static_cast<unsigned char>(code));
  }
  return table;
}();

/// Length of a UTF-8 sequence by its first byte; 0 for no first byte.
constexpr std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  return lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
}

}  // namespace

std::u16string ToUtf16(std::string_view text) {
  std::u16string result(text.size(), u'\0');
  std::transform(text.begin(), text.end(), result.begin(), CodeUnitOf);
  return result;
}

std::optional<std::string> FromUtf16(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (const char16_t unit : text) {
    const auto byte = ByteOf(unit);
    if (!byte) return std::nullopt;
    result += *byte;
  }
  return result;
}

std::string FromUtf16Lossy(std::u16string_view text) {
  std::string result(text.size(), '\0');
  std::transform(text.begin(), text.end(), result.begin(),
                 [](char16_t unit) { return ByteOf(unit).value_or('?'); });
  return result;
}

std::string ToUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (const char character : text) {
    const unsigned unit = CodeUnitOf(character);
    if (unit < 0x80) {
      result += static_cast<char>(unit);
    } else if (unit < 0x800) {
      result += static_cast<char>(0xC0U | (unit >> 6U));
      result += static_cast<char>(0x80U | (unit & 0x3FU));
    } else {
      result += static_cast<char>(0xE0U | (unit >> 12U));
      result += static_cast<char>(0x80U | ((unit >> 6U) & 0x3FU));
      result += static_cast<char>(0x80U | (unit & 0x3FU));
    }
  }
  return result;
}

std::optional<std::string> FromUtf8(std::string_view utf8) {
  const auto units = Utf16FromUtf8(utf8);
  return units ? FromUtf16(*units) : std::nullopt;
}

std::optional<std::u16string> Utf16FromUtf8(std::string_view utf8) {
  constexpr std::array<std::uint32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  std::u16string text;
  text.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    const std::size_t length = SequenceLength(lead);
    if (length == 0 || utf8.size() - at < length) return std::nullopt;
    std::uint32_t point = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
      const auto next = static_cast<unsigned char>(utf8[at + k]);
      if ((next & 0xC0U) != 0x80) return std::nullopt;
      point = (point << 6U) | (next & 0x3FU);
    }
    if (point < kSmallest[length] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) {
      return std::nullopt;
    }
    if (point >= 0x10000) {
      text += static_cast<char16_t>(0xD800U + ((point - 0x10000U) >> 10U));
      text += static_cast<char16_t>(0xDC00U + ((point - 0x10000U) & 0x3FFU));
    } else {
      text += static_cast<char16_t>(point);
    }
    at += length;
  }
  return text;
}

bool IsControlCharacter(char character) {
  constexpr char16_t kDelete = 0x7F;
  constexpr char16_t kNoBreakSpace = 0xA0;
  const auto unit = CodeUnitOf(character);
  return unit < u' ' || (unit >= kDelete && unit < kNoBreakSpace);
}

bool HoldsControlCharacter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), IsControlCharacter);
}

char LowerCase(char character) { return kLower[static_cast<unsigned char>(character)]; }

std::string LowerCase(std::string_view text) {
  std::string result(text.size(), '\0');
  std::transform(text.begin(), text.end(), result.begin(),
                 [](char character) { return LowerCase(character); });
  return result;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}

std::strong_ordering CompareBinary(std::string_view left, std::string_view right) {
  return std::lexicographical_compare_three_way(
      left.begin(), left.end(), right.begin(), right.end(),
      [](char a, char b) { return CodeUnitOf(a) <=> CodeUnitOf(b); });
}

std::string ThreeDigitId(int number) {
  const auto value = static_cast<std::uint32_t>(number);
  return {kHexDigits[(value >> 8U) & 0xFU], kHexDigits[(value >> 4U) & 0xFU],
          kHexDigits[value & 0xFU]};
}

bool IsThreeDigitId(std::string_view id) {
  return id.size() == 3 && std::all_of(id.begin(), id.end(), [](char digit) {
           return (digit >= '0' && digit <= '9') || (digit >= 'A' && digit <= 'F') ||
                  (digit >= 'a' && digit <= 'f');
         });
}

}  // namespace morvelle
