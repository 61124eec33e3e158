#pragma once

#include <wx/event.h>
#include <wx/string.h>
#include <wx/timer.h>

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "view/main_window.h"

class wxDialog;
class wxListBox;

namespace morvelle {

/// The lines of a list, in UTF-8.
std::vector<std::string> LinesOf(const wxListBox& list);

/// Uses the main window as a person would, with the mouse and the keyboard of the display. Widgets
/// are found by the names of their controls. What cannot be done (no such widget, disabled, hidden)
/// throws std::runtime_error.
class WindowDriver {
 public:
  explicit WindowDriver(MainWindow& window);
  WindowDriver(const WindowDriver&) = delete;
  WindowDriver& operator=(const WindowDriver&) = delete;
  ~WindowDriver();

  [[nodiscard]] wxWindow& Find(std::string_view name) const;
  template <typename Widget>
  [[nodiscard]] Widget& FindAs(std::string_view name) const {
    auto* widget = dynamic_cast<Widget*>(&Find(name));
    if (widget == nullptr) throw std::runtime_error("another kind of widget");
    return *widget;
  }

  /// A click in the middle of the widget.
  void Click(std::string_view name);
  /// A click on a line of a list, which is scrolled to it first.
  void ClickLine(std::string_view list, int index);
  /// Drags a line to another one that is on the screen too, and `below` pixels further.
  void DragLine(std::string_view list, int from, int to, int below = 0);
  /// Types into whatever has the focus; only what a US keyboard has.
  void Type(const std::string& text);
  /// Pastes any text from the clipboard with Ctrl+V.
  void Paste(const wxString& text);
  void Press(int keyCode, int modifiers = wxMOD_NONE);
  /// Chooses an entry of the menus; one that is disabled, alone or with its menu, or hidden throws.
  void Choose(std::string_view menu);
  /// Opens the menus around a per-rule array and chooses the entry of a row.
  void ChooseRule(std::string_view array, int row);

  /// The next box is answered by a click on the button of that label, after anything that is to be
  /// done in it `first`. To be called before the
  /// gesture that raises it; several wait in their order.
  void Answer(const wxString& label, std::function<void(wxDialog&)> first = {});
  /// The next box, an input box, gets this text and then OK.
  void AnswerText(const wxString& text);
  /// The next box, the desktop's file dialog, gets this path, which a US keyboard must have, and
  /// then Enter.
  void AnswerFile(const std::string& path);
  /// Text of the last box that was answered.
  [[nodiscard]] const wxString& LastBox() const { return lastBox_; }
  /// Answers that no box has asked for yet.
  [[nodiscard]] std::size_t PendingAnswers() const { return answers_.size(); }

  /// While true, boxes are left to the test itself.
  void KeepHandsOff(bool handsOff) { handsOff_ = handsOff; }

  /// Lets the window work until it rests.
  static void Settle();
  /// Lets the window work until `condition` holds; false when it does not within five seconds.
  static bool WaitUntil(const std::function<bool()>& condition);

 private:
  struct BoxAnswer {
    wxString label;
    std::function<void(wxDialog&)> first;
    std::string file;
    bool fileTyped = false;
  };
  void WatchBoxes();
  void AnswerBox(wxDialog& box);
  void TypeFile(BoxAnswer& answer) const;
  void ClickAt(wxWindow& widget, const wxPoint& place);
  /// A place on a line of a list that is on the screen.
  [[nodiscard]] static wxPoint PlaceOf(const wxListBox& list, int index);

  MainWindow& window_;
  wxTimer watch_;
  std::deque<BoxAnswer> answers_;
  int ticks_ = 0;
  bool handsOff_ = false;
  wxString lastBox_;
};

}  // namespace morvelle
