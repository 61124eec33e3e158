#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "ports/dialogs.h"

namespace morvelle {

/// What a fuzz program does with one input. Each program has its own; the fuzzing engine, or the
/// replay of the kept inputs, calls it. A fault is a crash, what a sanitizer reports, or Demand.
void TryInput(std::string_view input);

/// Ends the process with a message when something that must hold does not.
inline void Demand(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

/// The input as a file that the program under test opens by name. It lies in memory (memfd_create
/// of Linux), so that a million inputs wear no disk.
class InputFile {
 public:
  explicit InputFile(std::string_view bytes) : descriptor_(memfd_create("input", 0)) {
    if (descriptor_ < 0) throw std::runtime_error("memfd_create");
    while (!bytes.empty()) {
      const auto written = write(descriptor_, bytes.data(), bytes.size());
      if (written <= 0) throw std::runtime_error("write");
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile() { close(descriptor_); }

  [[nodiscard]] std::filesystem::path Path() const {
    return "/proc/self/fd/" + std::to_string(descriptor_);
  }

 private:
  int descriptor_;
};

/// A user who agrees to nothing: every box is closed without a choice.

class ClosedBoxes final : public Dialogs {
 public:
  Button ShowMessage(const std::string& prompt, int style, const std::string& title) override {
    Demand(prompt.size() + title.size() < kLongest, "a message fits on a screen");
    constexpr int kButtonSet = 0x0F;
    if ((style & kButtonSet) == kBoxYesNo) return Button::No;
    return (style & kButtonSet) == kBoxOkCancel ? Button::Cancel : Button::Ok;
  }
  std::optional<std::string> AskText(const std::string&, const std::string&,
                                     const std::string&) override {
    return std::nullopt;
  }

 private:
  static constexpr std::size_t kLongest = 1U << 20U;
};

}  // namespace morvelle
