#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>

#include "app/messages/text.h"
#include "view/line_list.h"
#include "view/main_window.h"
#include "view/marked_text.h"
#include "view/pictures.h"
#include "view/stack_sizer.h"
#include "view/text_line.h"
#include "view/wx_text.h"

/// Where the widgets stand. Within a frame widgets are made in the order in which the tabulator
/// visits them. Sizes are in pixels of 96 to the inch.
namespace morvelle {

namespace {

constexpr int kGap = 6;
constexpr int kWide = 12;
const wxSize kLeastRuleList(240, 120);
const wxSize kLeastActionList(240, 108);
const wxSize kLeastWordList(170, 120);
const wxSize kLeastMergeList(200, 48);
constexpr int kTextWidth = 190;
constexpr int kNoteWidth = 270;
constexpr int kLeftShare = 3;
constexpr int kRightShare = 6;

/// All buttons of a column get its width.
void AddColumn(wxSizer* column, wxWindow* widget, int gap) {
  column->Add(widget, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
}

/// A frame's caption with room between the frame and what it holds.
wxSizer* Framed(wxStaticBox* box, wxSizer* content, int gap) {
  auto* sizer = new wxStaticBoxSizer(box, wxVERTICAL);
  sizer->Add(content, wxSizerFlags(1).Expand().Border(wxALL, gap));
  return sizer;
}

}  // namespace

void MainWindow::Build() {
  auto* panel = new wxPanel(this);
  panel_ = panel;
  // The order of creation is the order of the tabulator.
  auto* order = BuildOrder(panel);
  auto* options = BuildOptions(panel);
  auto* editors = BuildEditors(panel);
  auto* actions = BuildActions(panel);
  auto* bottom = new StackSizer;
  bottom->Add(BuildFilters(panel));
  bottom->Add(BuildMerge(panel));
  StepAside();

  auto* left = new wxBoxSizer(wxVERTICAL);
  left->Add(order, wxSizerFlags(1).Expand());
  left->AddSpacer(FromDIP(kGap));
  left->Add(actions, wxSizerFlags().Expand());
  auto* right = new wxBoxSizer(wxVERTICAL);
  auto* top = new wxBoxSizer(wxHORIZONTAL);
  top->Add(options, wxSizerFlags(1).Expand());
  auto* picture = new wxStaticBitmap(panel, wxID_ANY, LetterAndSieve());
  picture->SetName("imgOE");
  top->Add(picture, wxSizerFlags().CenterVertical().Border(wxLEFT, FromDIP(kWide)));
  right->Add(top, wxSizerFlags().Expand());
  right->AddSpacer(FromDIP(kGap));
  right->Add(editors, wxSizerFlags(1).Expand());
  right->AddSpacer(FromDIP(kGap));
  right->Add(bottom, wxSizerFlags().Expand());

  auto* columns = new wxBoxSizer(wxHORIZONTAL);
  columns->Add(left, wxSizerFlags(kLeftShare).Expand().Border(wxALL, FromDIP(kGap)));
  columns->Add(right, wxSizerFlags(kRightShare).Expand().Border(wxALL & ~wxLEFT, FromDIP(kGap)));
  panel->SetSizer(columns);

  maker_.Make(this, form_.statBar);
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(panel, wxSizerFlags(1).Expand());
  SetSizer(whole);
  whole->SetSizeHints(this);
}

// The merge panel has no place of its own: the prefilters make room while it is shown.
void MainWindow::StepAside() {
  auto* filters = FindWindow(wxString(form_.fraPreFilters.Name()));
  auto update = [this, filters](const Aspects& changed) {
    if (!changed.Has(Aspect::Visible)) return;
    filters->Show(form_.fraPreFilters.Visible() && !form_.fraMerge.Visible());
  };
  mirror_.Follow(form_.fraPreFilters, update);
  mirror_.Follow(form_.fraMerge, update);
}

wxSizer* MainWindow::BuildOrder(wxWindow* parent) {
  auto* box = maker_.Make(parent, form_.fraOrderRules);
  auto marked = [rule = MarkedText([this](const wxString& text) { return GetTextExtent(text).x; })](
                    std::string_view line) { return rule.Show(line); };
  auto* list = maker_.Make(box, form_.lstRules, FromDIP(kLeastRuleList), marked);
  MoveRulesByKey(list);
  MoveRulesByDragging(*list);
  auto* up = maker_.MakePicture(box, form_.picUp, UpArrow(),
                                ToWx("Monter la règle (Alt+flèche vers le haut)"_cp));
  auto* down = maker_.MakePicture(box, form_.picDown, DownArrow(),
                                  ToWx("Descendre la règle (Alt+flèche vers le bas)"_cp));
  auto* cancel = maker_.Make(box, form_.cmdCancelOrder);

  const int gap = FromDIP(kGap);
  auto* arrows = new wxBoxSizer(wxVERTICAL);
  AddColumn(arrows, up, gap);
  AddColumn(arrows, down, gap);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(list, wxSizerFlags(1).Expand());
  row->Add(arrows, wxSizerFlags().Border(wxLEFT, gap));
  auto* content = new wxBoxSizer(wxVERTICAL);
  content->Add(row, wxSizerFlags(1).Expand());
  content->Add(cancel, wxSizerFlags().Right().Border(wxTOP, gap));
  return Framed(box, content, gap);
}

wxSizer* MainWindow::BuildActions(wxWindow* parent) {
  auto* box = maker_.Make(parent, form_.fraAct);
  auto* enabled = maker_.Make(box, form_.chkEnabled);
  auto* list = maker_.Make(box, form_.lstAct, FromDIP(kLeastActionList));
  auto* note = maker_.Make(box, form_.lblActNote);
  note->Wrap(FromDIP(kNoteWidth));

  const int gap = FromDIP(kGap);
  auto* content = new wxBoxSizer(wxVERTICAL);
  content->Add(enabled, wxSizerFlags().Expand());
  content->Add(list, wxSizerFlags(1).Expand().Border(wxTOP | wxBOTTOM, gap));
  content->Add(note, wxSizerFlags().Expand());
  return Framed(box, content, gap);
}

wxSizer* MainWindow::BuildOptions(wxWindow* parent) {
  auto* box = maker_.Make(parent, form_.fraOptions);
  const int gap = FromDIP(kGap);
  auto* content = new wxBoxSizer(wxHORIZONTAL);
  for (auto& option : form_.optCriteria) {
    const bool first = &option == &form_.optCriteria.front();
    content->Add(maker_.Make(box, option, first),
                 wxSizerFlags().CenterVertical().Border(wxRIGHT, FromDIP(kWide) * 2));
  }
  return Framed(box, content, gap);
}

wxSizer* MainWindow::BuildEditors(wxWindow* parent) {
  auto* editors = new StackSizer;
  for (std::size_t slot = 0; slot < form_.fraEdit.size(); ++slot) {
    editors->Add(BuildEditor(parent, slot));
  }
  return editors;
}

wxSizer* MainWindow::BuildEditor(wxWindow* parent, std::size_t slot) {
  auto* box = maker_.Make(parent, form_.fraEdit[slot]);
  auto* typing = BuildTyping(box, slot);
  auto* buttons = BuildWordButtons(box, slot);
  auto* words = BuildWords(box, slot);
  auto* saving = BuildSaving(box, slot);

  const int gap = FromDIP(kWide);
  auto* commands = new wxBoxSizer(wxVERTICAL);
  commands->Add(buttons, wxSizerFlags().Expand());
  commands->AddStretchSpacer();
  commands->Add(saving, wxSizerFlags().Expand());
  auto* content = new wxBoxSizer(wxHORIZONTAL);
  content->Add(typing, wxSizerFlags(2).Expand());
  content->Add(words, wxSizerFlags(3).Expand().Border(wxLEFT | wxRIGHT, gap));
  content->Add(commands, wxSizerFlags().Expand());
  return Framed(box, content, FromDIP(kGap));
}

wxSizer* MainWindow::BuildTyping(wxWindow* parent, std::size_t slot) {
  auto* label = maker_.Make(parent, form_.lblAbr[slot]);
  auto* word = maker_.Make(parent, form_.txtBox[slot]);
  word->SetToolTip(ToWx("Mot à ajouter à la liste"_cp));
  auto* copyLabel = slot < form_.lblCop.size() ? maker_.Make(parent, form_.lblCop[slot]) : nullptr;
  auto* copy = maker_.Make(parent, form_.txtCop[slot]);
  copy->SetToolTip(ToWx("Texte à recopier"_cp));

  const int gap = FromDIP(kGap);
  const auto flags = wxSizerFlags().Expand().Border(wxTOP, gap / 2);
  auto* column = new wxBoxSizer(wxVERTICAL);
  word->SetMinSize(wxSize(FromDIP(kTextWidth), -1));
  column->Add(label, wxSizerFlags().Expand());
  column->Add(word, flags);
  column->AddSpacer(2 * gap);
  // The place of the caption stays free in the slot that has none.
  if (copyLabel != nullptr) {
    column->Add(copyLabel, wxSizerFlags().Expand());
  } else {
    column->AddSpacer(label->GetBestSize().y);
  }
  column->Add(copy, flags);
  return column;
}

wxSizer* MainWindow::BuildWordButtons(wxWindow* parent, std::size_t slot) {
  auto* column = new wxBoxSizer(wxVERTICAL);
  // Level with the list, which has a caption above it.
  column->AddSpacer(GetCharHeight());
  for (auto* buttons : {&form_.cmdAdd, &form_.cmdDel, &form_.cmdChange, &form_.cmdRestore}) {
    AddColumn(column, maker_.Make(parent, (*buttons)[slot]), FromDIP(kGap));
  }
  return column;
}

wxSizer* MainWindow::BuildWords(wxWindow* parent, std::size_t slot) {
  auto* box = maker_.Make(parent, form_.fraWord[slot]);
  auto* list = maker_.Make(box, form_.lstBox[slot], FromDIP(kLeastWordList));
  DeleteByKey(list, form_.cmdDel[slot]);
  auto* count = maker_.Make(box, form_.lblNb[slot]);

  auto* content = new wxBoxSizer(wxVERTICAL);
  content->Add(list, wxSizerFlags(1).Expand());
  // Its room does not change with its text.
  count->SetMinSize(wxSize(-1, count->GetCharHeight()));
  content->Add(count, wxSizerFlags().Expand().Border(wxTOP, FromDIP(kGap)));
  return Framed(box, content, FromDIP(kGap));
}

wxSizer* MainWindow::BuildSaving(wxWindow* parent, std::size_t slot) {
  auto* box = maker_.Make(parent, form_.fraRule[slot]);
  const int gap = FromDIP(kGap);
  auto* content = new wxBoxSizer(wxVERTICAL);
  AddColumn(content, maker_.Make(box, form_.cmdRecord[slot]), gap);
  AddColumn(content, maker_.Make(box, form_.cmdCancelRule[slot]), 0);
  return Framed(box, content, gap);
}

wxSizer* MainWindow::BuildFilters(wxWindow* parent) {
  constexpr int kColumns = 3;
  auto* box = maker_.Make(parent, form_.fraPreFilters);
  auto* note = maker_.Make(box, form_.lblFiltersNote);
  note->Wrap(FromDIP(2 * kNoteWidth));

  const int gap = FromDIP(kGap);
  auto* boxes = new wxFlexGridSizer(kColumns, wxSize(FromDIP(kWide), gap));
  for (auto& filter : form_.chkFilter) boxes->Add(maker_.Make(box, filter));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(boxes, wxSizerFlags(1).CenterVertical());
  row->Add(maker_.Make(box, form_.cmdFiltres), wxSizerFlags().Bottom().Border(wxLEFT, gap));
  auto* content = new wxBoxSizer(wxVERTICAL);
  content->Add(note, wxSizerFlags().Expand().Border(wxBOTTOM, gap));
  content->Add(row, wxSizerFlags(1).Expand());
  return Framed(box, content, gap);
}

wxSizer* MainWindow::BuildMerge(wxWindow* parent) {
  auto* box = maker_.Make(parent, form_.fraMerge);
  auto* label = maker_.Make(box, form_.lblCrit);
  auto* criteria = maker_.Make(box, form_.lstCrit, FromDIP(kLeastMergeList));
  auto* file = maker_.Make(box, form_.txtMerge);
  file->SetMinSize(wxSize(FromDIP(kTextWidth), -1));
  file->SetToolTip(ToWx("Fichier de la règle à fusionner"_cp));
  auto* browse = maker_.Make(box, form_.cmdFileToMerge);

  const int gap = FromDIP(kGap);
  auto* left = new wxBoxSizer(wxVERTICAL);
  left->Add(label, wxSizerFlags().Expand());
  left->Add(criteria, wxSizerFlags(1).Expand().Border(wxTOP, gap / 2));
  auto* right = new wxBoxSizer(wxHORIZONTAL);
  right->Add(file, wxSizerFlags(1).Bottom());
  right->Add(browse, wxSizerFlags().Bottom().Border(wxLEFT, gap));
  auto* content = new wxBoxSizer(wxHORIZONTAL);
  content->Add(left, wxSizerFlags(1).Expand());
  content->Add(right, wxSizerFlags(1).Expand().Border(wxLEFT, FromDIP(kWide)));
  return Framed(box, content, gap);
}

}  // namespace morvelle
