#include "view/pictures.h"

#include <wx/settings.h>

#include <string>
#include <string_view>

namespace morvelle {

namespace {

constexpr std::string_view kUpPath = "M8 3 L14 12 L2 12 Z";
constexpr std::string_view kDownPath = "M8 13 L2 4 L14 4 Z";

wxBitmapBundle Arrow(std::string_view path) {
  const auto colour =
      wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT).GetAsString(wxC2S_HTML_SYNTAX);
  std::string svg = R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16"><path d=")";
  svg.append(path).append(R"(" fill=")").append(colour.utf8_string()).append(R"("/></svg>)");
  return wxBitmapBundle::FromSVG(svg.c_str(), wxSize(16, 16));
}

constexpr const char* kLetterAndSieve = R"(
<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 72 48">
  <path d="M17 3 H55 V27 H17 Z" fill="#fdf6e3" stroke="#5b6b7b" stroke-width="1.6"/>
  <path d="M17 3 L36 17 L55 3" fill="none" stroke="#5b6b7b" stroke-width="1.6"/>
  <path d="M17 27 L30 13 M55 27 L42 13" fill="none" stroke="#5b6b7b" stroke-width="1.2"/>
  <path d="M6 27 H66 L62 33 H10 Z" fill="#7fa7c9" stroke="#3b6a94" stroke-width="1.6"/>
  <path d="M14 33 L17 37 M22 33 L24 37 M30 33 L31 37 M42 33 L41 37 M50 33 L48 37 M58 33 L55 37"
        fill="none" stroke="#3b6a94" stroke-width="1.6"/>
  <path d="M24 41 H27 M34.5 41 H37.5 M45 41 H48 M29 45 H32 M40 45 H43" fill="none"
        stroke="#c8862b" stroke-width="2.2"/>
</svg>)";

/// As in packaging/windows/morvelle.svg, which the icon of the Windows program file is made of.
constexpr const char* kProgramIcon = R"(
<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 64 64">
  <path d="M9 5 H55 V36 H9 Z" fill="#fdf6e3" stroke="#4a5a6a" stroke-width="3"/>
  <path d="M9 6 L32 23 L55 6" fill="none" stroke="#4a5a6a" stroke-width="3"/>
  <path d="M3 34 H61 L54 47 H10 Z" fill="#6f9fc9" stroke="#2f5f8a" stroke-width="3"/>
  <path d="M17 40 H21 M26 40 H30 M35 40 H39 M44 40 H48" stroke="#2f5f8a" stroke-width="3"/>
  <path d="M18 54 H24 M29 54 H35 M40 54 H46 M24 60 H30 M35 60 H41" stroke="#d08a1e" stroke-width="4"/>
</svg>)";

}  // namespace

wxBitmapBundle UpArrow() { return Arrow(kUpPath); }
wxBitmapBundle DownArrow() { return Arrow(kDownPath); }
wxBitmapBundle LetterAndSieve() { return wxBitmapBundle::FromSVG(kLetterAndSieve, wxSize(72, 48)); }

wxIconBundle ProgramIcons() {
  const auto picture = wxBitmapBundle::FromSVG(kProgramIcon, wxSize(16, 16));
  wxIconBundle icons;
  for (const int size : {16, 24, 32, 48, 64}) icons.AddIcon(picture.GetIcon(wxSize(size, size)));
  return icons;
}

}  // namespace morvelle
