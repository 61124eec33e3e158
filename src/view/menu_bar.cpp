#include "view/menu_bar.h"

#include <wx/frame.h>

#include <algorithm>

#include "view/gestures.h"
#include "view/marked_text.h"
#include "view/mirror.h"
#include "view/wx_text.h"

namespace morvelle {

namespace {

/// Ids are fixed, above those of the toolkit and within 16 bits, which is all that a menu of
/// Windows holds: the table first, then 4096 for each of the six per-rule arrays.
constexpr int kFirstId = 6000;
constexpr int kFirstRuleId = 7000;
constexpr int kMostRules = 4096;
constexpr int kRuleMenuCount = 6;
constexpr int kLastId = kFirstRuleId + kRuleMenuCount * kMostRules - 1;

const MenuEntry* RuleArrayUnder(std::string_view name) {
  const auto table = MenuTable();
  const auto found = std::find_if(table.begin(), table.end(), [&](const MenuEntry& entry) {
    return entry.perRule && entry.parent == name;
  });
  return found == table.end() ? nullptr : &*found;
}

bool HasEntries(std::string_view name) {
  const auto table = MenuTable();
  return std::any_of(table.begin(), table.end(),
                     [&](const MenuEntry& entry) { return entry.parent == name; });
}

wxString LabelOf(const MenuEntry& entry) {
  const auto caption = ToWxLabel(entry.caption);
  return entry.accelerator.empty() ? caption : caption + "\t" + ToWx(entry.accelerator);
}

}  // namespace

MenuBar::MenuBar(wxFrame& window, MenuControls controls, Mirror& mirror, Gestures& gestures)
    : controls_(std::move(controls)), mirror_(mirror), gestures_(gestures) {
  showMarked_ = [marked = MarkedText([&window](const wxString& text) {
                   return window.GetTextExtent(text).x;
                 })](std::string_view caption) { return marked.Show(caption); };
  for (const auto& entry : MenuTable()) {
    if (entry.perRule) continue;
    if (entry.parent.empty()) {
      AddBarMenu(entry);
    } else {
      AddItem(entry);
    }
  }
  window.SetMenuBar(bar_);
  for (auto& place : places_) Follow(place);
  window.Bind(wxEVT_MENU, &MenuBar::OnChosen, this, kFirstId, kLastId);
  window.Bind(wxEVT_MENU_OPEN, &MenuBar::OnOpen, this);
}

MenuBar::~MenuBar() {
  for (auto& place : places_) {
    if (!place.shown) delete place.item;
  }
}

void MenuBar::AddBarMenu(const MenuEntry& entry) {
  auto& place = places_.emplace_back(Place{&entry, &controls_.item(entry.name), new wxMenu});
  bar_->Append(place.menu, ToWxLabel(entry.caption));
  byName_[entry.name] = &place;
}

void MenuBar::AddItem(const MenuEntry& entry) {
  const auto id = kFirstId + static_cast<int>(places_.size());
  auto& place = places_.emplace_back(Place{&entry, &controls_.item(entry.name)});
  byName_[entry.name] = &place;
  place.parent = byName_.at(entry.parent)->menu;
  if (entry.caption == "-") {
    place.item = place.parent->AppendSeparator();
    return;
  }
  if (const auto* array = RuleArrayUnder(entry.name)) {
    place.menu = MakeRuleMenu(*array, place.parent);
  } else if (HasEntries(entry.name)) {
    place.menu = new wxMenu;
  }
  place.item = place.parent->Append(new wxMenuItem(place.parent, id, LabelOf(entry), {},
                                                   entry.checkable ? wxITEM_CHECK : wxITEM_NORMAL,
                                                   place.menu));
}

wxMenu* MenuBar::MakeRuleMenu(const MenuEntry& entry, const wxMenu* parent) {
  auto& array = controls_.array(entry.name);
  const auto firstId = kFirstRuleId + static_cast<int>(ruleMenus_.size()) * kMostRules;
  auto& ruleMenu = ruleMenus_.emplace_back(array, firstId, parent, showMarked_);
  ruleMenusByName_[entry.name] = &ruleMenu;
  mirror_.Follow(array, [&ruleMenu](const Aspects& changed) {
    if (changed.Has(Aspect::Items)) ruleMenu.MarkStale();
  });
  // A menu without an entry would not open on every system.
  ruleMenu.Fill();
  return ruleMenu.Widget();
}

void MenuBar::Follow(Place& place) {
  mirror_.Follow(*place.control,
                 [this, &place](const Aspects& changed) { TakeOver(place, changed); });
}

void MenuBar::TakeOver(Place& place, const Aspects& changed) {
  if (place.item == nullptr) {
    if (changed.Has(Aspect::Enabled)) {
      bar_->EnableTop(PositionOf(place), place.control->Enabled());
    }
    return;
  }
  ShowItem(place);
  if (!place.shown || place.item->IsSeparator()) return;
  place.item->Enable(place.control->Enabled());
  if (place.entry->checkable) place.item->Check(place.control->Checked());
}

// The toolkit has no hidden entries: one that is hidden is taken out.
void MenuBar::ShowItem(Place& place) {
  if (place.shown == place.control->Visible()) return;
  if (place.shown) {
    place.parent->Remove(place.item);
  } else {
    place.parent->Insert(PositionOf(place), place.item);
  }
  place.shown = !place.shown;
}

std::size_t MenuBar::PositionOf(const Place& place) const {
  std::size_t position = 0;
  for (const auto& other : places_) {
    if (&other == &place) break;
    if (other.parent == place.parent && other.shown) ++position;
  }
  return position;
}

void MenuBar::OnChosen(wxCommandEvent& event) {
  const int id = event.GetId();
  for (auto& ruleMenu : ruleMenus_) {
    if (!ruleMenu.Owns(id)) continue;
    auto& array = ruleMenu.Array();
    gestures_.Perform([&] { array.Choose(ruleMenu.IndexOf(id)); });
    return;
  }
  const auto index = static_cast<std::size_t>(id - kFirstId);
  if (id < kFirstRuleId && index < places_.size()) {
    auto& control = *places_[index].control;
    gestures_.Perform(control, [&control] { control.Choose(); });
  }
}

void MenuBar::OnOpen(wxMenuEvent& event) {
  event.Skip();
  for (auto& ruleMenu : ruleMenus_) ruleMenu.Opening(event.GetMenu());
}

wxMenuItem* MenuBar::Find(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second->item;
}

bool MenuBar::Reachable(std::string_view name) const {
  const auto found = byName_.find(name);
  if (found == byName_.end()) return false;
  const auto& place = *found->second;
  if (place.item == nullptr) return bar_->IsEnabledTop(PositionOf(place));
  return place.shown && place.item->IsEnabled() && Reachable(place.entry->parent);
}

RuleMenu* MenuBar::FindRuleMenu(std::string_view name) {
  const auto found = ruleMenusByName_.find(name);
  return found == ruleMenusByName_.end() ? nullptr : found->second;
}

}  // namespace morvelle
