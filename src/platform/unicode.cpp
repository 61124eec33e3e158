#include "platform/unicode.h"

#include <array>
#include <cstdint>

namespace morvelle {

namespace {

constexpr bool IsLead(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool IsTrail(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// The ranges of lower-case letters that the registry of any Windows folds, Unicode's simple
/// upper-case mapping.
constexpr char16_t UpperBeyondAscii(char16_t unit) {
  const auto minus = [unit](int distance) { return static_cast<char16_t>(unit - distance); };
  const auto within = [unit](int first, int last) { return unit >= first && unit <= last; };
  if (within(0xE0, 0xFE)) return unit == 0xF7 ? unit : minus(0x20);
  if (unit == 0xFF) return u'\u0178';
  // Latin Extended-A: pairs of a capital and its small letter, even numbers first or odd ones.
  const bool evenCapitals = (within(0x100, 0x12F) || within(0x132, 0x137) || within(0x14A, 0x177));
  if (evenCapitals) return static_cast<char16_t>(unit & ~1U);
  if (within(0x139, 0x148) || within(0x179, 0x17E)) return unit % 2 == 0 ? minus(1) : unit;
  if (unit == 0x3AC) return u'\u0386';
  if (within(0x3AD, 0x3AF)) return minus(0x25);
  if (within(0x3B1, 0x3CB) && unit != 0x3C2) return minus(0x20);
  if (unit == 0x3CC) return u'\u038C';
  if (within(0x3CD, 0x3CE)) return minus(0x3F);
  if (within(0x430, 0x44F)) return minus(0x20);
  if (within(0x450, 0x45F)) return minus(0x50);
  if (within(0x460, 0x481) || within(0x48A, 0x4BF) || within(0x4D0, 0x52F)) {
    return static_cast<char16_t>(unit & ~1U);
  }
  return unit;
}

constexpr std::size_t kTableSize = 0x530;

constexpr auto kUpper = [] {
  std::array<char16_t, kTableSize> table{};
  for (char16_t unit = 0; unit < kTableSize; ++unit) {
    const bool small = unit >= u'a' && unit <= u'z';
    table[unit] = small          ? static_cast<char16_t>(unit - 0x20)
                  : unit >= 0xE0 ? UpperBeyondAscii(unit)
                                 : unit;
  }
  return table;
}();

void AppendPoint(std::string& utf8, std::uint32_t point) {
  const auto tail = [point](unsigned shift) {
    return static_cast<char>(0x80U | ((point >> shift) & 0x3FU));
  };
  if (point < 0x80) {
    utf8 += static_cast<char>(point);
  } else if (point < 0x800) {
    utf8 += {static_cast<char>(0xC0U | (point >> 6U)), tail(0)};
  } else if (point < 0x10000) {
    utf8 += {static_cast<char>(0xE0U | (point >> 12U)), tail(6), tail(0)};
  } else {
    utf8 += {static_cast<char>(0xF0U | (point >> 18U)), tail(12), tail(6), tail(0)};
  }
}

}  // namespace

char16_t UpperCase(char16_t unit) { return unit < kTableSize ? kUpper[unit] : unit; }

std::string Utf8FromUtf16(std::u16string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (IsLead(unit) && i + 1 < text.size() && IsTrail(text[i + 1])) {
      ++i;
      AppendPoint(utf8, 0x10000U + ((unit - 0xD800U) << 10U) + (text[i] - 0xDC00U));
    } else {
      AppendPoint(utf8, IsLead(unit) || IsTrail(unit) ? 0xFFFDU : std::uint32_t{unit});
    }
  }
  return utf8;
}

bool IsWellFormed(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsTrail(text[i])) return false;
    if (!IsLead(text[i])) continue;
    ++i;
    if (i == text.size() || !IsTrail(text[i])) return false;
  }
  return true;
}

}  // namespace morvelle
