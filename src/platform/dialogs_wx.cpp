#include "platform/dialogs_wx.h"

#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/clipbrd.h>
#include <wx/dialog.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <vector>

#include "app/messages/text.h"

namespace morvelle {

namespace {

/// In pixels of 96 to the inch.
constexpr int kGap = 12;
constexpr int kMostTextWidth = 520;
/// Letters of that width, fewer than there mostly are.
constexpr std::size_t kLetters = 50;
/// The longest text that is broken into lines by us, in letters.
constexpr std::size_t kMostBroken = 8000;
constexpr int kLeastInputWidth = 320;

constexpr int kButtonMask = 0x0F;
constexpr int kIconMask = 0xF0;

wxString ToWx(std::string_view text) { return wxString::FromUTF8(ToUtf8(text)); }

/// A line break is a carriage return, a line feed or both.
wxString TextOf(const std::string& text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r') {
      lines += text[i];
    } else if (i + 1 == text.size() || text[i + 1] != '\n') {
      lines += '\n';
    }
  }
  return ToWx(lines);
}

/// A box shows the icon of the window that it belongs to.
void TakeIcon(wxDialog& dialog) {
  if (const auto* owner = dynamic_cast<wxTopLevelWindow*>(dialog.GetParent())) {
    dialog.SetIcons(owner->GetIcons());
  }
}

struct Choice {
  Button button;
  const char* label;
};

std::vector<Choice> ChoicesOf(int style) {
  switch (style & kButtonMask) {
    case kBoxOkCancel:
      return {{Button::Ok, "OK"}, {Button::Cancel, "Annuler"}};
    case kBoxYesNo:
      return {{Button::Yes, "Oui"}, {Button::No, "Non"}};
    default:
      return {{Button::Ok, "OK"}};
  }
}

wxArtID IconOf(int style) {
  switch (style & kIconMask) {
    case kBoxStop:
      return wxART_ERROR;
    case kBoxQuestion:
      return wxART_QUESTION;
    case kBoxExclamation:
      return wxART_WARNING;
    case kBoxInformation:
      return wxART_INFORMATION;
    default:
      return {};
  }
}

/// Wide enough for its title, which the window system would cut.
void FitWithTitle(wxDialog& dialog, wxSizer& content) {
  constexpr int kTitleButtons = 110;
  content.SetMinSize(
      wxSize(dialog.GetTextExtent(dialog.GetTitle()).x + dialog.FromDIP(kTitleButtons), -1));
  dialog.SetSizerAndFit(&content);
  dialog.CentreOnParent();
}

/// A text as it stands; one that would not fit on the screen can be scrolled.
wxWindow* MakeText(wxWindow* parent, const wxString& text) {
  const int most = wxDisplay(0U).GetClientArea().height * 2 / 3;
  const int width = parent->FromDIP(kMostTextWidth);
  // To break a text into lines takes a time that grows with the square of its length.
  if (text.length() <= kMostBroken) {
    auto* label = new wxStaticText(parent, wxID_ANY, {});
    label->SetName("message");
    label->SetLabelText(text);
    label->Wrap(width);
    // A path without a blank is not broken.
    if (label->GetBestSize().y <= most && label->GetBestSize().x <= width * 5 / 4) return label;
    label->Destroy();
  }
  auto* scrolled = new wxTextCtrl(parent, wxID_ANY, text, wxDefaultPosition, wxDefaultSize,
                                  wxTE_MULTILINE | wxTE_READONLY);
  scrolled->SetName("message");
  const auto lines = text.Freq('\n') + text.length() / kLetters + 2;
  const int height = static_cast<int>(lines) * parent->GetCharHeight() * 5 / 4;
  scrolled->SetMinSize(wxSize(width, lines < kMostBroken ? std::min(most, height) : most));
  return scrolled;
}

/// A row of buttons at the right; each ends the dialog with its number.
wxSizer* MakeButtons(wxDialog& dialog, const std::vector<Choice>& choices, std::size_t usual) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->AddStretchSpacer();
  for (std::size_t i = 0; i < choices.size(); ++i) {
    const auto number = static_cast<int>(choices[i].button);
    auto* button = new wxButton(&dialog, wxID_ANY, choices[i].label);
    button->Bind(wxEVT_BUTTON, [&dialog, number](wxCommandEvent&) { dialog.EndModal(number); });
    row->Add(button, wxSizerFlags().Border(wxLEFT, i == 0 ? 0 : dialog.FromDIP(kGap) / 2));
    if (i == usual) {
      button->SetDefault();
      button->SetFocus();
    }
  }
  return row;
}

/// Escape and the cross of the title bar.
void CloseWith(wxDialog& dialog, Button button) {
  const auto number = static_cast<int>(button);
  dialog.SetEscapeId(wxID_NONE);
  dialog.Bind(wxEVT_CLOSE_WINDOW, [&dialog, number](wxCloseEvent&) { dialog.EndModal(number); });
  dialog.Bind(wxEVT_CHAR_HOOK, [&dialog, number](wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE) {
      dialog.EndModal(number);
    } else {
      event.Skip();
    }
  });
}

/// What stands in an input box, and what is said about it.
class InputBox {
 public:
  InputBox(const std::string& prompt, const std::string& title, const std::string& proposal);
  std::optional<std::string> Ask();

 private:
  [[nodiscard]] std::optional<std::string> Text() const { return Allowed(input_->GetValue()); }
  /// The text as the program's; nothing when it holds a character that none takes in.
  static std::optional<std::string> Allowed(const wxString& typed);
  wxSizer* MakeCommands();
  void OnPaste(wxClipboardTextEvent& event);
  void Judge(const wxString& typed);
  void Accept();

  wxDialog dialog_;
  wxTextCtrl* input_ = nullptr;
  wxStaticText* refusal_ = nullptr;
};

InputBox::InputBox(const std::string& prompt, const std::string& title, const std::string& proposal)
    : dialog_(OwnerOfBox(), wxID_ANY, TextOf(title)) {
  TakeIcon(dialog_);
  const int gap = dialog_.FromDIP(kGap);
  auto* text = MakeText(&dialog_, TextOf(prompt));
  input_ = new wxTextCtrl(&dialog_, wxID_ANY, ToWx(proposal), wxDefaultPosition,
                          wxSize(dialog_.FromDIP(kLeastInputWidth), -1), wxTE_PROCESS_ENTER);
  input_->SetName("input");
  refusal_ = new wxStaticText(&dialog_, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                              wxST_NO_AUTORESIZE);
  refusal_->SetName("refusal");
  refusal_->SetMinSize(wxSize(-1, refusal_->GetCharHeight()));

  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(text, wxSizerFlags().Expand().Border(wxALL, gap));
  column->Add(input_, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, gap));
  column->Add(refusal_, wxSizerFlags().Expand().Border(wxALL, gap / 2));
  column->Add(MakeCommands(), wxSizerFlags().Expand().Border(wxALL & ~wxTOP, gap));
  FitWithTitle(dialog_, *column);

  input_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { Accept(); });
  input_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { Judge(input_->GetValue()); });
  input_->Bind(wxEVT_TEXT_PASTE, &InputBox::OnPaste, this);
  CloseWith(dialog_, Button::Cancel);
  input_->SetFocus();
  input_->SelectAll();
}

wxSizer* InputBox::MakeCommands() {
  auto* ok = new wxButton(&dialog_, wxID_ANY, "OK");
  ok->SetDefault();
  ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Accept(); });
  auto* cancel = new wxButton(&dialog_, wxID_ANY, "Annuler");
  cancel->Bind(wxEVT_BUTTON,
               [this](wxCommandEvent&) { dialog_.EndModal(static_cast<int>(Button::Cancel)); });
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->AddStretchSpacer();
  row->Add(ok);
  row->Add(cancel, wxSizerFlags().Border(wxLEFT, dialog_.FromDIP(kGap) / 2));
  return row;
}

std::optional<std::string> InputBox::Allowed(const wxString& typed) {
  auto text = FromUtf8(typed.utf8_string());
  if (text && HoldsControlCharacter(*text)) return std::nullopt;
  return text;
}

// The line of Windows would take in what stands before the first line break and drop the rest.
void InputBox::OnPaste(wxClipboardTextEvent& event) {
  const wxClipboardLocker open;
  wxTextDataObject pasted;
  if (!open || !wxTheClipboard->GetData(pasted) || Allowed(pasted.GetText())) {
    event.Skip();
  } else {
    Judge(pasted.GetText());
  }
}

void InputBox::Judge(const wxString& typed) {
  refusal_->SetLabelText(Allowed(typed) ? wxString()
                                        : ToWx("Ce texte contient un caractère non autorisé"_cp));
}

void InputBox::Accept() {
  if (Text()) {
    dialog_.EndModal(static_cast<int>(Button::Ok));
  } else {
    // A name may have been stored with such a character: nothing was said about it yet.
    Judge(input_->GetValue());
    input_->SetFocus();
  }
}

std::optional<std::string> InputBox::Ask() {
  if (dialog_.ShowModal() != static_cast<int>(Button::Ok)) return std::nullopt;
  return Text();
}

}  // namespace

wxWindow* OwnerOfBox() {
  auto* window = wxGetActiveWindow();
  auto* owner = window != nullptr ? wxGetTopLevelParent(window) : wxTheApp->GetTopWindow();
  return owner != nullptr && owner->IsShown() ? owner : nullptr;
}

Button WxDialogs::ShowMessage(const std::string& prompt, int style, const std::string& title) {
  PrepareBox();
  wxDialog dialog(OwnerOfBox(), wxID_ANY, TextOf(title));
  TakeIcon(dialog);
  const int gap = dialog.FromDIP(kGap);
  auto* message = new wxBoxSizer(wxHORIZONTAL);
  if (const auto icon = IconOf(style); !icon.empty()) {
    const auto picture = wxArtProvider::GetBitmapBundle(icon, wxART_MESSAGE_BOX);
    message->Add(new wxStaticBitmap(&dialog, wxID_ANY, picture),
                 wxSizerFlags().Border(wxRIGHT, gap));
  }
  message->Add(MakeText(&dialog, TextOf(prompt)), wxSizerFlags(1).CenterVertical());

  const auto choices = ChoicesOf(style);
  const std::size_t usual = (style & kBoxSecondDefault) != 0 ? choices.size() - 1 : 0;
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(message, wxSizerFlags(1).Expand().Border(wxALL, gap));
  column->Add(MakeButtons(dialog, choices, usual),
              wxSizerFlags().Expand().Border(wxALL & ~wxTOP, gap));
  FitWithTitle(dialog, *column);
  // The last button is the one that changes nothing.
  CloseWith(dialog, choices.back().button);
  return static_cast<Button>(dialog.ShowModal());
}

std::optional<std::string> WxDialogs::AskText(const std::string& prompt, const std::string& title,
                                              const std::string& proposal) {
  PrepareBox();
  return InputBox(prompt, title, proposal).Ask();
}

}  // namespace morvelle
