#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace morvelle {

/// How a `.reg` file is written down; what was read is written back the same.
struct RegFileFormat {
  enum class Encoding { Windows1252, Utf8, Utf16 };
  /// 4 (`REGEDIT4`) or 5 (`Windows Registry Editor Version 5.00`). In version 4 the text and the
  /// string data given as hexadecimal digits are single-byte.
  int version = 5;
  Encoding encoding = Encoding::Utf16;
  bool byteOrderMark = true;
};

/// A remark that we put into a file which may lack keys: who imports it loses nothing by it.
inline constexpr std::u16string_view kInPartRemark =
    u"; Morvelle : fichier incomplet, son import ne supprime rien";
/// What we put before a value that may lack its end, so that its import does not replace a whole
/// one.
inline constexpr std::u16string_view kCutValueRemark = u"; Morvelle, valeur sans fin : ";

/// A `.reg` file taken apart. A UTF-16 file is not copied: `body` then lies in the bytes given,
/// which must outlive it and lie at an even address.
struct RegFileText {
  RegFileFormat format;
  std::u16string_view body;  ///< What follows the header line.
  std::u16string converted;  ///< Holds the body of a file in another encoding.
  bool cut = false;          ///< The file ends within a character.
};

/// The byte order marks of UTF-16LE and of UTF-8.
inline constexpr std::string_view kUtf16Mark = "\xFF\xFE";
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// Tells version and encoding by the header, which counts letter for letter but for blanks before
/// it. False: not a `.reg` file. A version-5 file that is neither UTF-16 nor UTF-8 is read as
/// Windows-1252.
bool DecodeRegFile(std::string_view bytes, RegFileText& text);

/// The header line of a version, without its line end.
std::u16string_view RegFileHeader(int version);

/// The bytes of a file in Windows-1252, from its whole text.
std::string Windows1252File(std::u16string_view text, int version);

}  // namespace morvelle
