#include "platform/book_csv.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "app/messages/text.h"

namespace morvelle {

namespace {

using Row = std::vector<std::string>;

/// Longest quoted field, in bytes; notes are a few lines. It bounds how far a stray quote is
/// followed.
constexpr std::size_t kLongestQuoted = 8192;

constexpr std::array kAddressHeadings = {
    "adresse de messagerie"_cp,
    "adresse e-mail"_cp,
    "adresse email"_cp,
    "adresse électronique"_cp,
    "adresse mail"_cp,
    "courriel"_cp,
    "courrier électronique"_cp,
    "e-mail address"_cp,
    "email address"_cp,
    "e-mail"_cp,
    "email"_cp,
    "mail"_cp,
    "primary email"_cp,
    "secondary email"_cp,
};

std::string Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(" \t") - first + 1));
}

/// "E-mail 2 Address" and "Adresse de messagerie 2" are further addresses of the same kind.
bool IsAddressHeading(std::string_view heading) {
  std::string plain;
  for (const char character : LowerCase(std::string(heading))) {
    if (character >= '0' && character <= '9') continue;
    if (character == ' ' && (plain.empty() || plain.back() == ' ')) continue;
    plain += character;
  }
  if (plain.ends_with(' ')) plain.pop_back();
  return std::find(kAddressHeadings.begin(), kAddressHeadings.end(), plain) !=
         kAddressHeadings.end();
}

class CsvText {
 public:
  explicit CsvText(std::string_view text) : rest_(text), separator_(SeparatorOf(text)) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  /// The next row; `fields` is how many a row is known to have, 0 when that is not known yet.
  Row TakeRow(std::size_t fields) {
    const auto before = rest_;
    bool severalLines = false;
    auto row = TakeFields(true, severalLines);
    if (!severalLines || fields == 0 || row.size() == fields) return row;
    // A quote has joined what are rows of their own.
    rest_ = before;
    return TakeFields(false, severalLines);
  }

 private:
  static char SeparatorOf(std::string_view text) {
    const auto line = text.substr(0, text.find_first_of("\r\n"));
    char separator = ';';
    std::ptrdiff_t most = 0;
    for (const char candidate : {';', ',', '\t'}) {
      const auto count = std::count(line.begin(), line.end(), candidate);
      if (count > most) separator = candidate;
      most = std::max(most, count);
    }
    return separator;
  }

  Row TakeFields(bool acrossLines, bool& severalLines) {
    Row row;
    for (;;) {
      row.push_back(TakeField(acrossLines, severalLines));
      if (rest_.empty()) return row;
      const char end = rest_.front();
      rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : 1);
      if (end != separator_) return row;
    }
  }

  std::string TakeField(bool acrossLines, bool& severalLines) {
    std::string field;
    if (TakeQuoted(acrossLines, field, severalLines)) return field;
    const auto end =
        std::min(rest_.find_first_of(std::string{separator_, '\r', '\n'}), rest_.size());
    field = Trimmed(rest_.substr(0, end));
    rest_.remove_prefix(end);
    return field;
  }

  /// False, with nothing taken, where no whole quoted field stands.
  bool TakeQuoted(bool acrossLines, std::string& field, bool& severalLines) {
    const auto start = rest_.find_first_not_of(' ');
    if (start == std::string_view::npos || rest_[start] != '"') return false;
    std::string text;
    bool lineBreak = false;
    for (auto i = start + 1; i < rest_.size() && i < start + kLongestQuoted; ++i) {
      const char character = rest_[i];
      if (character == '\r' || character == '\n') {
        if (!acrossLines) return false;
        lineBreak = true;
      }
      if (character != '"') {
        text += character;
        continue;
      }
      if (i + 1 < rest_.size() && rest_[i + 1] == '"') {
        text += '"';
        ++i;
        continue;
      }
      const auto next = std::min(rest_.find_first_not_of(' ', i + 1), rest_.size());
      if (next < rest_.size() && rest_[next] != separator_ && rest_[next] != '\r' &&
          rest_[next] != '\n') {
        return false;
      }
      rest_.remove_prefix(next);
      field = Trimmed(text);
      severalLines = severalLines || lineBreak;
      return true;
    }
    return false;
  }

  std::string_view rest_;
  char separator_;
};

bool IsBlank(const Row& row) {
  return std::all_of(row.begin(), row.end(), [](const auto& field) { return field.empty(); });
}

bool HasAt(std::string_view field) { return field.find('@') != std::string_view::npos; }

/// The column in which "@" stands most often; 0 when it stands in none.
std::size_t ColumnWithAt(const std::vector<Row>& rows) {
  std::vector<std::size_t> counts(1);
  for (const auto& row : rows) {
    counts.resize(std::max(counts.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (HasAt(row[i])) ++counts[i];
    }
  }
  return static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin());
}

}  // namespace

std::vector<std::string> ReadCsv(std::string_view text) {
  CsvText csv(text);
  std::vector<Row> rows;
  while (!csv.AtEnd()) {
    auto row = csv.TakeRow(rows.empty() ? 0 : rows.front().size());
    if (!IsBlank(row)) rows.push_back(std::move(row));
  }
  if (rows.empty()) return {};
  std::vector<std::size_t> columns;
  const auto& head = rows.front();
  for (std::size_t i = 0; i < head.size(); ++i) {
    if (IsAddressHeading(head[i])) columns.push_back(i);
  }
  bool hasHeadings = true;
  if (columns.empty()) {
    const auto column = ColumnWithAt(rows);
    hasHeadings = column >= head.size() || !HasAt(head[column]);
    // What the column holds beside addresses is none.
    for (auto& row : rows) {
      if (column < row.size() && !HasAt(row[column])) row[column].clear();
    }
    columns.push_back(column);
  }
  std::vector<std::string> entries;
  for (std::size_t r = hasHeadings ? 1 : 0; r < rows.size(); ++r) {
    const auto before = entries.size();
    for (const auto column : columns) {
      if (column < rows[r].size() && !rows[r][column].empty()) entries.push_back(rows[r][column]);
    }
    if (entries.size() == before) entries.emplace_back();
  }
  return entries;
}

}  // namespace morvelle
