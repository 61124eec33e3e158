#pragma once

#include <wx/menu.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace morvelle {

/// The submenu that has an entry for each rule. It is filled when it is opened, and then only as far
/// as the array has changed: with thousands of rules most openings would else cost what nobody sees.
class RuleMenu {
 public:
  /// Entry i has the id `firstId` + i. `show` gives the look of a caption.
  RuleMenu(MenuArray& array, int firstId, std::function<wxString(std::string_view)> show)
      : array_(array), firstId_(firstId), show_(std::move(show)) {}

  /// The menu to hang into the bar, which owns it.
  wxMenu* Widget() { return menu_; }
  [[nodiscard]] MenuArray& Array() const { return array_; }
  [[nodiscard]] bool Owns(int id) const;
  [[nodiscard]] int IndexOf(int id) const { return id - firstId_; }

  /// The array has changed.
  void MarkStale() { stale_ = true; }
  /// Brings the entries up to date.
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
  std::function<wxString(std::string_view)> show_;
  wxMenu* menu_ = new wxMenu;
  std::vector<Shown> shown_;
  std::vector<wxMenuItem*> groups_;
  bool stale_ = true;
};

}  // namespace morvelle
