#include "view/main_window.h"

#include "view/about_window.h"
#include "view/line_list.h"
#include "view/pictures.h"
#include "view/wx_text.h"

namespace morvelle {

namespace {

/// Size of the first start, in pixels of 96 to the inch: it fills a screen of 1024 by 768.
const wxSize kUsualSize(1000, 720);

MenuControls MenusOf(frmMorvelle& form) {
  return {[&form](std::string_view name) -> MenuItem& { return form.Menu(name); },
          [&form](std::string_view name) -> MenuArray& { return form.RuleMenu(name); }};
}

}  // namespace

MainWindow::MainWindow(frmMorvelle& form, WindowPlace place)
    : wxFrame(nullptr, wxID_ANY, ToWx(form.form.Caption()), wxDefaultPosition,
              FromDIP(kUsualSize, nullptr)),
      form_(form),
      place_(std::move(place)),
      mirror_([this] { CallAfter(&MainWindow::ShowChanges); }),
      gestures_(mirror_, [this] { CloseAtOnce(); }),
      maker_(mirror_, gestures_),
      menus_(*this, MenusOf(form), mirror_, gestures_) {
  SetName(form.form.Name());
  SetIcons(ProgramIcons());
  mirror_.Follow(form.form, [this](const Aspects& changed) {
    if (changed.Has(Aspect::Caption)) SetTitle(ToWx(form_.form.Caption()));
  });
  Build();
  mirror_.Flush();
  wantedPlace_ = place_.Restore(*this, kUsualSize);
  form_.onClose = [this] { CloseAtOnce(); };
  form_.onAbout = [this] { ShowAboutBox(*this, form_.aboutBox); };
  Bind(wxEVT_CLOSE_WINDOW, &MainWindow::OnClose, this);
}

// A box of the load event that came before the window is on the screen would stand behind it.
void MainWindow::Start() {
  panel_->Bind(wxEVT_PAINT, &MainWindow::OnFirstPaint, this);
  Show();
}

void MainWindow::OnFirstPaint(wxPaintEvent& event) {
  event.Skip();
  if (panel_->Unbind(wxEVT_PAINT, &MainWindow::OnFirstPaint, this)) CallAfter(&MainWindow::Load);
}

void MainWindow::Load() {
  if (!IsMaximized() && GetPosition() != wantedPlace_) Move(wantedPlace_);
  gestures_.Perform([this] { form_.Form_Load(); });
  if (auto* list = FindWindow(wxString(form_.lstRules.Name()))) list->SetFocus();
}

void MainWindow::OnClose(wxCloseEvent& event) {
  if (closing_) return;
  if (event.CanVeto()) {
    // A question is on the screen already.
    bool mayClose = !gestures_.Running();
    if (mayClose) gestures_.Perform([&] { mayClose = form_.Form_QueryUnload(); });
    if (closing_) return;
    if (!mayClose) {
      event.Veto();
      return;
    }
  }
  CloseAtOnce();
}

void MainWindow::CloseAtOnce() {
  if (closing_) return;
  closing_ = true;
  gestures_.Stop();
  place_.Keep(*this);
  Hide();
  Destroy();
}

void MainWindow::MoveRulesByKey(wxWindow* list) {
  list->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (event.GetModifiers() != wxMOD_ALT || (key != WXK_UP && key != WXK_DOWN)) {
      event.Skip();
      return;
    }
    auto& arrow = key == WXK_UP ? form_.picUp : form_.picDown;
    gestures_.Perform(form_.lstRules, [&arrow] { arrow.Click(); });
  });
}

// A line goes where it is dragged by as many moves as the arrows would make.
void MainWindow::MoveRulesByDragging(LineList& list) {
  list.onDrag = [this](int from, int to) {
    auto& rules = form_.lstRules;
    gestures_.Perform(rules, [&] {
      if (rules.ListIndex() != from) rules.ClickItem(from);
      for (int line = from; line != to;) {
        (to < line ? form_.picUp : form_.picDown).Click();
        if (rules.ListIndex() == line) break;
        line = rules.ListIndex();
      }
    });
    return rules.ListIndex();
  };
}

void MainWindow::DeleteByKey(wxWindow* list, PushButton& button) {
  list->Bind(wxEVT_KEY_DOWN, [this, &button](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (event.GetModifiers() != wxMOD_NONE || (key != WXK_DELETE && key != WXK_NUMPAD_DELETE)) {
      event.Skip();
      return;
    }
    gestures_.Perform([&button] { button.Click(); });
  });
}

}  // namespace morvelle
