#include "view/wx_text.h"

#include <wx/control.h>

#include "app/messages/text.h"

namespace morvelle {

wxString ToWx(std::string_view text) { return wxString::FromUTF8(ToUtf8(text)); }

wxString ToWxLabel(std::string_view text) { return wxControl::EscapeMnemonics(ToWx(text)); }

std::u16string ToUtf16(const wxString& text) {
  constexpr std::uint32_t kFirstSupplementary = 0x10000;
  std::u16string units;
  units.reserve(text.length());
  for (const wxUniChar character : text) {
    const std::uint32_t code = character.GetValue();
    if (code < kFirstSupplementary) {
      units.push_back(static_cast<char16_t>(code));
    } else {
      const std::uint32_t rest = code - kFirstSupplementary;
      units.push_back(static_cast<char16_t>(0xD800U + (rest >> 10U)));
      units.push_back(static_cast<char16_t>(0xDC00U + (rest & 0x3FFU)));
    }
  }
  return units;
}

}  // namespace morvelle
