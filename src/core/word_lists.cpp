#include "core/word_lists.h"

#include <algorithm>
#include <compare>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

bool BinaryLess(const std::string& left, const std::string& right) {
  return std::is_lt(CompareBinary(left, right));
}

std::size_t SlotIndex(int slot) { return static_cast<std::size_t>(slot); }

/// A value without its two closing zeros; one that lacks them ends with a word.
std::string_view WithoutEnd(std::string_view value) {
  if (value.size() < 2) return {};
  for (int i = 0; i < 2 && !value.empty() && value.back() == '\0'; ++i) value.remove_suffix(1);
  return value;
}

}  // namespace

std::string WordCountText(int count) {
  return std::to_string(count) + (count > 1 ? " mots" : " mot");
}

std::vector<std::string> DecodeWords(std::string_view value) {
  std::vector<std::string> words;
  value = WithoutEnd(value);
  while (!value.empty()) {
    const auto end = std::min(value.find('\0'), value.size());
    words.emplace_back(value.substr(0, end));
    value.remove_prefix(std::min(end + 1, value.size()));
  }
  return words;
}

std::size_t CountWords(std::string_view value) {
  value = WithoutEnd(value);
  const auto ended = static_cast<std::size_t>(std::count(value.begin(), value.end(), '\0'));
  return ended + (value.empty() || value.back() == '\0' ? 0 : 1);
}

std::string EncodeWords(const std::vector<std::string>& words) {
  if (words.empty()) return {};
  std::string value;
  for (const auto& word : words) {
    value += word;
    value += '\0';
  }
  value.append(2, '\0');
  return value;
}

std::vector<std::string> SortedOnce(std::vector<std::string> words) {
  if (!std::is_sorted(words.begin(), words.end(), BinaryLess)) {
    std::sort(words.begin(), words.end(), BinaryLess);
  }
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

void WordLists::FillTable(int slot) {
  Trap(messages_.Boxes(), "FillTable", [&] {
    const auto& listed = display_.ListedWords(slot);
    if (listed.empty()) return;
    auto words = SortedOnce(listed);
    tables_.WordCount[SlotIndex(slot)] = Checked<std::int16_t>(words.size());
    tables_.Words(slot) = std::move(words);
    display_.ShowWordCount(slot, WordCountText(tables_.WordCount[SlotIndex(slot)]));
  });
}

void WordLists::SortTable(std::vector<std::string>& words, int slot) {
  Trap(messages_.Boxes(), "SortTable", [&] {
    const auto count = static_cast<std::size_t>(tables_.WordCount[SlotIndex(slot)]);
    std::sort(words.begin(),
              words.begin() + static_cast<std::ptrdiff_t>(std::min(count, words.size())),
              BinaryLess);
  });
}

std::string WordLists::EnCodeValue(int slot) {
  return Trap(messages_.Boxes(), "EnCodeValue", [&] {
    const auto count = static_cast<std::size_t>(tables_.WordCount[SlotIndex(slot)]);
    auto words = tables_.Words(slot);
    words.resize(std::min(count, words.size()));
    return EncodeWords(words);
  });
}

void WordLists::DecodeValue(std::string_view value, int slot) {
  Trap(messages_.Boxes(), "DecodeValue", [&] {
    auto words = DecodeWords(value);
    tables_.WordCount[SlotIndex(slot)] = Checked<std::int16_t>(words.size());
    tables_.Words(slot) = std::move(words);
    display_.ShowWordCount(slot, WordCountText(tables_.WordCount[SlotIndex(slot)]));
  });
}

}  // namespace morvelle
