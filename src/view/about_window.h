#pragma once

#include <wx/window.h>

#include "ui/frm_version.h"

namespace morvelle {

/// Shows the about box and waits until it is closed. A widget bears the name of its control.
void ShowAboutBox(wxWindow& parent, frmVersion& box);

}  // namespace morvelle
