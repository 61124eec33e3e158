#pragma once

#include <wx/string.h>

#include <functional>
#include <string_view>

namespace morvelle {

/// How a rule's line looks in the rule list and in the menus. The text starts with a marker, "*" or
/// a blank, then blanks or a tab, then the name: two columns, which a proportional font would not
/// line up. The blank marker is shown as blanks that are as wide as the star.
class MarkedText {
 public:
  /// `widthOf` measures a text in the font of the widget.
  explicit MarkedText(const std::function<int(const wxString&)>& widthOf);

  /// Control characters of the name are shown as blanks.
  [[nodiscard]] wxString Show(std::string_view text) const;

 private:
  wxString star_;
  wxString blank_;
};

/// The text after its marker; the whole text when it has none.
std::string_view WithoutMarker(std::string_view text);

}  // namespace morvelle
