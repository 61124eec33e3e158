#pragma once

#include <string>
#include <vector>

namespace morvelle {

enum class PrintOutcome { Printed, Cancelled, Failed };

/// Paper, through the desktop's own printing.
class Printer {
 public:
  Printer() = default;
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;
  virtual ~Printer() = default;

  /// Shows the printer dialog and prints the lines on pages of their own, unless the user cancels.
  /// Lines are Windows-1252 and keep the blanks at their start; one that is too long for the paper
  /// goes on below. `title` names the job in the printer's queue and does not reach the paper.
  virtual PrintOutcome Print(const std::string& title, const std::vector<std::string>& lines) = 0;
};

}  // namespace morvelle
