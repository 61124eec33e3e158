#pragma once

#include <wx/menu.h>

#include <deque>
#include <functional>
#include <map>
#include <string_view>

#include "ui/controls.h"
#include "ui/menu_table.h"
#include "view/mirror.h"
#include "view/rule_menu.h"

class wxFrame;

namespace morvelle {

class Gestures;

/// Where the entries of the menu table are found by name.
struct MenuControls {
  std::function<MenuItem&(std::string_view name)> item;
  std::function<MenuArray&(std::string_view name)> array;
};

/// The menu bar, built from the menu table.
class MenuBar {
 public:
  MenuBar(wxFrame& window, MenuControls controls, Mirror& mirror, Gestures& gestures);
  MenuBar(const MenuBar&) = delete;
  MenuBar& operator=(const MenuBar&) = delete;
  ~MenuBar();

  /// The toolkit's entry of a name; null where the name is a menu of the bar, a per-rule array or
  /// unknown. One that is hidden now is in no menu.
  [[nodiscard]] wxMenuItem* Find(std::string_view name) const;
  /// Whether the entry of a name, and every menu around it, is enabled and shown.
  [[nodiscard]] bool Reachable(std::string_view name) const;
  /// The submenu of a per-rule array; null where there is none of that name.
  [[nodiscard]] RuleMenu* FindRuleMenu(std::string_view name);

 private:
  struct Place {
    const MenuEntry* entry = nullptr;
    MenuItem* control = nullptr;
    wxMenu* menu = nullptr;      ///< What hangs under the entry.
    wxMenu* parent = nullptr;    ///< The menu in which the item stands; null for one of the bar.
    wxMenuItem* item = nullptr;  ///< Null for a menu of the bar.
    bool shown = true;           ///< An item that is not shown is ours to delete.
  };
  void AddBarMenu(const MenuEntry& entry);
  void AddItem(const MenuEntry& entry);
  wxMenu* MakeRuleMenu(const MenuEntry& entry, const wxMenu* parent);
  void Follow(Place& place);
  void TakeOver(Place& place, const Aspects& changed);
  void ShowItem(Place& place);
  [[nodiscard]] std::size_t PositionOf(const Place& place) const;
  void OnChosen(wxCommandEvent& event);
  void OnOpen(wxMenuEvent& event);

  wxMenuBar* bar_ = new wxMenuBar;
  MenuControls controls_;
  Mirror& mirror_;
  Gestures& gestures_;
  std::function<wxString(std::string_view)> showMarked_;
  /// In the order of the table; the position gives the id.
  std::deque<Place> places_;
  std::map<std::string_view, Place*> byName_;
  std::deque<RuleMenu> ruleMenus_;
  std::map<std::string_view, RuleMenu*> ruleMenusByName_;
};

}  // namespace morvelle
