#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/rule_tables.h"

namespace morvelle {

/// Words for the four lists of a rule.
using SlotWords = std::array<std::vector<std::string>, kSlotCount>;

/// A prefilter word file (`.oe`): the head of a rule file, for each list its criterion's lines with
/// one word a line up to "EOF", and "EOR" at the end. Lines end in CR LF, LF or CR and blank ones
/// count nowhere, for people write such files by hand; a word with a tab or another control
/// character is left out. Nothing when a marker is missing, no list is there (the labels are
/// Windows-1252) or a zero byte is.
std::optional<SlotWords> ReadPrefilter(std::string_view text,
                                       const std::array<std::string, kSlotCount>& slotTypes);

/// The file that gives back those words; a list without words is left out.
std::string PrefilterText(std::string_view name, const SlotWords& words,
                          const std::array<std::string, kSlotCount>& slotTypes);

}  // namespace morvelle
