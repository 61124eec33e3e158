#include "view/about_window.h"

#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/hyperlink.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>
#include <string>

#include "view/pictures.h"
#include "view/wx_text.h"

namespace morvelle {

namespace {

constexpr int kSpace = 12;

/// The program's line breaks, of whichever kind, as the toolkit's.
wxString Lines(std::string_view text) {
  auto shown = ToWxLabel(text);
  shown.Replace("\r\n", "\n");
  shown.Replace("\r", "\n");
  return shown;
}

class AboutDialog final : public wxDialog {
 public:
  AboutDialog(wxWindow& parent, frmVersion& box)
      : wxDialog(&parent, wxID_ANY, ToWx(box.form.Caption())), box_(box) {
    SetName(box.form.Name());
    auto* texts = new wxBoxSizer(wxVERTICAL);
    AddText(texts, box.lblDescription);
    AddText(texts, box.lblVersion);
    if (box.lblUpDateLine.Visible()) AddText(texts, box.lblUpDateLine);
    if (box.lblUpDate.Visible()) AddLink(texts);
    AddText(texts, box.lblDisclaimer);

    auto* pictures = new wxBoxSizer(wxVERTICAL);
    AddPicture(pictures, box.picIcon, wxBitmapBundle::FromIconBundle(ProgramIcons()));
    AddPicture(pictures, box.Picture1, LetterAndSieve());

    auto* columns = new wxBoxSizer(wxHORIZONTAL);
    columns->Add(pictures, wxSizerFlags().Border(wxALL, FromDIP(kSpace)));
    columns->Add(texts, wxSizerFlags(1).Border(wxALL, FromDIP(kSpace)));
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(columns, wxSizerFlags(1).Expand());
    auto* button = new wxButton(this, wxID_OK, ToWxLabel(box.cmdOK.Caption()));
    button->SetName(box.cmdOK.Name());
    button->SetDefault();
    button->SetFocus();
    all->Add(button, wxSizerFlags().Center().Border(wxALL, FromDIP(kSpace)));
    SetSizerAndFit(all);
    SetEscapeId(wxID_OK);
    CentreOnParent();
    box_.onClose = [this] { EndModal(wxID_OK); };
    button->Bind(wxEVT_BUTTON, [this](wxCommandEvent& /*event*/) { box_.cmdOK.Click(); });
  }
  AboutDialog(const AboutDialog&) = delete;
  AboutDialog& operator=(const AboutDialog&) = delete;
  ~AboutDialog() override { box_.onClose = nullptr; }

 private:
  void AddText(wxSizer* sizer, const Label& label) {
    auto* text = new wxStaticText(this, wxID_ANY, Lines(label.Caption()));
    text->SetName(label.Name());
    sizer->Add(text, wxSizerFlags().Border(wxBOTTOM, FromDIP(kSpace)));
  }

  /// The link shows by itself that the pointer is over it.
  void AddLink(wxSizer* sizer) {
    const auto address = ToWx(box_.lblUpDate.Caption());
    auto* link = new wxHyperlinkCtrl(this, wxID_ANY, address, address);
    link->SetName(box_.lblUpDate.Name());
    link->Bind(wxEVT_HYPERLINK, [this](wxHyperlinkEvent& /*event*/) { box_.lblUpDate.Click(); });
    sizer->Add(link, wxSizerFlags().Border(wxBOTTOM, FromDIP(kSpace)));
  }

  void AddPicture(wxSizer* sizer, const Frame& frame, const wxBitmapBundle& picture) {
    auto* shown = new wxStaticBitmap(this, wxID_ANY, picture);
    shown->SetName(frame.Name());
    sizer->Add(shown, wxSizerFlags().Center().Border(wxBOTTOM, FromDIP(kSpace)));
  }

  frmVersion& box_;
};

}  // namespace

void ShowAboutBox(wxWindow& parent, frmVersion& box) { AboutDialog(parent, box).ShowModal(); }

}  // namespace morvelle
