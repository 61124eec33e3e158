#pragma once

#include <wx/gdicmn.h>
#include <wx/string.h>

#include <vector>

class wxTopLevelWindow;

namespace morvelle {

/// Moves and shrinks a rectangle into the screen that it covers most; the first screen when it
/// covers none. `screens` are the usable areas, the main one first.
wxRect PutOnScreen(wxRect wanted, const std::vector<wxRect>& screens);

/// Size and place of a window from one run to the next, in a file of its own. The size is kept in
/// pixels of 96 to the inch, so that it holds on a screen of another density.
class WindowPlace {
 public:
  /// `file` need not exist.
  explicit WindowPlace(const wxString& file) : file_(file) {}
  /// The file in the user's folder for settings.
  static wxString UsualFile();

  /// Puts the window where it was; without a kept place it gets `usualSize` (96 to the inch), in
  /// the middle of the screen. Never smaller than the window's least size.
  /// Gives the place that was asked for: some window managers put a new window elsewhere.
  wxPoint Restore(wxTopLevelWindow& window, const wxSize& usualSize) const;
  /// A file that cannot be written is left as it is: a place is not worth a message.
  void Keep(const wxTopLevelWindow& window) const;

 private:
  /// What the file holds; nothing where it cannot be read.
  [[nodiscard]] wxString Kept() const;
  wxString file_;
};

}  // namespace morvelle
