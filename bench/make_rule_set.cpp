#include <cstdlib>
#include <iostream>

#include "bench/rule_set.h"

/// make_rule_set FILE [RULES]: writes the rule set of the benchmarks, for measuring other programs
/// on the same file.
int main(int count, char** arguments) {
  if (count < 2) {
    std::cerr << "make_rule_set FILE [RULES]\n";
    return EXIT_FAILURE;
  }
  morvelle::bench::WriteRuleSet(arguments[1], count > 2 ? std::atoi(arguments[2]) : 4096);
  return EXIT_SUCCESS;
}
