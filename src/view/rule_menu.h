#pragma once

#include <wx/menu.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace morvelle {

/// The submenu that has an entry for each rule. It is filled when it is about to be opened, and
/// then only as far as the array has changed: a set of thousands of rules is loaded often, its
/// menus are looked at seldom.
class RuleMenu {
 public:
  /// Entry i has the id `firstId` + i. `parent` is the menu in which the submenu's own entry
  /// stands. `show` gives the look of a caption.
  RuleMenu(MenuArray& array, int firstId, const wxMenu* parent,
           std::function<wxString(std::string_view)> show)
      : array_(array), firstId_(firstId), parent_(parent), show_(std::move(show)) {}

  /// The menu to hang into the bar, which owns it.
  wxMenu* Widget() { return menu_; }
  [[nodiscard]] MenuArray& Array() const { return array_; }
  [[nodiscard]] bool Owns(int id) const;
  [[nodiscard]] int IdOf(int index) const { return firstId_ + index; }
  [[nodiscard]] int IndexOf(int id) const { return id - firstId_; }

  /// The array has changed.
  void MarkStale() { stale_ = true; }
  /// A menu opens. The window system measures a submenu before it says that it opens it, so the
  /// entries are brought up to date when the menu around it opens.
  void Opening(const wxMenu* menu) {
    if (menu == parent_ || menu == menu_) Fill();
  }
  void Fill();

 private:
  struct Shown {
    wxMenuItem* item;
    std::string caption;
    bool enabled;
  };
  void AddEntries();
  void RemoveFrom(int count);
  void NameGroups();
  wxMenu* GroupFor(int index);
  [[nodiscard]] wxString GroupLabel(int first, int last) const;

  MenuArray& array_;
  int firstId_;
  const wxMenu* parent_;
  std::function<wxString(std::string_view)> show_;
  wxMenu* menu_ = new wxMenu;
  std::vector<Shown> shown_;
  std::vector<wxMenuItem*> groups_;
  bool stale_ = true;
};

}  // namespace morvelle
