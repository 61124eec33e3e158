#pragma once

#include <functional>
#include <unordered_map>
#include <vector>

#include "ui/controls.h"

namespace morvelle {

/// Which aspects of a control have changed.
class Aspects {
 public:
  Aspects() = default;
  static Aspects All();
  [[nodiscard]] bool Has(Aspect aspect) const { return (bits_ & Bit(aspect)) != 0; }
  [[nodiscard]] bool Any() const { return bits_ != 0; }
  void Add(Aspect aspect) { bits_ |= Bit(aspect); }
  void Add(Aspects others) { bits_ |= others.bits_; }

 private:
  static unsigned Bit(Aspect aspect) { return 1U << static_cast<unsigned>(aspect); }
  unsigned bits_ = 0;
};

/// The one observer of all controls. It only notes what has changed; Flush brings the widgets up to
/// date, each once, however often its control changed meanwhile: a rule set of thousands of rules
/// is loaded with thousands of changes. The controls must outlive it.
class Mirror final : public ControlObserver {
 public:
  using Update = std::function<void(const Aspects& changed)>;
  /// `schedule` is called when the first change is noted; it sees to it that Flush runs soon.
  explicit Mirror(std::function<void()> schedule) : schedule_(std::move(schedule)) {}
  ~Mirror() override;

  /// From now on `update` keeps a widget like the control. The first Flush sets every aspect.
  /// Several may follow one control; they are served in their order.
  void Follow(Control& control, Update update);
  /// The widget may differ from the control, for the user has touched it: compare again.
  void Recheck(Control& control);
  void ControlChanged(Control& control, Aspect aspect) override;

  /// The requests for the focus are met last, when every widget stands as it should.
  void Flush();
  /// Widgets are being changed: what they report now is no gesture.
  [[nodiscard]] bool Flushing() const { return flushing_; }

 private:
  struct Followed {
    std::vector<Update> updates;
    Aspects changed;
  };
  void Note(Control& control, Aspects aspects);
  void Serve(Control& control, const Aspects& aspects);
  void ServeFocus();

  std::function<void()> schedule_;
  std::unordered_map<Control*, Followed> followed_;
  /// Controls with changes to show, in the order of their first change.
  std::vector<Control*> changed_;
  Control* wantsFocus_ = nullptr;
  bool flushing_ = false;
};

}  // namespace morvelle
