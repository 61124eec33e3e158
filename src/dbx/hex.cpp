#include "dbx/hex.h"

#include "app/messages/errors.h"

namespace morvelle {

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

std::int32_t Digit(char digit) {
  const auto value = kDigits.find(digit);
  if (value == std::string_view::npos) throw RuntimeError(ErrorNumber::TypeMismatch);
  return static_cast<std::int32_t>(value);
}

/// The byte spelt by the pair of digits at `index`, counted in pairs.
std::int32_t ByteAt(std::string_view hex, std::size_t index) {
  if (hex.size() < 2 * index + 2) throw RuntimeError(ErrorNumber::InvalidCall);
  return Digit(hex[2 * index]) * 16 + Digit(hex[2 * index + 1]);
}

/// The top byte is within -127..127, so that four bytes never leave the 32 bits.
std::int32_t Number(std::string_view hex, std::size_t byteCount) {
  const auto top = ByteAt(hex, byteCount - 1);
  std::int32_t value = top >= 0x80 ? -(top - 0x80) : top;
  for (std::size_t i = byteCount - 1; i-- > 0;) value = value * 256 + ByteAt(hex, i);
  return value;
}

}  // namespace

std::string StrToHex(std::string_view bytes) {
  std::string hex;
  hex.reserve(2 * bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    hex += kDigits[value / 16U];
    hex += kDigits[value % 16U];
  }
  return hex;
}

std::int32_t HexToLong(std::string_view hex) { return Number(hex, 4); }

std::int32_t HexToLong24(std::string_view hex) { return Number(hex, 3); }

std::string HexToStr(std::string_view hex) {
  std::string bytes;
  bytes.reserve(hex.size() / 2);
  for (std::size_t i = 0; i < hex.size() / 2; ++i) bytes += static_cast<char>(ByteAt(hex, i));
  return bytes;
}

std::int16_t MaxInt(std::int16_t a, std::int16_t b) { return a < b ? b : a; }

}  // namespace morvelle
