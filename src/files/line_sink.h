#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvelle {

/// Where the lines of a listing go: a file's text or the lines for a printer. A file has markers
/// and no indentation, paper has indentation, gaps and no markers.
class LineSink {
 public:
  enum class Output { File, Paper };

  explicit LineSink(Output output) : output_(output) {}

  [[nodiscard]] bool OnPaper() const { return output_ == Output::Paper; }
  /// A label or a value; `indent` is its number of blanks on paper. There a byte that cannot be
  /// printed shows as one stand-in character.
  void Line(int indent, std::string_view text);
  /// In a file only.
  void Marker(std::string_view marker);
  /// An empty line, on paper only.
  void Gap();

  /// What a file holds so far: each line ended by CR LF.
  [[nodiscard]] const std::string& FileText() const { return text_; }
  [[nodiscard]] const std::vector<std::string>& PaperLines() const { return lines_; }

 private:
  Output output_;
  std::string text_;
  std::vector<std::string> lines_;
};

}  // namespace morvelle
