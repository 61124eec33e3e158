#include "view/marked_text.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "view/wx_text.h"

namespace morvelle {

namespace {

constexpr char kStar = '*';
const wchar_t kEnSpace = 0x2002;

/// Blanks of Unicode, from the em space to the hair space, and none.
constexpr std::array<wchar_t, 6> kBlanks = {0, L' ', 0x2002, 0x2003, 0x2009, 0x200A};

wxString BlankAsWideAs(int wanted, const std::function<int(const wxString&)>& widthOf) {
  std::array<int, kBlanks.size()> widths{};
  for (std::size_t i = 1; i < kBlanks.size(); ++i) widths[i] = widthOf(wxString(kBlanks[i]));
  wxString best = L" ";
  int bestError = std::abs(widths[1] - wanted);
  for (std::size_t i = 1; i < kBlanks.size(); ++i) {
    for (std::size_t j = 0; j < kBlanks.size(); ++j) {
      for (std::size_t k = 0; k <= j; ++k) {
        const int error = std::abs(widths[i] + widths[j] + widths[k] - wanted);
        if (error >= bestError) continue;
        bestError = error;
        best = wxString(kBlanks[i]);
        if (j > 0) best += kBlanks[j];
        if (k > 0) best += kBlanks[k];
      }
    }
  }
  return best;
}

}  // namespace

MarkedText::MarkedText(const std::function<int(const wxString&)>& widthOf)
    : star_(wxString(kStar) + kEnSpace) {
  // Ten of each: widths are whole pixels.
  auto ten = [&](const wxString& text) {
    wxString repeated;
    for (int i = 0; i < 10; ++i) repeated += text;
    return widthOf(repeated);
  };
  blank_ = BlankAsWideAs(ten(wxString(kStar)), ten) + kEnSpace;
}

std::string_view WithoutMarker(std::string_view text) {
  const bool marked = text.size() > 1 && (text[0] == kStar || text[0] == ' ') &&
                      (text[1] == ' ' || text[1] == '\t');
  return marked ? text.substr(2) : text;
}

wxString MarkedText::Show(std::string_view text) const {
  std::string name(WithoutMarker(text));
  wxString marker;
  if (name.size() < text.size()) marker = text[0] == kStar ? star_ : blank_;
  std::replace_if(
      name.begin(), name.end(), [](char character) { return character >= 0 && character < ' '; },
      ' ');
  return marker + ToWx(name);
}

}  // namespace morvelle
