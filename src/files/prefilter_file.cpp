#include "files/prefilter_file.h"

#include <algorithm>

#include "app/messages/text.h"
#include "core/entry_types.h"
#include "files/labels.h"
#include "files/line_sink.h"

namespace morvelle {

namespace {

bool IsBlank(std::string_view line) { return line.find_first_not_of(" \t") == line.npos; }

/// Whether the window would refuse the line where a word is typed. The bytes above 0x80 without a
/// character are halves of characters in the mail of other countries.
bool HasControl(std::string_view line) {
  return std::any_of(line.begin(), line.end(), [](char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == '\x7F';
  });
}

class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}
  /// The next line that is not blank.
  bool Next() {
    while (!rest_.empty()) {
      const auto end = std::min(rest_.find_first_of("\r\n"), rest_.size());
      line_ = rest_.substr(0, end);
      rest_.remove_prefix(rest_.substr(end).starts_with("\r\n") ? end + 2
                                                                : std::min(end + 1, rest_.size()));
      if (!IsBlank(line_)) return true;
    }
    return false;
  }
  [[nodiscard]] std::string_view Line() const { return line_; }

 private:
  std::string_view rest_;
  std::string_view line_;
};

/// The words up to "EOF"; false when it is missing.
bool TakeWords(Lines& lines, std::vector<std::string>& words) {
  bool first = true;
  bool afterType = false;
  while (lines.Next()) {
    const auto line = lines.Line();
    if (line == labels::kEndOfWords) return true;
    if (line == labels::kEndOfRule) return false;
    const bool isLabel = (first && line == labels::kCriterionValueType) ||
                         ((first || afterType) && line == labels::kCriterionValue);
    afterType = false;
    if (isLabel && line == labels::kCriterionValueType) {
      if (!lines.Next()) return false;
      afterType = true;
    } else if (!isLabel && !HasControl(line)) {
      words.emplace_back(line);
    }
    first = false;
  }
  return false;
}

}  // namespace

std::optional<SlotWords> ReadPrefilter(std::string_view text,
                                       const std::array<std::string, kSlotCount>& slotTypes) {
  // A zero ends a word in a criterion: inside one it would make two, and an empty one is in every
  // message.
  if (text.find('\0') != text.npos) return std::nullopt;
  SlotWords words;
  bool anyList = false;
  Lines lines(text);
  while (lines.Next()) {
    if (lines.Line() == labels::kEndOfRule) return anyList ? std::optional(words) : std::nullopt;
    if (lines.Line() != labels::kCriterionType || !lines.Next()) continue;
    for (std::size_t slot = 0; slot < slotTypes.size(); ++slot) {
      if (lines.Line() != slotTypes[slot]) continue;
      if (!TakeWords(lines, words[slot])) return std::nullopt;
      anyList = true;
      break;
    }
  }
  return std::nullopt;
}

std::string PrefilterText(std::string_view name, const SlotWords& words,
                          const std::array<std::string, kSlotCount>& slotTypes) {
  LineSink file(LineSink::Output::File);
  const auto pair = [&](std::string_view label, std::string_view value) {
    file.Line(0, label);
    file.Line(0, value);
  };
  std::vector<std::string> ids;
  for (const auto& list : words) {
    if (!list.empty()) ids.push_back(ThreeDigitId(static_cast<int>(ids.size())));
  }
  pair(labels::kRuleName, name);
  pair(labels::kRuleVersion, "0");
  pair(labels::kRuleEnabled, "1");
  file.Line(0, labels::kActions);
  pair(labels::kActionsOrder, "");
  file.Line(0, labels::kCriteria);
  pair(labels::kCriteriaOrder, JoinIds(ids));
  std::size_t written = 0;
  for (std::size_t slot = 0; slot < words.size(); ++slot) {
    if (words[slot].empty()) continue;
    pair(labels::kCriterionId, ids[written++]);
    pair(labels::kCriterionFlags, "0");
    pair(labels::kCriterionLogic, "1");
    pair(labels::kCriterionType, slotTypes[slot]);
    pair(labels::kCriterionValueType, kValueTypeBytes);
    file.Line(0, labels::kCriterionValue);
    for (const auto& word : words[slot]) file.Line(0, word);
    file.Marker(labels::kEndOfWords);
  }
  file.Marker(labels::kEndOfRule);
  return file.FileText();
}

}  // namespace morvelle
