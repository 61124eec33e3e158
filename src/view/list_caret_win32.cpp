#include <windows.h>
// After windows.h, on which it leans.
#include "view/list_caret.h"

/// The list of Windows has a caret of its own, which keys move without selecting.
namespace morvelle {

int ListCaret::Line() const {
  const auto line = ::SendMessageW(static_cast<HWND>(list_.GetHandle()), LB_GETCARETINDEX, 0, 0);
  return line >= 0 && line < static_cast<LRESULT>(list_.GetCount()) ? static_cast<int>(line)
                                                                    : wxNOT_FOUND;
}

void ListCaret::Focused() {}
void ListCaret::Pressed(int /*line*/) {}
bool ListCaret::LetsPass(const wxKeyEvent& /*event*/) { return true; }
void ListCaret::Reported() {}

}  // namespace morvelle
