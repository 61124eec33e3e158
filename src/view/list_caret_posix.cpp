#include "view/list_caret.h"

#include <utility>

/// GTK takes the selection along with the caret, and wxWidgets passes on no more than that.
namespace morvelle {

int ListCaret::Line() const { return line_; }

// GTK begins at the first selected line, and later where it was left.
void ListCaret::Focused() {
  if (std::exchange(placed_, true)) return;
  wxArrayInt selected;
  line_ = list_.GetSelections(selected) > 0 ? selected[0] : 0;
}

void ListCaret::Pressed(int line) {
  placed_ = true;
  line_ = line;
}

bool ListCaret::LetsPass(const wxKeyEvent& event) {
  moving_ = false;
  int edge = 0;
  switch (event.GetKeyCode()) {
    case WXK_UP:
    case WXK_NUMPAD_UP:
    case WXK_HOME:
    case WXK_NUMPAD_HOME:
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
      break;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
    case WXK_END:
    case WXK_NUMPAD_END:
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
      edge = static_cast<int>(list_.GetCount()) - 1;
      break;
    default:
      // A letter searches, and what it found is not reported where it was selected already.
      if (event.GetUnicodeKey() > WXK_SPACE) line_ = wxNOT_FOUND;
      return true;
  }
  if (event.HasAnyModifiers() || line_ == edge) return false;
  // From the one selected line the caret moves on, and the line where it arrives is reported. With
  // no line selected it stays, and its own line is.
  list_.DeselectAll();
  if (line_ != wxNOT_FOUND) list_.SetSelection(line_);
  moving_ = true;
  return true;
}

void ListCaret::Reported() {
  wxArrayInt selected;
  if (std::exchange(moving_, false) && list_.GetSelections(selected) == 1) line_ = selected[0];
}

}  // namespace morvelle
