#include "files/signature_file.h"

#include <algorithm>
#include <vector>

#include "app/messages/errors.h"

namespace morvelle {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// A line as a field: what is not quoted loses the blanks before it and ends at a comma.
std::string FieldOf(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  const bool quoted = line.starts_with('"');
  if (quoted) line.remove_prefix(1);
  return std::string(line.substr(0, line.find(quoted ? '"' : ',')));
}

std::vector<std::string_view> LinesOf(std::string_view content) {
  std::vector<std::string_view> lines;
  while (!content.empty()) {
    const auto end = std::min(content.find(kLineEnd), content.size());
    lines.push_back(content.substr(0, end));
    content.remove_prefix(std::min(end + kLineEnd.size(), content.size()));
  }
  return lines;
}

}  // namespace

std::string SignatureText(const Signature& signature) {
  const auto number = (signature.type < 0 ? "" : " ") + std::to_string(signature.type) + " ";
  std::string text;
  for (const auto& line : {signature.file, signature.name, signature.text, number}) {
    text += line;
    text += kLineEnd;
  }
  return text;
}

std::optional<Signature> ReadSignature(std::string_view content) {
  constexpr std::size_t kFields = 4;
  const auto lines = LinesOf(content);
  if (lines.size() < kFields) return std::nullopt;
  Signature signature{FieldOf(lines[0]), FieldOf(lines[1]), {}, 0};
  if (lines.size() == kFields) {
    signature.text = FieldOf(lines[2]);
  } else {
    for (std::size_t i = 2; i + 1 < lines.size(); ++i) {
      if (i > 2) signature.text += kLineEnd;
      signature.text += lines[i];
    }
  }
  try {
    signature.type = ToLong(FieldOf(lines.back()));
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
  return signature;
}

}  // namespace morvelle
