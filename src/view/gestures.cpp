#include "view/gestures.h"

#include "app/messages/errors.h"
#include "view/meanwhile.h"
#include "view/mirror.h"

namespace morvelle {

bool Gestures::EndsProgram(const std::function<void()>& gesture) {
  const Meanwhile deeper(depth_, depth_ + 1);
  try {
    gesture();
  } catch (const ProgramEnd&) {
    return true;
  }
  return false;
}

void Gestures::Perform(const std::function<void()>& gesture) {
  if (stopped_ || mirror_.Flushing()) return;
  if (EndsProgram(gesture)) {
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
