#pragma once

#include <wx/listbox.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/controls.h"
#include "view/list_caret.h"

namespace morvelle {

/// The native list of a ListBox. It is never rebuilt: only the lines that differ are touched, so
/// that its place stays where the user left it and a list of 32,767 words takes a word at once.
class LineList final : public wxListBox {
 public:
  /// How a line looks; by default as it stands.
  using Show = std::function<wxString(std::string_view line)>;
  LineList(wxWindow* parent, bool severalSelections, const wxSize& leastSize, Show show = {});

  /// The user clicked a line, the current line included, or moved to it by a key. In a list of
  /// several selections a key moves the caret only: the Space bar and Enter are its click.
  std::function<void(int index)> onPick;

  /// The user drags the line `from` to where `to` is; returns where the line is then. A list
  /// without it is not dragged in.
  std::function<int(int from, int to)> onDrag;

  void TakeOver(const ListBox& list);

 private:
  // The toolkit would measure every line.
  [[nodiscard]] wxSize DoGetBestClientSize() const override { return leastSize_; }
  void TakeOverLines(const std::vector<std::string>& lines);
  void ReplaceBlock(const std::vector<std::string>& lines, std::size_t first, std::size_t oldEnd,
                    std::size_t newEnd);
  void TakeOverSelection(const ListBox& list);
  /// Shows the selections of the control, whatever a key made of them.
  void ShowSelections();
  void OnKey(wxKeyEvent& event);
  void Pick(int index);
  void OnPress(wxMouseEvent& event);
  void OnRelease(wxMouseEvent& event);
  void OnSelect(wxCommandEvent& event);
  void OnMotion(wxMouseEvent& event);
  /// Where a line dragged to that place belongs: beyond an edge it goes on by one line.
  [[nodiscard]] int TargetAt(const wxPoint& place) const;

  wxSize leastSize_;
  Show show_;
  /// The lines that the widget shows now.
  std::vector<std::string> shown_;
  /// Which lines the control has selected, where there may be several.
  std::vector<bool> selected_;
  int pressed_ = wxNOT_FOUND;
  int dragged_ = wxNOT_FOUND;
  bool reported_ = false;
  ListCaret caret_{*this};
};

}  // namespace morvelle
