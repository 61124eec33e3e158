#include "platform/printed_pages_wx.h"

#include <wx/dc.h>
#include <wx/font.h>

#include <algorithm>

#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr int kMarginMillimetres = 20;
/// From the end of the text to the page number.
constexpr int kNumberMillimetres = 6;
constexpr int kPointSize = 10;
constexpr double kMillimetresOfInch = 25.4;
/// The part of a line that a continuation may leave to its indentation.
constexpr std::size_t kMostIndentShare = 2;

wxString ToWx(std::string_view text) { return wxString::FromUTF8(ToUtf8(text)); }

}  // namespace

PrintedPages::PrintedPages(const std::string& title, const std::vector<std::string>& lines)
    : wxPrintout(ToWx(title)), lines_(lines) {}

void PrintedPages::ChooseFont(wxDC& dc) const {
  wxFont font(wxFontInfo(kPointSize).Family(wxFONTFAMILY_TELETYPE));
  // The size in the paper's own units: a printer's context takes points for those of the screen on
  // some systems.
  int unused = 0;
  int dotsOfInch = 0;
  GetPPIPrinter(&unused, &dotsOfInch);
  font.SetPixelSize(wxSize(0, dotsOfInch * kPointSize / 72));
  dc.SetFont(font);
}

void PrintedPages::Measure(wxDC& dc) {
  ChooseFont(dc);
  int pageWidth = 0;
  int pageHeight = 0;
  GetPageSizePixels(&pageWidth, &pageHeight);
  int acrossInch = 0;
  int downInch = 0;
  GetPPIPrinter(&acrossInch, &downInch);
  const auto across = [&](int mm) {
    return static_cast<int>(mm * acrossInch / kMillimetresOfInch);
  };
  const auto down = [&](int mm) { return static_cast<int>(mm * downInch / kMillimetresOfInch); };
  layout_.left = across(kMarginMillimetres);
  layout_.top = down(kMarginMillimetres);
  layout_.width = std::max(1, pageWidth - 2 * layout_.left);
  layout_.height = std::max(1, pageHeight - 2 * layout_.top);
  layout_.numberTop = pageHeight - layout_.top + down(kNumberMillimetres);
  layout_.lineHeight = std::max(1, dc.GetCharHeight());
  constexpr int kSample = 100;
  const int letters = std::max(1, dc.GetTextExtent(wxString('W', kSample)).x);
  layout_.columns = std::max<std::size_t>(
      1, static_cast<std::size_t>(layout_.width) * kSample / static_cast<std::size_t>(letters));
  layout_.linesOfPage = static_cast<std::size_t>(std::max(1, layout_.height / layout_.lineHeight));
}

void PrintedPages::Wrap() {
  wrapped_.clear();
  for (const auto& line : lines_) {
    const auto text = std::min(line.find_first_not_of(' '), line.size());
    const auto indent = std::min(text, layout_.columns / kMostIndentShare);
    wrapped_.push_back(ToWx(line.substr(0, layout_.columns)));
    const auto step = layout_.columns - indent;
    for (std::size_t at = layout_.columns; at < line.size(); at += step) {
      wrapped_.push_back(ToWx(std::string(indent, ' ') + line.substr(at, step)));
    }
  }
}

void PrintedPages::OnPreparePrinting() {
  Measure(*GetDC());
  Wrap();
}

int PrintedPages::PageCount() const {
  const auto pages = (wrapped_.size() + layout_.linesOfPage - 1) / layout_.linesOfPage;
  return std::max(1, static_cast<int>(pages));
}

bool PrintedPages::HasPage(int page) { return page >= 1 && page <= PageCount(); }

void PrintedPages::GetPageInfo(int* first, int* last, int* from, int* to) {
  *first = 1;
  *last = PageCount();
  *from = 1;
  *to = PageCount();
}

bool PrintedPages::OnPrintPage(int page) {
  auto* dc = GetDC();
  if (dc == nullptr) return false;
  ChooseFont(*dc);
  const auto first = static_cast<std::size_t>(page - 1) * layout_.linesOfPage;
  const auto end = std::min(wrapped_.size(), first + layout_.linesOfPage);
  int y = layout_.top;
  for (auto at = first; at < end; ++at, y += layout_.lineHeight) {
    dc->DrawText(wrapped_[at], layout_.left, y);
  }
  const auto number = wxString::Format("%d", page);
  dc->DrawText(number, layout_.left + (layout_.width - dc->GetTextExtent(number).x) / 2,
               layout_.numberTop);
  return true;
}

}  // namespace morvelle
