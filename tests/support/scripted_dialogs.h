#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <deque>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "app/messages/text.h"
#include "ports/dialogs.h"

namespace morvelle {

/// A message box or an input box as it was shown. Texts are Windows-1252.
struct ShownBox {
  std::string prompt;
  int style = kBoxOk;
  std::string title;

  bool operator==(const ShownBox&) const = default;
};

inline void PrintTo(const ShownBox& box, std::ostream* out) {
  *out << '"' << ToUtf8(box.prompt) << "\" (style " << box.style << ", title \""
       << ToUtf8(box.title) << "\")";
}

/// Dialogs that a test plays by a script. The boxes are expected in order, each with its answer; a
/// box that was not expected, or an expected one that never came, fails the test.
///
///     dialogs.Expect("Voulez-vous vraiment quitter ?"_cp, Button::Yes);
///     dialogs.Expect("Fini"_cp, kBoxInformation, "Morvelle");   // style and title are checked too
///     dialogs.ExpectText("Nom de la règle"_cp, "Famille");      // typed and confirmed
class ScriptedDialogs : public Dialogs {
 public:
  ~ScriptedDialogs() override { ExpectAllShown(); }

  /// A message box of this text, whatever its style and title.
  void Expect(std::string_view prompt, Button answer = Button::Ok,
              const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    steps_.push_back({std::string(prompt), {}, {}, answer, {}, false, file, line});
  }
  /// A message box of this text, style and title.
  void Expect(std::string_view prompt, int style, std::string_view title,
              Button answer = Button::Ok, const char* file = __builtin_FILE(),
              int line = __builtin_LINE()) {
    steps_.push_back(
        {std::string(prompt), style, std::string(title), answer, {}, false, file, line});
  }
  /// An input box of this text; nothing as answer cancels it.
  void ExpectText(std::string_view prompt, const std::optional<std::string>& answer,
                  const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    steps_.push_back({std::string(prompt), {}, {}, Button::Ok, answer, true, file, line});
  }

  /// From now on a box that is not expected is recorded and closed without a choice.
  void AllowAnyBox() { anyAllowed_ = true; }

  /// Fails the test for every expected box that has not come, and forgets it.
  void ExpectAllShown() {
    for (const auto& step : steps_) {
      ADD_FAILURE_AT(step.file, step.line) << "box never shown: \"" << ToUtf8(step.prompt) << '"';
    }
    steps_.clear();
  }

  /// Every box so far, expected or not; the proposals of input boxes stand beside them.
  std::vector<ShownBox> shown;
  std::vector<std::string> proposals;

  Button ShowMessage(const std::string& prompt, int style, const std::string& title) override {
    shown.push_back({prompt, style, title});
    const auto step = TakeStep(shown.back(), false);
    if (!step) return Closed(style);
    if (!Offers(style, step->answer)) {
      ADD_FAILURE_AT(step->file, step->line)
          << "the box has no such button: " << testing::PrintToString(shown.back());
    }
    return step->answer;
  }

  std::optional<std::string> AskText(const std::string& prompt, const std::string& title,
                                     const std::string& proposal) override {
    shown.push_back({prompt, kBoxOkCancel, title});
    proposals.push_back(proposal);
    const auto step = TakeStep(shown.back(), true);
    return step ? step->typed : std::nullopt;
  }

 private:
  struct Step {
    std::string prompt;
    std::optional<int> style;
    std::optional<std::string> title;
    Button answer;
    std::optional<std::string> typed;
    bool isInput;
    /// Where the test wrote the step.
    const char* file;
    int line;
  };

  /// The next step of the script when it is this box; nothing, and a failure, when it is not.
  std::optional<Step> TakeStep(const ShownBox& box, bool isInput) {
    if (!steps_.empty()) {
      const auto& next = steps_.front();
      if (next.isInput == isInput && next.prompt == box.prompt &&
          next.style.value_or(box.style) == box.style &&
          next.title.value_or(box.title) == box.title) {
        auto step = next;
        steps_.pop_front();
        return step;
      }
    }
    if (!anyAllowed_) {
      ADD_FAILURE() << "unexpected " << (isInput ? "input box " : "box ")
                    << testing::PrintToString(box)
                    << (steps_.empty() ? "" : ", expected: " + ToUtf8(steps_.front().prompt));
    }
    return std::nullopt;
  }

  static constexpr int kButtonSet = 0x0F;

  static bool Offers(int style, Button button) {
    switch (style & kButtonSet) {
      case kBoxYesNo:
        return button == Button::Yes || button == Button::No;
      case kBoxOkCancel:
        return button == Button::Ok || button == Button::Cancel;
      default:
        return button == Button::Ok;
    }
  }

  static Button Closed(int style) {
    switch (style & kButtonSet) {
      case kBoxYesNo:
        return Button::No;
      case kBoxOkCancel:
        return Button::Cancel;
      default:
        return Button::Ok;
    }
  }

  std::deque<Step> steps_;
  bool anyAllowed_ = false;
};

}  // namespace morvelle
