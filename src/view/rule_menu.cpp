#include "view/rule_menu.h"

#include <wx/control.h>

#include <algorithm>

#include "view/marked_text.h"

namespace morvelle {

namespace {

/// A menu of more entries than this is cut into groups: nobody finds a rule in it, and the toolkit
/// measures every entry each time the menu is opened.
constexpr int kMostFlat = 300;
constexpr int kGroupSize = 64;
/// Length of a rule's line in the name of a group.
constexpr std::size_t kGroupEnd = 24;

// A label must not be empty.
wxString LabelOf(const wxString& shown) {
  return shown.empty() ? wxString(" ") : wxControl::EscapeMnemonics(shown);
}

}  // namespace

bool RuleMenu::Owns(int id) const {
  return id >= firstId_ && id < firstId_ + static_cast<int>(shown_.size());
}

void RuleMenu::Fill() {
  if (!stale_) return;
  stale_ = false;
  const bool grouped = array_.Count() > kMostFlat;
  if (grouped != !groups_.empty()) RemoveFrom(0);
  RemoveFrom(array_.Count());
  for (int i = 0; i < static_cast<int>(shown_.size()); ++i) {
    auto& shown = shown_[static_cast<std::size_t>(i)];
    if (shown.caption != array_.CaptionOf(i)) {
      shown.caption = array_.CaptionOf(i);
      shown.item->SetItemLabel(LabelOf(show_(shown.caption)));
    }
    if (shown.enabled != array_.EnabledOf(i)) {
      shown.enabled = array_.EnabledOf(i);
      shown.item->Enable(shown.enabled);
    }
  }
  AddEntries();
  NameGroups();
}

void RuleMenu::AddEntries() {
  for (int i = static_cast<int>(shown_.size()); i < array_.Count(); ++i) {
    auto* menu = array_.Count() > kMostFlat ? GroupFor(i) : menu_;
    const auto& caption = array_.CaptionOf(i);
    auto* item = menu->Append(firstId_ + i, LabelOf(show_(caption)));
    const bool enabled = array_.EnabledOf(i);
    if (!enabled) item->Enable(false);
    shown_.push_back({item, caption, enabled});
  }
}

void RuleMenu::RemoveFrom(int count) {
  const auto most = static_cast<std::size_t>(count);
  while (shown_.size() > most) {
    auto* item = shown_.back().item;
    item->GetMenu()->Destroy(item);
    shown_.pop_back();
  }
  while (!groups_.empty() && groups_.back()->GetSubMenu()->GetMenuItemCount() == 0) {
    menu_->Destroy(groups_.back());
    groups_.pop_back();
  }
}

wxMenu* RuleMenu::GroupFor(int index) {
  const auto group = static_cast<std::size_t>(index / kGroupSize);
  if (group == groups_.size()) {
    groups_.push_back(menu_->AppendSubMenu(new wxMenu, GroupLabel(index, index)));
  }
  return groups_[group]->GetSubMenu();
}

void RuleMenu::NameGroups() {
  for (int g = 0; g < static_cast<int>(groups_.size()); ++g) {
    const int first = g * kGroupSize;
    const int last = std::min(first + kGroupSize, array_.Count()) - 1;
    auto* item = groups_[static_cast<std::size_t>(g)];
    const auto label = GroupLabel(first, last);
    if (item->GetItemLabel() != label) item->SetItemLabel(label);
  }
}

wxString RuleMenu::GroupLabel(int first, int last) const {
  // The marker says nothing of a group.
  auto end = [this](int index) {
    wxString text = show_(WithoutMarker(array_.CaptionOf(index)));
    if (text.length() > kGroupEnd) text = text.Left(kGroupEnd - 1) + wchar_t{0x2026};
    return text;
  };
  return LabelOf(end(first) + L" \u2013 " + end(last));
}

}  // namespace morvelle
