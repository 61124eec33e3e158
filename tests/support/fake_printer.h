#pragma once

#include <string>
#include <vector>

#include "ports/printer.h"

namespace morvelle {

/// A printer that keeps what it was given; `outcome` is what the user or the paper makes of it.
class FakePrinter final : public Printer {
 public:
  PrintOutcome outcome = PrintOutcome::Printed;
  std::vector<std::vector<std::string>> jobs;
  std::vector<std::string> titles;

  PrintOutcome Print(const std::string& title, const std::vector<std::string>& lines) override {
    titles.push_back(title);
    if (outcome == PrintOutcome::Printed) jobs.push_back(lines);
    return outcome;
  }
};

}  // namespace morvelle
