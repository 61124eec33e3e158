#include "view/mirror.h"

#include <utility>

#include "view/meanwhile.h"

namespace morvelle {

Aspects Aspects::All() {
  Aspects all;
  for (const auto aspect : {Aspect::Enabled, Aspect::Visible, Aspect::Caption, Aspect::Text,
                            Aspect::Checked, Aspect::Items, Aspect::Selection}) {
    all.Add(aspect);
  }
  return all;
}

Mirror::~Mirror() {
  for (auto& [control, followed] : followed_) control->Observe(nullptr);
}

void Mirror::Follow(Control& control, Update update) {
  followed_[&control].updates.push_back(std::move(update));
  control.Observe(this);
  Note(control, Aspects::All());
}

void Mirror::Recheck(Control& control) {
  if (followed_.contains(&control)) Note(control, Aspects::All());
}

void Mirror::ControlChanged(Control& control, Aspect aspect) {
  Aspects aspects;
  // The focus is no state that a later change could take back: it is kept apart.
  if (aspect == Aspect::Focus) {
    wantsFocus_ = &control;
  } else {
    aspects.Add(aspect);
  }
  Note(control, aspects);
}

void Mirror::Note(Control& control, Aspects aspects) {
  auto& changed = followed_[&control].changed;
  const bool first = changed_.empty();
  if (!changed.Any()) changed_.push_back(&control);
  changed.Add(aspects);
  if (first && !flushing_) schedule_();
}

void Mirror::Serve(Control& control, const Aspects& aspects) {
  for (const auto& update : followed_.at(&control).updates) update(aspects);
}

void Mirror::Flush() {
  if (flushing_) return;
  const auto controls = std::exchange(changed_, {});
  auto next = controls.begin();
  try {
    const Meanwhile flushing(flushing_, true);
    while (next != controls.end()) {
      auto* control = *next++;
      Serve(*control, std::exchange(followed_.at(control).changed, {}));
    }
    ServeFocus();
  } catch (...) {
    // One widget's failure keeps no other from its changes.
    changed_.insert(changed_.begin(), next, controls.end());
    if (!changed_.empty()) schedule_();
    throw;
  }
  if (!changed_.empty()) schedule_();
}

void Mirror::ServeFocus() {
  auto* control = std::exchange(wantsFocus_, nullptr);
  if (control == nullptr) return;
  Aspects focus;
  focus.Add(Aspect::Focus);
  Serve(*control, focus);
}

}  // namespace morvelle
