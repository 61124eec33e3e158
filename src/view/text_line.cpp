#include "view/text_line.h"

#include <wx/clipbrd.h>

#include <utility>

#include "view/meanwhile.h"
#include "view/wx_text.h"

namespace morvelle {

namespace {

/// Empty where the clipboard holds no text.
wxString ClipboardText() {
  const wxClipboardLocker open;
  wxTextDataObject text;
  return !open || !wxTheClipboard->GetData(text) ? wxString() : text.GetText();
}

}  // namespace

TextLine::TextLine(wxWindow* parent, bool readOnly)
    : wxTextCtrl(parent, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                 readOnly ? wxTE_READONLY : wxTE_PROCESS_ENTER) {
  if (readOnly) return;
  Bind(wxEVT_TEXT, [this](wxCommandEvent&) { Report(GetValue()); });
  Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) {
    if (onEnter) onEnter();
  });
  // Before each way in which the text can change, and whenever the user rests.
  Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
    RememberCaret();
    event.Skip();
  });
  Bind(wxEVT_TEXT_PASTE, [this](wxClipboardTextEvent& event) {
    RememberCaret();
    if (!PasteLines()) event.Skip();
  });
  Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
    if (HasFocus()) RememberCaret();
    event.Skip();
  });
}

void TextLine::RememberCaret() {
  long end = 0;
  GetSelection(&caret_, &end);
}

void TextLine::Report(const wxString& text) {
  const Meanwhile typing(typing_, true);
  if (onType) onType(text);
}

// The line of Windows would take in what stands before the first line break and drop the rest: the
// control gets the whole, and decides.
bool TextLine::PasteLines() {
  const auto pasted = ClipboardText();
  if (pasted.find_first_of("\r\n") == wxString::npos) return false;
  long from = 0;
  long end = 0;
  GetSelection(&from, &end);
  const auto text = GetValue();
  Report(text.Left(static_cast<std::size_t>(from)) + pasted +
         text.Mid(static_cast<std::size_t>(end)));
  return true;
}

void TextLine::TakeOver(const TextBox& box) {
  const wxString text = ToWx(box.Text());
  const wxString former = std::exchange(shown_, text);
  if (GetValue() == text) return;
  const bool refused = typing_ && text == former;
  const long caret = refused ? caret_ : IsEditable() ? static_cast<long>(text.length()) : 0L;
  ChangeValue(text);
  SetInsertionPoint(caret);
  // The toolkit moves the caret once more when it has finished with what was typed.
  if (typing_) CallAfter([this, caret] { SetInsertionPoint(caret); });
}

}  // namespace morvelle
