#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/messages/messages.h"
#include "core/displays.h"
#include "core/rule_tables.h"

namespace morvelle {

/// "0 mot", "1 mot", "2 mots".
std::string WordCountText(int count);

/// The words of a criterion's value: each followed by one zero byte, then two more. A last word
/// that lacks its zero counts all the same.
std::vector<std::string> DecodeWords(std::string_view value);
/// How many DecodeWords gives.
std::size_t CountWords(std::string_view value);
std::string EncodeWords(const std::vector<std::string>& words);

/// In ascending binary order, each word once.
std::vector<std::string> SortedOnce(std::vector<std::string> words);

/// The word lists of the rule being edited, between list boxes, tables and criterion values.
class WordLists {
 public:
  WordLists(const Messages& messages, RuleTables& tables, WordListDisplay& display)
      : messages_(messages), tables_(tables), display_(display) {}

  /// Takes over a slot's list box: sorted, each word once. An empty list box leaves the words as
  /// they were.
  void FillTable(int slot);
  /// Puts the first WordCount words of the array in ascending binary order.
  void SortTable(std::vector<std::string>& words, int slot);
  /// The slot's words as a criterion value; empty without words.
  std::string EnCodeValue(int slot);
  /// Makes the words of a criterion value the slot's, in their stored order.
  void DecodeValue(std::string_view value, int slot);

 private:
  const Messages& messages_;
  RuleTables& tables_;
  WordListDisplay& display_;
};

}  // namespace morvelle
