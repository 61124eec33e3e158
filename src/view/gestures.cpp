#include "view/gestures.h"

#include "app/messages/errors.h"
#include "view/mirror.h"

namespace morvelle {

void Gestures::Perform(const std::function<void()>& gesture) {
  if (stopped_ || mirror_.Flushing()) return;
  bool ended = false;
  ++depth_;
  try {
    gesture();
  } catch (const ProgramEnd&) {
    ended = true;
  }
  --depth_;
  if (ended) {
    Stop();
    onEnd_();
  } else if (depth_ == 0 && !stopped_) {
    mirror_.Flush();
  }
}

void Gestures::Perform(Control& control, const std::function<void()>& gesture) {
  Perform([&] {
    mirror_.Recheck(control);
    gesture();
  });
}

}  // namespace morvelle
