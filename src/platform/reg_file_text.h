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

/// A `.reg` file taken apart. A UTF-16 file is not copied: `body` then lies in the bytes given,
/// which must outlive it and lie at an even address.
struct RegFileText {
  RegFileFormat format;
  std::u16string_view body;  ///< What follows the header line.
  std::u16string converted;  ///< Holds the body of a file in another encoding.
};

/// Tells version and encoding by the header, which counts letter for letter. False: not a `.reg`
/// file. A version-5 file that is neither UTF-16 nor UTF-8 is read as Windows-1252.
bool DecodeRegFile(std::string_view bytes, RegFileText& text);

/// The header line of a version, without its line end.
std::u16string_view RegFileHeader(int version);

/// The bytes of a file.
class RegFileBytes {
 public:
  /// `text` as FormatRegText gives it. A UTF-16 text is not copied.
  RegFileBytes(std::u16string text, const RegFileFormat& format);
  [[nodiscard]] std::string_view View() const;
  /// The text again, for its memory to serve the next one.
  [[nodiscard]] std::u16string TakeText() { return std::move(wide_); }

 private:
  std::u16string wide_;
  std::string narrow_;
  bool isWide_;
};

}  // namespace morvelle
