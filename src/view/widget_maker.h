#pragma once

#include <wx/window.h>

#include <functional>
#include <string>

#include "ui/controls.h"

class wxBitmapBundle;
class wxButton;
class wxCheckBox;
class wxRadioButton;
class wxStaticBox;
class wxStaticText;
class wxStatusBar;
class wxFrame;

namespace morvelle {

class Gestures;
class LineList;
class Mirror;
class TextLine;

/// Makes the widget of a control: it bears the control's name, follows the control through the
/// mirror and relays what the user does to the control's gestures.
class WidgetMaker {
 public:
  WidgetMaker(Mirror& mirror, Gestures& gestures) : mirror_(mirror), gestures_(gestures) {}

  wxStaticBox* Make(wxWindow* parent, Frame& frame);
  wxStaticText* Make(wxWindow* parent, Label& label);
  wxButton* Make(wxWindow* parent, PushButton& button);
  /// A button that shows a picture; `name` is what a screen reader says.
  wxButton* MakePicture(wxWindow* parent, PushButton& button, const wxBitmapBundle& picture,
                        const wxString& name);
  wxCheckBox* Make(wxWindow* parent, CheckBox& box);
  wxRadioButton* Make(wxWindow* parent, OptionButton& option, bool firstOfGroup);
  TextLine* Make(wxWindow* parent, TextBox& box);
  /// `show` gives the look of a line, where it differs from the line.
  LineList* Make(wxWindow* parent, ListBox& list, const wxSize& leastSize,
                 std::function<wxString(std::string_view)> show = {});
  wxStatusBar* Make(wxFrame* parent, StatusBar& bar);

 private:
  wxButton* RelayClick(wxButton* widget, PushButton& button);

  Mirror& mirror_;
  Gestures& gestures_;
};

}  // namespace morvelle
