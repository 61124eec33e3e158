#include <cstdlib>
#include <iostream>

#include "bench/rule_set.h"

/// make_rule_set FILE [RULES [WORDS]]: writes the rule set of the benchmarks, for measuring other
/// programs on the same file; with WORDS that of the limits, with one list of so many words.
int main(int count, char** arguments) {
  if (count < 2) {
    std::cerr << "make_rule_set FILE [RULES [WORDS]]\n";
    return EXIT_FAILURE;
  }
  morvelle::bench::WriteRuleSet(arguments[1], count > 2 ? std::atoi(arguments[2]) : 4096,
                                count > 3 ? std::atoi(arguments[3]) : 0);
  return EXIT_SUCCESS;
}
