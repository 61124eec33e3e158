#include "view/window_place.h"

#include <wx/display.h>
#include <wx/fileconf.h>
#include <wx/filename.h>
#include <wx/log.h>
#include <wx/sstream.h>
#include <wx/stdpaths.h>
#include <wx/toplevel.h>

#include <algorithm>
#include <exception>

#include "disk/whole_file.h"

namespace morvelle {

namespace {

constexpr const char* kLeft = "/Fenetre/Gauche";
constexpr const char* kTop = "/Fenetre/Haut";
constexpr const char* kWidth = "/Fenetre/Largeur";
constexpr const char* kHeight = "/Fenetre/Hauteur";
constexpr const char* kMaximized = "/Fenetre/PleinEcran";

std::vector<wxRect> Screens() {
  std::vector<wxRect> screens;
  for (unsigned i = 0; i < wxDisplay::GetCount(); ++i) {
    const wxDisplay display(i);
    screens.insert(display.IsPrimary() ? screens.begin() : screens.end(), display.GetClientArea());
  }
  return screens;
}

std::filesystem::path PathOf(const wxString& name) {
  const auto native = name.fn_str();
  return {static_cast<const std::filesystem::path::value_type*>(native)};
}

int Area(const wxRect& rect) { return rect.width * rect.height; }

}  // namespace

wxRect PutOnScreen(wxRect wanted, const std::vector<wxRect>& screens) {
  if (screens.empty()) return wanted;
  const auto screen = *std::max_element(
      screens.begin(), screens.end(), [&](const wxRect& left, const wxRect& right) {
        return Area(left.Intersect(wanted)) < Area(right.Intersect(wanted));
      });
  wanted.width = std::min(wanted.width, screen.width);
  wanted.height = std::min(wanted.height, screen.height);
  wanted.x = std::clamp(wanted.x, screen.x, screen.x + screen.width - wanted.width);
  wanted.y = std::clamp(wanted.y, screen.y, screen.y + screen.height - wanted.height);
  return wanted;
}

wxString WindowPlace::UsualFile() {
  auto& paths = wxStandardPaths::Get();
  paths.SetFileLayout(wxStandardPaths::FileLayout_XDG);
  wxFileName file(paths.GetUserConfigDir(), "fenetre.conf");
  file.AppendDir("morvelle");
  return file.GetFullPath();
}

wxString WindowPlace::Kept() const {
  return wxString::FromUTF8(ReadWholeFile(PathOf(file_), kSmallFileLimit).value_or(""));
}

wxPoint WindowPlace::Restore(wxTopLevelWindow& window, const wxSize& usualSize) const {
  const wxLogNull quiet;
  wxStringInputStream stream(Kept());
  const wxFileConfig config(stream);
  wxSize size(static_cast<int>(config.ReadLong(kWidth, 0)),
              static_cast<int>(config.ReadLong(kHeight, 0)));
  const bool kept = size.x > 0 && size.y > 0;
  size = window.FromDIP(kept ? size : usualSize);
  size.IncTo(window.GetMinSize());
  const auto screens = Screens();
  wxRect wanted(wxPoint(static_cast<int>(config.ReadLong(kLeft, 0)),
                        static_cast<int>(config.ReadLong(kTop, 0))),
                size);
  if (!kept && !screens.empty()) wanted = wxRect(size).CentreIn(screens.front());
  const auto place = PutOnScreen(wanted, screens);
  window.SetSize(place);
  if (config.ReadBool(kMaximized, false)) window.Maximize();
  return place.GetPosition();
}

void WindowPlace::Keep(const wxTopLevelWindow& window) const {
  if (window.IsIconized()) return;
  const wxLogNull quiet;
  wxStringInputStream stream(Kept());
  wxFileConfig config(stream);
  config.Write(kMaximized, window.IsMaximized());
  if (!window.IsMaximized()) {
    const auto rect = window.GetRect();
    const auto size = window.ToDIP(rect.GetSize());
    config.Write(kLeft, rect.x);
    config.Write(kTop, rect.y);
    config.Write(kWidth, size.x);
    config.Write(kHeight, size.y);
  }
  wxStringOutputStream text;
  config.Save(text);
  try {
    const auto file = PathOf(file_);
    MakeOwnFolder(file.parent_path());
    WriteWholeFile(file, text.GetString().utf8_string());
  } catch (const std::exception&) {
    // The next start then takes the usual place.
  }
}

}  // namespace morvelle
