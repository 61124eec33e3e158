#pragma once

#include <functional>

#include "ui/controls.h"

namespace morvelle {

class Mirror;

/// The way from a widget to its control: every gesture of the user passes through here.
class Gestures {
 public:
  /// `onEnd` closes the window when a gesture ended the program.
  Gestures(Mirror& mirror, std::function<void()> onEnd)
      : mirror_(mirror), onEnd_(std::move(onEnd)) {}

  /// Runs a gesture, then brings the widgets up to date. A widget's report while the widgets are
  /// being changed is an echo and is dropped.
  void Perform(const std::function<void()>& gesture);
  /// As above; the widget has already shown its own idea of the gesture and is put right.
  void Perform(Control& control, const std::function<void()>& gesture);

  /// The window closes: whatever still comes from its widgets is dropped.
  void Stop() { stopped_ = true; }
  /// A handler is at work, perhaps behind a message box.
  [[nodiscard]] bool Running() const { return depth_ > 0; }

 private:
  [[nodiscard]] bool EndsProgram(const std::function<void()>& gesture);

  Mirror& mirror_;
  std::function<void()> onEnd_;
  int depth_ = 0;
  bool stopped_ = false;
};

}  // namespace morvelle
