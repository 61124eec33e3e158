#include "view/stack_sizer.h"

#include <wx/window.h>

namespace morvelle {

wxSize StackSizer::CalcMin() {
  wxSize most;
  for (auto* item : GetChildren()) most.IncTo(item->CalcMin());
  return most;
}

void StackSizer::RepositionChildren([[maybe_unused]] const wxSize& minSize) {
  for (auto* item : GetChildren()) item->SetDimension(m_position, m_size);
}

}  // namespace morvelle
