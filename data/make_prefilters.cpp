#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "app/messages/text.h"
#include "disk/whole_file.h"
#include "files/file_names.h"
#include "files/prefilter_file.h"

/// make_prefilters FROM TO: makes the prefilter word file TO/NAME.oe of each word list
/// FROM/NAME.txt.
namespace morvelle {

namespace {

/// In the order of the slots, beside their criteria types.
constexpr std::array<std::string_view, kSlotCount> kHeadings = {"[expéditeur]"_cp, "[objet]",
                                                                "[corps]", "[destinataires]"};
const std::array<std::string, kSlotCount> kSlotTypes = {"12", "8", "9", "22"};

std::runtime_error Fault(const std::filesystem::path& file, int line, const char* what) {
  return std::runtime_error(file.string() + ":" + std::to_string(line) + ": " + what);
}

std::optional<std::size_t> SlotOf(std::string_view heading) {
  for (std::size_t slot = 0; slot < kHeadings.size(); ++slot) {
    if (heading == kHeadings[slot]) return slot;
  }
  return std::nullopt;
}

SlotWords WordsOf(const std::filesystem::path& file) {
  const auto content = ReadWholeFile(file, kTextFileLimit);
  if (!content) throw Fault(file, 0, "cannot be read");
  SlotWords words;
  std::optional<std::size_t> slot;
  std::string_view rest = *content;
  for (int number = 1; !rest.empty(); ++number) {
    const auto end = std::min(rest.find('\n'), rest.size());
    const auto utf8 = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (utf8.empty() || utf8.front() == '#') continue;
    const auto line = FromUtf8(utf8);
    if (!line) throw Fault(file, number, "a character that Windows-1252 lacks");
    if (const auto found = SlotOf(*line)) {
      slot = found;
    } else if (!slot) {
      throw Fault(file, number, "no heading yet");
    } else if (line->front() == ' ' || line->back() == ' ' || *line == "EOF" || *line == "EOR") {
      throw Fault(file, number, "not a word as a list can hold it");
    } else {
      words[*slot].push_back(*line);
    }
  }
  return words;
}

void MakePrefilters(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::filesystem::create_directories(to);
  for (const auto& entry : std::filesystem::directory_iterator(from)) {
    auto name = entry.path().filename();
    if (name.extension() != ".txt") continue;
    const auto text = PrefilterText(FileTitle(name.stem()), WordsOf(entry.path()), kSlotTypes);
    WriteWholeFile(to / name.replace_extension(".oe"), text);
  }
}

}  // namespace

}  // namespace morvelle

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("make_prefilters FROM TO\n", stderr);
    return 2;
  }
  try {
    morvelle::MakePrefilters(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_prefilters: %s\n", error.what());
    return 1;
  }
  return 0;
}
