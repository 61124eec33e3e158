#include "platform/printer_wx.h"

#include <wx/log.h>
#include <wx/print.h>
#include <wx/printdlg.h>

#include "platform/printed_pages_wx.h"

namespace morvelle {

WxPrinter::WxPrinter(WxDialogs& boxes) : boxes_(boxes) {}
WxPrinter::~WxPrinter() = default;

PrintOutcome WxPrinter::Print(const std::string& title, const std::vector<std::string>& lines) {
  boxes_.PrepareBox();
  if (choices_ == nullptr) {
    wxPrintData paper;
    paper.SetPaperId(wxPAPER_A4);
    choices_ = std::make_unique<wxPrintDialogData>(paper);
    choices_->EnableSelection(false);
  }
  // What fails is told by the caller, once.
  const wxLogNull quiet;
  ::wxPrinter printer(choices_.get());
  PrintedPages pages(title, lines);
  if (printer.Print(OwnerOfBox(), &pages, true)) {
    *choices_ = printer.GetPrintDialogData();
    return PrintOutcome::Printed;
  }
  return ::wxPrinter::GetLastError() == wxPRINTER_CANCELLED ? PrintOutcome::Cancelled
                                                            : PrintOutcome::Failed;
}

}  // namespace morvelle
