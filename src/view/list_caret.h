#pragma once

#include <wx/listbox.h>

namespace morvelle {

/// The line that the keyboard is at in a list of several selections. Moving there selects nothing:
/// wherever the toolkit does it all the same, the list puts its selections back.
class ListCaret {
 public:
  explicit ListCaret(wxListBox& list) : list_(list) {}

  /// wxNOT_FOUND where it is not known.
  [[nodiscard]] int Line() const;
  /// The list has got the focus.
  void Focused();
  /// The mouse went to a line.
  void Pressed(int line);

  /// Whether a key is to reach the toolkit, for which the selections may be changed.
  bool LetsPass(const wxKeyEvent& event);
  /// The toolkit has changed the selections by itself.
  void Reported();

 private:
  wxListBox& list_;
  int line_ = wxNOT_FOUND;
  bool placed_ = false;
  bool moving_ = false;
};

}  // namespace morvelle
