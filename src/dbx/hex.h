#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Bytes as text of hexadecimal digits, two upper-case digits a byte, and back. The folder store's
/// numbers are taken from that text, least significant byte first.
///
/// Error 13 where a digit is none, error 5 where the text is too short.
namespace morvelle {

std::string StrToHex(std::string_view bytes);

/// Eight digits as a number. The top byte has a sign of its own: with its high bit set it counts as
/// minus its low seven bits (FF is -127, 80 is 0), which is not two's complement.
std::int32_t HexToLong(std::string_view hex);

/// Six digits as a number, the third byte having the sign rule of HexToLong.
std::int32_t HexToLong24(std::string_view hex);

/// The bytes that the pairs of digits spell; a last digit without its pair is left out.
std::string HexToStr(std::string_view hex);

std::int16_t MaxInt(std::int16_t a, std::int16_t b);

}  // namespace morvelle
