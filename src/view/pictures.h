#pragma once

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

/// The window's own drawings, sharp at every scale.
namespace morvelle {

/// An arrow in the colour of the window's text.
wxBitmapBundle UpArrow();
wxBitmapBundle DownArrow();

/// A letter on its way through a sieve.
wxBitmapBundle LetterAndSieve();

/// The program's own icon, for title bars and task lists.
wxIconBundle ProgramIcons();

}  // namespace morvelle
