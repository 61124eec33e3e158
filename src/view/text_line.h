#pragma once

#include <wx/textctrl.h>

#include <functional>

#include "ui/controls.h"

namespace morvelle {

/// The native widget of a TextBox.
class TextLine final : public wxTextCtrl {
 public:
  TextLine(wxWindow* parent, bool readOnly);

  /// The user changed the text.
  std::function<void(const wxString& text)> onType;
  /// The user pressed Enter.
  std::function<void()> onEnter;

  /// Shows the control's text. One that differs from what the user left here is a refusal when
  /// `typed`: the caret goes back to where it was.
  void TakeOver(const TextBox& box);

 private:
  void RememberCaret();
  void Report(const wxString& text);
  [[nodiscard]] bool PasteLines();

  wxString shown_;
  long caret_ = 0;
  bool typing_ = false;
};

}  // namespace morvelle
