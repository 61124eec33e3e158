#include "view/line_list.h"

#include <wx/wupdlock.h>

#include <algorithm>
#include <utility>

#include "view/wx_text.h"

namespace morvelle {

namespace {

/// Up to so many lines are changed one by one, at about 0.1 ms each; a block with more changes is
/// exchanged whole, at about 2 µs a line.
constexpr std::ptrdiff_t kMostSingleChanges = 64;

}  // namespace

LineList::LineList(wxWindow* parent, bool severalSelections, const wxSize& leastSize, Show show)
    : leastSize_(leastSize), show_(show ? std::move(show) : Show(ToWx)) {
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr,
         (severalSelections ? wxLB_MULTIPLE : wxLB_SINGLE) | wxLB_NEEDED_SB);
  Bind(wxEVT_LEFT_DOWN, &LineList::OnPress, this);
  Bind(wxEVT_LEFT_UP, &LineList::OnRelease, this);
  Bind(wxEVT_LISTBOX, &LineList::OnSelect, this);
  Bind(wxEVT_MOTION, &LineList::OnMotion, this);
  if (!severalSelections) return;
  Bind(wxEVT_CHAR_HOOK, &LineList::OnKey, this);
  // As GTK reports Enter.
  Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { Pick(caret_.Line()); });
  Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    caret_.Focused();
    event.Skip();
  });
}

void LineList::TakeOver(const ListBox& list) {
  TakeOverLines(list.Items());
  TakeOverSelection(list);
}

void LineList::TakeOverLines(const std::vector<std::string>& lines) {
  const auto [oldFirst, newFirst] =
      std::mismatch(shown_.begin(), shown_.end(), lines.begin(), lines.end());
  if (oldFirst == shown_.end() && newFirst == lines.end()) return;
  const auto first = static_cast<std::size_t>(oldFirst - shown_.begin());
  const auto mostAtEnd = std::min(shown_.size(), lines.size()) - first;
  std::size_t atEnd = 0;
  while (atEnd < mostAtEnd &&
         shown_[shown_.size() - 1 - atEnd] == lines[lines.size() - 1 - atEnd]) {
    ++atEnd;
  }
  ReplaceBlock(lines, first, shown_.size() - atEnd, lines.size() - atEnd);
  shown_ = lines;
}

void LineList::ReplaceBlock(const std::vector<std::string>& lines, std::size_t first,
                            std::size_t oldEnd, std::size_t newEnd) {
  const auto bothEnd = std::min(oldEnd, newEnd);
  std::vector<std::size_t> changed;
  for (std::size_t i = first; i < bothEnd; ++i) {
    if (shown_[i] != lines[i]) changed.push_back(i);
  }
  if (std::ssize(changed) <= kMostSingleChanges) {
    for (const auto i : changed) SetString(static_cast<unsigned>(i), show_(lines[i]));
    first = bothEnd;
  }
  const wxWindowUpdateLocker calm(this);
  if (first == 0 && oldEnd == shown_.size()) {
    Clear();
  } else {
    for (auto i = oldEnd; i > first; --i) Delete(static_cast<unsigned>(i - 1));
  }
  if (first == newEnd) return;
  wxArrayString fresh;
  fresh.reserve(newEnd - first);
  for (auto i = first; i < newEnd; ++i) fresh.push_back(show_(lines[i]));
  Insert(fresh, static_cast<unsigned>(first));
}

void LineList::TakeOverSelection(const ListBox& list) {
  if (!list.SeveralSelections()) {
    if (GetSelection() != list.ListIndex()) SetSelection(list.ListIndex());
    return;
  }
  selected_.clear();
  for (int i = 0; i < list.Count(); ++i) selected_.push_back(list.Selected(i));
  ShowSelections();
}

void LineList::ShowSelections() {
  for (int i = 0; i < static_cast<int>(selected_.size()); ++i) {
    const bool selected = selected_[static_cast<std::size_t>(i)];
    if (IsSelected(i) == selected) continue;
    if (selected) {
      SetSelection(i);
    } else {
      Deselect(i);
    }
  }
}

void LineList::OnPress(wxMouseEvent& event) {
  pressed_ = HitTest(event.GetPosition());
  dragged_ = onDrag ? pressed_ : wxNOT_FOUND;
  reported_ = false;
  if (pressed_ != wxNOT_FOUND) caret_.Pressed(pressed_);
  event.Skip();
}

// While a line is dragged the toolkit sees no motion: it would select the lines on the way.
void LineList::OnMotion(wxMouseEvent& event) {
  if (dragged_ == wxNOT_FOUND || !event.LeftIsDown()) {
    dragged_ = wxNOT_FOUND;
    event.Skip();
    return;
  }
  const int target = TargetAt(event.GetPosition());
  if (target == dragged_) return;
  // What was pressed is a click no more.
  pressed_ = wxNOT_FOUND;
  dragged_ = onDrag(dragged_, target);
  if (dragged_ != wxNOT_FOUND) EnsureVisible(dragged_);
}

int LineList::TargetAt(const wxPoint& place) const {
  const int last = static_cast<int>(GetCount()) - 1;
  const auto room = GetClientSize();
  if (place.y < 0) return std::max(dragged_ - 1, 0);
  if (place.y >= room.y) return std::min(dragged_ + 1, last);
  const int under = HitTest(wxPoint(room.x / 2, place.y));
  return under == wxNOT_FOUND ? last : under;
}

// A list reports a click on its current line by no event of its own, or not on every system; what
// it does report comes before the call that is queued here.
void LineList::OnRelease(wxMouseEvent& event) {
  event.Skip();
  dragged_ = wxNOT_FOUND;
  CallAfter([this] {
    const auto pressed = std::exchange(pressed_, wxNOT_FOUND);
    if (!reported_) Pick(pressed);
  });
}

void LineList::OnSelect(wxCommandEvent& event) {
  reported_ = true;
  if (pressed_ != wxNOT_FOUND || !HasMultipleSelection()) {
    Pick(pressed_ != wxNOT_FOUND ? pressed_ : event.GetSelection());
    return;
  }
  caret_.Reported();
  ShowSelections();
}

// A key that only looks at a line must not change what the list says.
void LineList::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (!event.HasAnyModifiers() &&
      (key == WXK_SPACE || key == WXK_RETURN || key == WXK_NUMPAD_ENTER)) {
    Pick(caret_.Line());
    return;
  }
  if (!caret_.LetsPass(event)) return;
  event.Skip();
  CallAfter(&LineList::ShowSelections);
}

void LineList::Pick(int index) {
  if (index != wxNOT_FOUND && onPick) onPick(index);
}

}  // namespace morvelle
