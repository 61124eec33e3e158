#include "view/mirror.h"

#include <utility>

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
  followed_[&control].update = std::move(update);
  control.Observe(this);
  Note(control, Aspects::All());
}

void Mirror::Recheck(Control& control) {
  if (followed_.contains(&control)) Note(control, Aspects::All());
}

void Mirror::ControlChanged(Control& control, Aspect aspect) {
  Aspects aspects;
  aspects.Add(aspect);
  if (aspect == Aspect::Focus) wantsFocus_ = &control;
  Note(control, aspects);
}

void Mirror::Note(Control& control, Aspects aspects) {
  auto& changed = followed_[&control].changed;
  if (!changed.Any()) {
    changed_.push_back(&control);
    if (changed_.size() == 1 && !flushing_) schedule_();
  }
  changed.Add(aspects);
}

void Mirror::Flush() {
  if (flushing_) return;
  flushing_ = true;
  const auto controls = std::exchange(changed_, {});
  for (auto* control : controls) {
    auto& followed = followed_[control];
    const auto changed = std::exchange(followed.changed, {});
    if (followed.update) followed.update(changed);
  }
  if (auto* control = std::exchange(wantsFocus_, nullptr); control != nullptr) {
    Aspects focus;
    focus.Add(Aspect::Focus);
    if (const auto& update = followed_[control].update) update(focus);
  }
  flushing_ = false;
  if (!changed_.empty()) schedule_();
}

}  // namespace morvelle
