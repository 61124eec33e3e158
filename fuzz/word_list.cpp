#include "core/word_lists.h"
#include "fuzz/fuzzer.h"

namespace morvelle {

void TryInput(std::string_view input) {
  const auto words = DecodeWords(input);
  Demand(DecodeWords(EncodeWords(words)) == words, "the words of a value are the words put in it");
  const auto sorted = SortedOnce(words);
  Demand(SortedOnce(sorted) == sorted, "a sorted list is sorted");
  for (const auto& word : words) {
    Demand(word.find('\0') == std::string::npos, "no word holds a zero");
  }
}

}  // namespace morvelle
