#pragma once

#include <wx/string.h>

#include <string>
#include <string_view>

/// Where the program's Windows-1252 text meets the toolkit's.
namespace morvelle {

/// A text as it stands.
wxString ToWx(std::string_view text);

/// A text for a widget that would take "&" for the mark of a mnemonic.
wxString ToWxLabel(std::string_view text);

/// What the user typed, for the gestures of a text box.
std::u16string ToUtf16(const wxString& text);

}  // namespace morvelle
