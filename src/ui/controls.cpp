#include "ui/controls.h"

#include <algorithm>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

const std::string kNoText;

void Raise(const Handler& handler) {
  if (handler) handler();
}

/// What stands between the beginning and the end that the two texts have in common.
std::string_view BroughtIn(std::string_view before, std::string_view after) {
  const auto start = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto atStart = static_cast<std::size_t>(start.second - after.begin());
  before.remove_prefix(atStart);
  after.remove_prefix(atStart);
  const auto end = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
  after.remove_suffix(static_cast<std::size_t>(end.second - after.rbegin()));
  return after;
}

template <typename Items>
std::size_t Within(const Items& items, int index) {
  if (index < 0 || index >= static_cast<int>(items.size())) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  }
  return static_cast<std::size_t>(index);
}

}  // namespace

Control::Control(std::string name, const Control* parent, std::string_view caption)
    : name_(std::move(name)), parent_(parent), caption_(caption) {}

void Control::Tell(Aspect aspect) {
  if (observer_ != nullptr) observer_->ControlChanged(*this, aspect);
}

void Control::SetCaption(std::string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Tell(Aspect::Caption);
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Tell(Aspect::Enabled);
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Tell(Aspect::Visible);
}

void Control::SetFocus() { Tell(Aspect::Focus); }

bool Control::Reachable() const {
  for (const Control* control = this; control != nullptr; control = control->parent_) {
    if (!control->enabled_ || !control->visible_) return false;
  }
  return true;
}

void PushButton::Click() {
  if (Reachable()) Raise(onClick);
}

void CheckBox::SetChecked(bool checked) {
  if (checked_ == checked) return;
  checked_ = checked;
  Tell(Aspect::Checked);
  Raise(onClick);
}

void CheckBox::Click() {
  if (Reachable()) SetChecked(!checked_);
}

void OptionButton::Choose() {
  if (chosen_) return;
  for (auto* other : others_) other->Release();
  chosen_ = true;
  Tell(Aspect::Checked);
  Raise(onClick);
}

void OptionButton::Release() {
  if (!chosen_) return;
  chosen_ = false;
  Tell(Aspect::Checked);
}

void OptionButton::Click() {
  if (Reachable()) Choose();
}

void TextBox::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  Tell(Aspect::Text);
  Raise(onChange);
}

void TextBox::Type(std::u16string_view text) {
  if (!Reachable() || readOnly_) return;
  const auto bytes = FromUtf16(text);
  // A stored word may hold control characters: it is shown, and what is around them can be edited.
  if (bytes && !HoldsControlCharacter(BroughtIn(text_, *bytes))) {
    SetText(*bytes);
    return;
  }
  // The widget shows what was typed: the observer puts the former text back.
  Tell(Aspect::Text);
  Raise(onRefused);
}

void TextBox::KeyDown(int keyCode) {
  if (Reachable() && onKeyDown) onKeyDown(keyCode);
}

ListBox::ListBox(std::string name, const Control* parent, bool severalSelections)
    : Control(std::move(name), parent), severalSelections_(severalSelections) {}

const std::string& ListBox::Item(int index) const {
  return index < 0 || index >= Count() ? kNoText : items_[static_cast<std::size_t>(index)];
}

void ListBox::AddItem(std::string_view text) {
  items_.emplace_back(text);
  if (severalSelections_) selected_.push_back(false);
  Tell(Aspect::Items);
}

void ListBox::SetItem(int index, std::string_view text) {
  auto& item = items_[Within(items_, index)];
  if (item == text) return;
  item = text;
  Tell(Aspect::Items);
}

void ListBox::RemoveItem(int index) {
  const auto at = static_cast<std::ptrdiff_t>(Within(items_, index));
  items_.erase(items_.begin() + at);
  if (severalSelections_) selected_.erase(selected_.begin() + at);
  if (listIndex_ == index) {
    listIndex_ = -1;
  } else if (listIndex_ > index) {
    --listIndex_;
  }
  Tell(Aspect::Items);
}

void ListBox::Clear() {
  if (items_.empty()) return;
  items_.clear();
  selected_.clear();
  listIndex_ = -1;
  Tell(Aspect::Items);
}

void ListBox::MakeCurrent(int index) {
  listIndex_ = index;
  Tell(Aspect::Selection);
}

void ListBox::SetListIndex(int index) {
  if (index != -1) Within(items_, index);
  if (listIndex_ == index) return;
  MakeCurrent(index);
  Raise(onClick);
}

bool ListBox::Selected(int index) const {
  const auto at = Within(items_, index);
  return severalSelections_ ? selected_[at] : listIndex_ == index;
}

void ListBox::SetSelected(int index, bool selected) {
  if (Selected(index) == selected) return;
  if (!severalSelections_) {
    SetListIndex(selected ? index : -1);
    return;
  }
  selected_[static_cast<std::size_t>(index)] = selected;
  Tell(Aspect::Selection);
  Raise(onClick);
}

void ListBox::ClickItem(int index) {
  if (!Reachable() || index < 0 || index >= Count()) return;
  if (severalSelections_) {
    const auto at = static_cast<std::size_t>(index);
    selected_[at] = !selected_[at];
  }
  MakeCurrent(index);
  Raise(onClick);
}

StatusBar::StatusBar(std::string name, const Control* parent)
    : Control(std::move(name), parent), panels_(kPanelCount) {}

const std::string& StatusBar::Panel(int number) const {
  return panels_[Within(panels_, number - 1)];
}

void StatusBar::SetPanel(int number, std::string_view text) {
  auto& panel = panels_[Within(panels_, number - 1)];
  if (panel == text) return;
  panel = text;
  Tell(Aspect::Text);
}

void MenuItem::SetChecked(bool checked) {
  if (checked_ == checked) return;
  checked_ = checked;
  Tell(Aspect::Checked);
}

void MenuItem::Choose() {
  if (Reachable()) Raise(onClick);
}

bool MenuArray::Load(int index) {
  if (index < Count()) return false;
  entries_.resize(static_cast<std::size_t>(index) + 1);
  Tell(Aspect::Items);
  return true;
}

void MenuArray::Shorten(int count) {
  const auto wanted = static_cast<std::size_t>(count < 1 ? 1 : count);
  if (wanted >= entries_.size()) return;
  entries_.resize(wanted);
  Tell(Aspect::Items);
}

const std::string& MenuArray::CaptionOf(int index) const {
  return entries_[Within(entries_, index)].caption;
}

void MenuArray::SetCaptionOf(int index, std::string_view caption) {
  auto& entry = entries_[Within(entries_, index)];
  if (entry.caption == caption) return;
  entry.caption = caption;
  Tell(Aspect::Items);
}

bool MenuArray::EnabledOf(int index) const { return entries_[Within(entries_, index)].enabled; }

void MenuArray::SetEnabledOf(int index, bool enabled) {
  auto& entry = entries_[Within(entries_, index)];
  if (entry.enabled == enabled) return;
  entry.enabled = enabled;
  Tell(Aspect::Items);
}

void MenuArray::Choose(int index) {
  if (!Reachable() || index < 0 || index >= Count()) return;
  if (EnabledOf(index) && onClick) onClick(index);
}

}  // namespace morvelle
