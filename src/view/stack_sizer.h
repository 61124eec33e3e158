#pragma once

#include <wx/sizer.h>

namespace morvelle {

/// Gives all its windows the same place and size, hidden ones included: which of them is shown can
/// change without a jump. It needs the room of the largest.
class StackSizer final : public wxSizer {
 public:
  wxSize CalcMin() override;
  void RepositionChildren(const wxSize& minSize) override;
};

}  // namespace morvelle
