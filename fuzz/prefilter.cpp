#include <algorithm>

#include "files/prefilter_file.h"
#include "fuzz/fuzzer.h"

namespace morvelle {

void TryInput(std::string_view input) {
  const std::array<std::string, kSlotCount> types = {"12", "8", "9", "22"};
  const auto words = ReadPrefilter(input, types);
  if (!words) return;
  const auto again = ReadPrefilter(PrefilterText("Filtre", *words, types), types);
  // A list without words is not written, and a file without any list is not read.
  if (std::ranges::all_of(*words, &std::vector<std::string>::empty)) {
    Demand(!again.has_value(), "a word file without any list is refused");
    return;
  }
  Demand(again.has_value(), "a word file that was written can be read");
  Demand(*again == *words, "words survive being written and read");
}

}  // namespace morvelle
