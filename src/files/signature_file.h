#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morvelle {

/// A mail signature as the identity keeps it.
struct Signature {
  /// Full Windows path of a text file that holds it; may be empty.
  std::string file;
  std::string name;
  std::string text;
  std::int32_t type = 0;
};

/// A `.sgn` file: the four fields, a line each; the number with a blank before it, in the place of
/// its sign, and one after it.
std::string SignatureText(const Signature& signature);

/// A `.sgn` file taken apart: the first line is the file, the second the name, the last the type,
/// what stands between is the text. A field on one line ends at a comma, or at the closing quote
/// when it begins with one; a text of several lines is kept whole, whatever ends them. Nothing when
/// there are fewer than four lines, or the type is no number.
std::optional<Signature> ReadSignature(std::string_view content);

}  // namespace morvelle
