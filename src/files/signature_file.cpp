#include "files/signature_file.h"

#include <algorithm>

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

/// What stands before the next line end, which goes too; nothing where there is none.
std::optional<std::string_view> TakeLine(std::string_view& content) {
  const auto end = content.find(kLineEnd);
  if (end == content.npos) return std::nullopt;
  const auto line = content.substr(0, end);
  content.remove_prefix(end + kLineEnd.size());
  return line;
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
  const auto file = TakeLine(content);
  const auto name = file ? TakeLine(content) : std::nullopt;
  if (!name) return std::nullopt;
  if (content.ends_with(kLineEnd)) content.remove_suffix(kLineEnd.size());
  const auto end = content.rfind(kLineEnd);
  if (end == content.npos) return std::nullopt;
  const auto text = content.substr(0, end);
  const bool oneLine = text.find_first_of(kLineEnd) == text.npos;
  Signature signature{FieldOf(*file), FieldOf(*name), oneLine ? FieldOf(text) : std::string(text),
                      0};
  try {
    signature.type = ToLong(FieldOf(content.substr(end + kLineEnd.size())));
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
  return signature;
}

}  // namespace morvelle
