#include "tests/support/window_driver.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/clipbrd.h>
#include <wx/dialog.h>
#include <wx/listbox.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

namespace morvelle {

namespace {

constexpr int kTickMilliseconds = 25;
/// A box gets so many ticks to stand on the screen, and so many to react to the click.
constexpr int kTicksBeforeClick = 6;
constexpr int kTicksBetweenClicks = 12;
constexpr int kMostTicks = 200;
constexpr int kPatienceMilliseconds = 5000;
constexpr int kRestMilliseconds = 60;

std::runtime_error Impossible(std::string_view name, const char* why) {
  return std::runtime_error(std::string(name) + ": " + why);
}

wxButton* ButtonOf(wxWindow& box, const wxString& label) {
  for (auto* child : box.GetChildren()) {
    auto* button = dynamic_cast<wxButton*>(child);
    if (button != nullptr && button->GetLabel() == label) return button;
  }
  return nullptr;
}

}  // namespace

std::vector<std::string> LinesOf(const wxListBox& list) {
  std::vector<std::string> lines;
  for (const auto& line : list.GetStrings()) lines.push_back(line.utf8_string());
  return lines;
}

WindowDriver::WindowDriver(MainWindow& window) : window_(window) {
  watch_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { WatchBoxes(); });
  watch_.Start(kTickMilliseconds);
}

WindowDriver::~WindowDriver() { watch_.Stop(); }

void WindowDriver::Settle() {
  const wxStopWatch watch;
  while (watch.Time() < kRestMilliseconds) {
    wxTheApp->Yield(true);
    wxTheApp->ProcessIdle();
    wxMilliSleep(2);
  }
}

bool WindowDriver::WaitUntil(const std::function<bool()>& condition) {
  const wxStopWatch watch;
  while (!condition()) {
    if (watch.Time() > kPatienceMilliseconds) return false;
    Settle();
  }
  return true;
}

wxWindow& WindowDriver::Find(std::string_view name) const {
  auto* widget = wxWindow::FindWindowByName(wxString(std::string(name)), &window_);
  if (widget == nullptr) throw Impossible(name, "no such widget");
  return *widget;
}

void WindowDriver::ClickAt(wxWindow& widget, const wxPoint& place) {
  wxUIActionSimulator user;
  user.MouseMove(widget.ClientToScreen(place));
  Settle();
  user.MouseClick();
  Settle();
}

void WindowDriver::Click(std::string_view name) {
  auto& widget = Find(name);
  if (!widget.IsEnabled() || !widget.IsShownOnScreen()) throw Impossible(name, "out of reach");
  const auto size = widget.GetClientSize();
  ClickAt(widget, wxPoint(size.x / 2, size.y / 2));
}

wxPoint WindowDriver::PlaceOf(const wxListBox& list, int index) {
  const int middle = list.GetClientSize().x / 2;
  for (int y = 1; y < list.GetClientSize().y; y += 4) {
    if (list.HitTest(middle, y) == index) return {middle, y + 3};
  }
  throw Impossible(list.GetName().ToStdString(), "no such line on the screen");
}

void WindowDriver::ClickLine(std::string_view list, int index) {
  auto& widget = FindAs<wxListBox>(list);
  widget.EnsureVisible(index);
  Settle();
  ClickAt(widget, PlaceOf(widget, index));
}

void WindowDriver::DragLine(std::string_view list, int from, int to, int below) {
  auto& widget = FindAs<wxListBox>(list);
  const auto start = PlaceOf(widget, from);
  const auto end = PlaceOf(widget, to) + wxPoint(0, below);
  wxUIActionSimulator user;
  user.MouseMove(widget.ClientToScreen(start));
  Settle();
  user.MouseDown();
  Settle();
  constexpr int kSteps = 8;
  for (int step = 1; step <= kSteps; ++step) {
    const int y = start.y + (end.y - start.y) * step / kSteps;
    user.MouseMove(widget.ClientToScreen(wxPoint(start.x, y)));
    Settle();
  }
  user.MouseUp();
  Settle();
}

void WindowDriver::Type(const std::string& text) {
  wxUIActionSimulator user;
  user.Text(text.c_str());
  Settle();
}

void WindowDriver::Paste(const wxString& text) {
  if (!wxTheClipboard->Open()) throw std::runtime_error("no clipboard");
  wxTheClipboard->SetData(new wxTextDataObject(text));
  wxTheClipboard->Close();
  Press('V', wxMOD_CONTROL);
}

void WindowDriver::Press(int keyCode, int modifiers) {
  wxUIActionSimulator user;
  user.Char(keyCode, modifiers);
  Settle();
}

void WindowDriver::Choose(std::string_view menu) {
  const auto* item = window_.Menus().Find(menu);
  if (item == nullptr || item->GetMenu() == nullptr) throw Impossible(menu, "no such entry");
  if (!window_.Menus().Reachable(menu)) throw Impossible(menu, "disabled");
  wxCommandEvent chosen(wxEVT_MENU, item->GetId());
  window_.ProcessWindowEvent(chosen);
  Settle();
}

void WindowDriver::ChooseRule(std::string_view array, int row) {
  auto* menu = window_.Menus().FindRuleMenu(array);
  if (menu == nullptr) throw Impossible(array, "no such array");
  if (!menu->Array().Reachable()) throw Impossible(array, "disabled");
  wxMenuEvent opened(wxEVT_MENU_OPEN, wxID_ANY, menu->Widget());
  window_.ProcessWindowEvent(opened);
  const auto* item = menu->Widget()->FindItem(menu->IdOf(row));
  if (item == nullptr || !item->IsEnabled()) throw Impossible(array, "no such row, or disabled");
  wxCommandEvent chosen(wxEVT_MENU, item->GetId());
  window_.ProcessWindowEvent(chosen);
  Settle();
}

void WindowDriver::Answer(const wxString& label, std::function<void(wxDialog&)> first) {
  answers_.push_back({label, std::move(first), {}});
}

void WindowDriver::AnswerFile(const std::string& path) { answers_.push_back({{}, {}, path}); }

void WindowDriver::AnswerText(const wxString& text) {
  Answer("OK", [text](wxDialog& box) {
    auto* input = dynamic_cast<wxTextCtrl*>(wxWindow::FindWindowByName("input", &box));
    if (input != nullptr) input->SetValue(text);
  });
}

void WindowDriver::WatchBoxes() {
  if (handsOff_) return;
  for (auto* top : wxTopLevelWindows) {
    auto* box = dynamic_cast<wxDialog*>(top);
    if (box != nullptr && box->IsModal()) {
      AnswerBox(*box);
      return;
    }
  }
  // The desktop's file dialog is no window of the toolkit's, but it takes the focus.
  if (!answers_.empty() && !answers_.front().file.empty() && !window_.IsActive()) {
    ++ticks_;
    TypeFile(answers_.front());
    return;
  }
  if (!answers_.empty() && answers_.front().fileTyped) answers_.pop_front();
  ticks_ = 0;
}

// The keyboard alone reaches it. It gets time between the keys.
void WindowDriver::TypeFile(BoxAnswer& answer) const {
  wxUIActionSimulator user;
  if (ticks_ == kTicksBeforeClick + kTicksBetweenClicks) {
    user.Char('L', wxMOD_CONTROL);
  } else if (ticks_ == kTicksBeforeClick + 2 * kTicksBetweenClicks) {
    user.Char('A', wxMOD_CONTROL);
    user.Text(answer.file.c_str());
  } else if (ticks_ == kTicksBeforeClick + 4 * kTicksBetweenClicks) {
    user.Char(WXK_RETURN);
    answer.fileTyped = true;
  }
}

// An unexpected box, or one without the button, is closed: a test must end.
void WindowDriver::AnswerBox(wxDialog& box) {
  ++ticks_;
  if (!answers_.empty() && answers_.front().fileTyped) {
    answers_.pop_front();
    ticks_ = 0;
  }
  if (ticks_ > kMostTicks || (answers_.empty() && ticks_ > kTicksBeforeClick)) {
    lastBox_ = "?";
    box.Close();
    return;
  }
  if (answers_.empty() || ticks_ < kTicksBeforeClick) return;
  if ((ticks_ - kTicksBeforeClick) % kTicksBetweenClicks != 0) return;
  auto& answer = answers_.front();
  if (const auto first = std::exchange(answer.first, {})) first(box);
  auto* button = ButtonOf(box, answer.label);
  if (button == nullptr) return;
  const auto* message = wxWindow::FindWindowByName("message", &box);
  if (message != nullptr) lastBox_ = message->GetLabel();
  answers_.pop_front();
  ticks_ = 0;
  const auto size = button->GetSize();
  wxUIActionSimulator user;
  user.MouseMove(button->GetScreenPosition() + wxPoint(size.x / 2, size.y / 2));
  user.MouseClick();
}

}  // namespace morvelle
