#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"

namespace morvelle {

/// A case kept as text: what goes in, and what comes out of it.
struct TextCase {
  std::string what;
  std::string in;
  std::string out;
};

inline void PrintTo(const TextCase& given, std::ostream* out) { *out << given.what; }

/// The cases of a file (UTF-8): a line "=== WHAT", the lines that go in, a line "---", the lines
/// that come out. U+240D stands for a carriage return; U+2404 at the end of the last line says that
/// no line feed ends it.
inline std::vector<TextCase> TextCases(const std::filesystem::path& file) {
  auto text = "\n" + ReadFile(file);
  const auto replace = [&text](std::string_view from, std::string_view to) {
    for (auto at = text.find(from); at != text.npos; at = text.find(from, at + to.size())) {
      text.replace(at, from.size(), to);
    }
  };
  replace("\u240D", "\r");
  replace("\u2404\n", "");
  std::vector<TextCase> cases;
  for (auto at = text.find("=== "); at != text.npos;) {
    const auto next = text.find("=== ", at + 1);
    const auto one = text.substr(at + 4, next == text.npos ? next : next - at - 4);
    const auto in = one.find('\n') + 1;
    const auto bar = one.find("---\n");
    cases.push_back({one.substr(0, in - 1), one.substr(in, bar - in), one.substr(bar + 4)});
    at = next;
  }
  return cases;
}

}  // namespace morvelle
