#include "platform/book_formats.h"

#include <algorithm>
#include <array>

#include "app/messages/text.h"
#include "platform/book_csv.h"

namespace morvelle {

namespace {

/// Stands for a character that Windows-1252 lacks: the one that no text holds.
constexpr char kLacking = '\0';

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool StartsWith(std::string_view text, std::string_view head) {
  return EqualIgnoringCase(text.substr(0, head.size()), head);
}

/// Lines of a text in which a line that starts with a blank goes on with the one before it.
std::vector<std::string> UnfoldedLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = std::min(text.find_first_of("\r\n"), text.size());
    const auto line = text.substr(0, end);
    if (!lines.empty() && !line.empty() && (line[0] == ' ' || line[0] == '\t')) {
      lines.back() += line.substr(1);
    } else {
      lines.emplace_back(line);
    }
    text.remove_prefix(end);
    text.remove_prefix(std::min<std::size_t>(text.starts_with("\r\n") ? 2 : 1, text.size()));
  }
  return lines;
}

int HexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  const char small = LowerCase(digit);
  return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

std::string FromQuotedPrintable(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '=' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
    if (low < 0) {
      decoded += text[i];
      continue;
    }
    decoded += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return AsWindows1252(decoded);
}

std::string FromBase64(std::string_view text) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string decoded;
  unsigned bits = 0;
  int count = 0;
  for (const char character : text) {
    const auto digit = kDigits.find(character);
    if (digit == std::string_view::npos) continue;
    bits = bits << 6U | static_cast<unsigned>(digit);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    decoded += static_cast<char>(bits >> static_cast<unsigned>(count) & 0xFFU);
  }
  return AsWindows1252(decoded);
}

/// The value of a vCard line, its "\," and kin resolved.
std::string CardValue(std::string_view parameters, std::string_view value) {
  if (LowerCase(std::string(parameters)).find("quoted-printable") != std::string::npos) {
    return FromQuotedPrintable(value);
  }
  std::string plain;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\\' && i + 1 < value.size()) ++i;
    plain += value[i];
  }
  if (StartsWith(plain, "mailto:")) plain.erase(0, std::string_view("mailto:").size());
  return plain;
}

std::vector<std::string> ReadVCards(std::string_view text) {
  std::vector<std::string> entries;
  bool hasAddress = true;
  for (const auto& line : UnfoldedLines(text)) {
    const auto colon = std::min(line.find(':'), line.size());
    std::string_view name = std::string_view(line).substr(0, std::min(line.find(';'), colon));
    if (EqualIgnoringCase(Trimmed(line), "BEGIN:VCARD")) hasAddress = false;
    if (EqualIgnoringCase(Trimmed(line), "END:VCARD") && !hasAddress) entries.emplace_back();
    // A line may belong to a group: "item1.EMAIL".
    if (const auto dot = name.rfind('.'); dot != std::string_view::npos)
      name.remove_prefix(dot + 1);
    if (!EqualIgnoringCase(Trimmed(name), "EMAIL") || colon == line.size()) continue;
    const std::string_view whole = line;
    entries.emplace_back(Trimmed(CardValue(whole.substr(0, colon), whole.substr(colon + 1))));
    hasAddress = true;
  }
  return entries;
}

std::vector<std::string> ReadLdif(std::string_view text) {
  constexpr std::array<std::string_view, 3> kAddress = {"mail", "mozillaSecondEmail",
                                                        "xmozillasecondemail"};
  std::vector<std::string> entries;
  bool hasAddress = true;
  for (const auto& line : UnfoldedLines(text)) {
    const auto colon = line.find(':');
    if (colon == std::string::npos || line[0] == '#') continue;
    const auto name = std::string_view(line).substr(0, std::min(line.find(';'), colon));
    auto value = std::string_view(line).substr(colon + 1);
    if (EqualIgnoringCase(name, "dn")) {
      if (!hasAddress) entries.emplace_back();
      hasAddress = false;
    }
    const auto isIt = [&](std::string_view known) { return EqualIgnoringCase(known, name); };
    if (std::none_of(kAddress.begin(), kAddress.end(), isIt)) continue;
    const bool encoded = value.starts_with(':');
    if (encoded) value.remove_prefix(1);
    entries.push_back(encoded ? FromBase64(value) : std::string(Trimmed(value)));
    hasAddress = true;
  }
  if (!hasAddress) entries.emplace_back();
  return entries;
}

bool IsLdif(std::string_view text) {
  for (const auto* head : {"dn:", "version:", "#"}) {
    if (!StartsWith(text, head)) continue;
    return StartsWith(text, "dn:") || text.find("\ndn:") != std::string_view::npos;
  }
  return false;
}

}  // namespace

std::string AsWindows1252(std::string_view bytes) {
  const auto wide = Utf16FromUtf8(bytes);
  if (!wide) return std::string(bytes);
  std::string text(wide->size(), '\0');
  std::transform(wide->begin(), wide->end(), text.begin(),
                 [](char16_t unit) { return ByteOf(unit).value_or(kLacking); });
  return text;
}

std::optional<Book> ReadBook(std::string_view bytes) {
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  if (bytes.find('\0') != std::string_view::npos) return std::nullopt;
  const auto converted = AsWindows1252(bytes);
  std::string_view text = converted;
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  Book book;
  book.entries = StartsWith(text, "BEGIN:VCARD") ? ReadVCards(text)
                 : IsLdif(text)                  ? ReadLdif(text)
                                                 : ReadCsv(text);
  for (auto& entry : book.entries) {
    if (entry.find(kLacking) == std::string::npos) continue;
    entry.clear();
    ++book.leftOut;
  }
  return book;
}

}  // namespace morvelle
