#include "fuzz/fuzzer.h"
#include "platform/reg_file_reader.h"
#include "platform/reg_file_text.h"
#include "platform/reg_file_writer.h"

namespace morvelle {

namespace {

/// The file as the program would write it back; nothing for a file that is refused.
std::optional<std::string> WrittenBack(std::string_view bytes) {
  RegFileText text;
  if (!DecodeRegFile(bytes, text)) return std::nullopt;
  RegistryTree tree;
  ReadRegText(text.body, text.format.version, tree);
  RegFileContent content(tree, text.format);
  std::string file;
  for (auto piece = content.Next(); !piece.empty(); piece = content.Next()) file += piece;
  return file;
}

}  // namespace

void TryInput(std::string_view input) {
  const auto once = WrittenBack(input);
  if (!once) return;
  const auto twice = WrittenBack(*once);
  Demand(twice.has_value(), "a .reg file that was written can be read");
  Demand(*twice == *once, "reading and writing a .reg file again changes nothing");
}

}  // namespace morvelle
