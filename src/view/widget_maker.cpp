#include "view/widget_maker.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/radiobut.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>

#include "view/gestures.h"
#include "view/line_list.h"
#include "view/mirror.h"
#include "view/text_line.h"
#include "view/wx_text.h"

namespace morvelle {

namespace {

/// What a widget shows whatever its kind.
void TakeOverCommon(wxWindow& widget, const Control& control, const Aspects& changed) {
  if (changed.Has(Aspect::Enabled)) widget.Enable(control.Enabled());
  if (changed.Has(Aspect::Visible)) widget.Show(control.Visible());
  if (changed.Has(Aspect::Focus)) widget.SetFocus();
}

void Name(wxWindow& widget, const Control& control) {
  widget.SetName(control.Name());
  if (!control.ToolTip().empty()) widget.SetToolTip(ToWx(control.ToolTip()));
}

/// Follows a control with a caption of its own; `more` takes over what the kind has beside.
template <typename Widget, typename Kind, typename More>
void Follow(Mirror& mirror, Widget* widget, Kind& control, More more) {
  Name(*widget, control);
  mirror.Follow(control, [widget, &control, more](const Aspects& changed) {
    TakeOverCommon(*widget, control, changed);
    if (changed.Has(Aspect::Caption)) {
      if (const auto caption = ToWxLabel(control.Caption()); widget->GetLabel() != caption) {
        widget->SetLabel(caption);
      }
    }
    more(changed);
  });
}

const auto kNothingMore = [](const Aspects&) {};

// The usual text of each status panel, for its width; two are spare, the last takes the rest.
constexpr const wchar_t* kPanelSamples[StatusBar::kPanelCount] = {
    L"Identit\u00e9", L"0A1B2C3D", L"4E5F", L"4E5F", L"4E5F", L"A4B5C6D7E8F9", L"", L"", nullptr};

}  // namespace

wxStaticBox* WidgetMaker::Make(wxWindow* parent, Frame& frame) {
  auto* box = new wxStaticBox(parent, wxID_ANY, ToWxLabel(frame.Caption()));
  Follow(mirror_, box, frame, kNothingMore);
  return box;
}

wxStaticText* WidgetMaker::Make(wxWindow* parent, Label& label) {
  auto* text = new wxStaticText(parent, wxID_ANY, ToWxLabel(label.Caption()));
  Name(*text, label);
  // A note that was wrapped holds line breaks that its caption has not: only a new caption counts.
  mirror_.Follow(label, [text, &label, shown = label.Caption()](const Aspects& changed) mutable {
    TakeOverCommon(*text, label, changed);
    if (!changed.Has(Aspect::Caption) || shown == label.Caption()) return;
    shown = label.Caption();
    text->SetLabelText(ToWx(shown));
  });
  return text;
}

wxButton* WidgetMaker::RelayClick(wxButton* widget, PushButton& button) {
  widget->Bind(wxEVT_BUTTON, [this, &button](wxCommandEvent&) {
    gestures_.Perform(button, [&button] { button.Click(); });
  });
  return widget;
}

wxButton* WidgetMaker::Make(wxWindow* parent, PushButton& button) {
  auto* widget = new wxButton(parent, wxID_ANY, ToWxLabel(button.Caption()));
  Follow(mirror_, widget, button, kNothingMore);
  return RelayClick(widget, button);
}

wxButton* WidgetMaker::MakePicture(wxWindow* parent, PushButton& button,
                                   const wxBitmapBundle& picture, const wxString& name) {
  auto* widget = new wxButton(parent, wxID_ANY, name, wxDefaultPosition, wxDefaultSize,
                              wxBU_EXACTFIT | wxBU_NOTEXT);
  widget->SetBitmap(picture);
  widget->SetToolTip(name);
  Name(*widget, button);
  mirror_.Follow(button, [widget, &button](const Aspects& changed) {
    TakeOverCommon(*widget, button, changed);
  });
  return RelayClick(widget, button);
}

wxCheckBox* WidgetMaker::Make(wxWindow* parent, CheckBox& box) {
  auto* widget = new wxCheckBox(parent, wxID_ANY, ToWxLabel(box.Caption()));
  Follow(mirror_, widget, box, [widget, &box](const Aspects& changed) {
    if (changed.Has(Aspect::Checked)) widget->SetValue(box.Checked());
  });
  widget->Bind(wxEVT_CHECKBOX,
               [this, &box](wxCommandEvent&) { gestures_.Perform(box, [&box] { box.Click(); }); });
  return widget;
}

wxRadioButton* WidgetMaker::Make(wxWindow* parent, OptionButton& option, bool firstOfGroup) {
  auto* widget = new wxRadioButton(parent, wxID_ANY, ToWxLabel(option.Caption()), wxDefaultPosition,
                                   wxDefaultSize, firstOfGroup ? wxRB_GROUP : 0);
  Follow(mirror_, widget, option, [widget, &option](const Aspects& changed) {
    // Releasing one is what choosing another does.
    if (changed.Has(Aspect::Checked) && option.Chosen()) widget->SetValue(true);
  });
  widget->Bind(wxEVT_RADIOBUTTON, [this, &option](wxCommandEvent&) {
    gestures_.Perform(option, [&option] { option.Click(); });
  });
  return widget;
}

TextLine* WidgetMaker::Make(wxWindow* parent, TextBox& box) {
  auto* widget = new TextLine(parent, box.ReadOnly());
  Name(*widget, box);
  mirror_.Follow(box, [widget, &box](const Aspects& changed) {
    TakeOverCommon(*widget, box, changed);
    if (changed.Has(Aspect::Text)) widget->TakeOver(box);
  });
  if (box.ReadOnly()) return widget;
  widget->onType = [this, &box](const wxString& text) {
    gestures_.Perform(box, [&] { box.Type(ToUtf16(text)); });
  };
  widget->onEnter = [this, &box] { gestures_.Perform(box, [&box] { box.KeyDown(kKeyReturn); }); };
  return widget;
}

LineList* WidgetMaker::Make(wxWindow* parent, ListBox& list, const wxSize& leastSize,
                            std::function<wxString(std::string_view)> show) {
  auto* widget = new LineList(parent, list.SeveralSelections(), leastSize, std::move(show));
  Name(*widget, list);
  mirror_.Follow(list, [widget, &list](const Aspects& changed) {
    TakeOverCommon(*widget, list, changed);
    if (changed.Has(Aspect::Items) || changed.Has(Aspect::Selection)) widget->TakeOver(list);
  });
  widget->onPick = [this, &list](int index) {
    gestures_.Perform(list, [&list, index] { list.ClickItem(index); });
  };
  return widget;
}

wxStatusBar* WidgetMaker::Make(wxFrame* parent, StatusBar& bar) {
  auto* widget = parent->CreateStatusBar(StatusBar::kPanelCount);
  // Help texts of menu entries would write over the first panel.
  parent->SetStatusBarPane(-1);
  int widths[StatusBar::kPanelCount];
  for (int i = 0; i < StatusBar::kPanelCount; ++i) {
    const auto* sample = kPanelSamples[i];
    widths[i] = sample != nullptr ? widget->GetTextExtent(sample).x + widget->FromDIP(14) : -1;
  }
  widget->SetStatusWidths(StatusBar::kPanelCount, widths);
  Name(*widget, bar);
  mirror_.Follow(bar, [widget, &bar](const Aspects& changed) {
    if (!changed.Has(Aspect::Text)) return;
    for (int i = 0; i < StatusBar::kPanelCount; ++i) {
      if (const auto text = ToWx(bar.Panel(i + 1)); widget->GetStatusText(i) != text) {
        widget->SetStatusText(text, i);
      }
    }
  });
  return widget;
}

}  // namespace morvelle
