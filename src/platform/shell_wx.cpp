#include <wx/app.h>
#include <wx/html/helpctrl.h>
#include <wx/html/helpfrm.h>
#include <wx/html/htmlfilt.h>
#include <wx/html/htmlwin.h>
#include <wx/image.h>
#include <wx/sstream.h>

#include <memory>
#include <string>
#include <system_error>

#include "app/messages/messages.h"
#include "app/messages/text.h"
#include "platform/programs_posix.h"
#include "platform/system_shell.h"

namespace morvelle {

namespace {

/// Shipped beside the program: `bin/morvelle` and `share/morvelle/aide/`.
std::filesystem::path ShippedManual(const Environment& environment) {
  return environment.ProgramFile().parent_path().parent_path() / "share" / "morvelle" / "aide" /
         "morvelle.hhp";
}

/// Size of the help window when it opens, in pixels of 96 to the inch.
const wxSize kHelpSize(1000, 680);

/// The manual's pages are HTML by their name, and UTF-8: not every desktop says what a ".htm" is.
class PageFilter final : public wxHtmlFilter {
 public:
  [[nodiscard]] bool CanRead(const wxFSFile& file) const override {
    return file.GetLocation().Lower().EndsWith(".htm");
  }
  [[nodiscard]] wxString ReadFile(const wxFSFile& file) const override {
    wxString page;
    wxStringOutputStream text(&page);
    if (auto* bytes = file.GetStream()) bytes->Read(text);
    return page;
  }
};

/// The desktop's own programs, and the manual in a window of our own.
class WxShell final : public Shell {
 public:
  WxShell(Dialogs& dialogs, std::filesystem::path manual)
      : messages_(dialogs), manual_(std::move(manual)) {}

  void OpenFolder(const std::filesystem::path& folder) override {
    std::error_code error;
    // A full path begins with no dash, by which it would be taken for an option.
    const auto place = std::filesystem::absolute(folder, error);
    if (!Messages::FolderExists(folder) || !Open(place.string())) {
      messages_.FileDoesNotExist(folder);
    }
  }

  void OpenLink(const std::string& address) override {
    if (!IsWebAddress(address) || !Open(ToUtf8(address))) {
      messages_.Msg(std::string("Aucun navigateur n'a pu ouvrir "_cp) + address, kBoxExclamation);
    }
  }

  void ShowHelp(const std::filesystem::path& /*helpFile*/, const std::string& page) override {
    if (!controller_ && !OpenManual()) {
      messages_.FileDoesNotExist(manual_);
      return;
    }
    const bool isOpen = controller_->GetFrame() != nullptr;
    if (page.empty()) {
      controller_->DisplayContents();
    } else {
      controller_->Display(wxString::FromUTF8(page));
    }
    auto* frame = controller_->GetFrame();
    if (frame == nullptr || isOpen) return;
    frame->SetSize(frame->FromDIP(kHelpSize));
    frame->Centre();
    const auto* window = dynamic_cast<wxTopLevelWindow*>(wxTheApp->GetTopWindow());
    if (window != nullptr) frame->SetIcons(window->GetIcons());
  }

 private:
  /// What the user has chosen for things of this kind opens it.
  static bool Open(const std::string& thing) {
    const auto opener = FindProgram("xdg-open");
    return !opener.empty() && StartProgram({opener.string(), thing});
  }

  bool OpenManual() {
    if (!messages_.FileExists(manual_)) return false;
    auto controller = std::make_unique<wxHtmlHelpController>(
        wxHF_TOOLBAR | wxHF_CONTENTS | wxHF_INDEX | wxHF_SEARCH | wxHF_PRINT | wxHF_MERGE_BOOKS);
    if (!controller->AddBook(wxFileName(wxString::FromUTF8(manual_.string())))) return false;
    controller->SetTitleFormat("%s");
    wxHtmlWindow::AddFilter(new PageFilter);
    if (wxImage::FindHandler(wxBITMAP_TYPE_PNG) == nullptr) {
      wxImage::AddHandler(new wxPNGHandler);
    }
    controller_ = std::move(controller);
    return true;
  }

  Messages messages_;
  std::filesystem::path manual_;
  std::unique_ptr<wxHtmlHelpController> controller_;
};

}  // namespace

std::unique_ptr<Shell> MakeShell(Dialogs& dialogs, const Environment& environment) {
  return std::make_unique<WxShell>(dialogs, ShippedManual(environment));
}

}  // namespace morvelle
