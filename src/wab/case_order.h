#pragma once

#include <string>
#include <vector>

namespace morvelle {

/// Puts texts in ascending order of their lower case, those that differ in case alone as a
/// selection sort leaves them which takes, at each position, the first smallest of what follows and
/// swaps it there when it is smaller. That is no stable order: (1a, 1b, 0c), compared by their
/// digit, give (0c, 1b, 1a). In n log n steps.
void SortByLowerCase(std::vector<std::string>& texts);

/// Of texts that follow each other and differ in case alone, keeps the last.
void KeepLastOfEach(std::vector<std::string>& texts);

}  // namespace morvelle
