#pragma once

#include <wx/frame.h>

#include "ui/frm_morvelle.h"
#include "view/gestures.h"
#include "view/menu_bar.h"
#include "view/mirror.h"
#include "view/widget_maker.h"
#include "view/window_place.h"

class wxSizer;

namespace morvelle {

class LineList;

/// The main window on the screen: a widget for each control of the form, which bears the control's
/// name. It mirrors and relays; every decision is the form's.
class MainWindow final : public wxFrame {
 public:
  /// The form must outlive the window.
  explicit MainWindow(frmMorvelle& form, WindowPlace place = WindowPlace(WindowPlace::UsualFile()));

  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;
  ~MainWindow() override {
    form_.onClose = nullptr;
    form_.onAbout = nullptr;
  }

  /// Shows the window; as soon as it is on the screen the form's load event is raised.
  void Start();

  /// Brings the widgets up to date now. To be called before a box is shown, so that it does not
  /// stand over a window that shows an earlier state.
  void ShowChanges() { mirror_.Flush(); }

  [[nodiscard]] MenuBar& Menus() { return menus_; }

 private:
  // main_window_layout.cpp
  void Build();
  void StepAside();
  wxSizer* BuildOrder(wxWindow* parent);
  wxSizer* BuildActions(wxWindow* parent);
  wxSizer* BuildOptions(wxWindow* parent);
  wxSizer* BuildEditors(wxWindow* parent);
  wxSizer* BuildEditor(wxWindow* parent, std::size_t slot);
  wxSizer* BuildTyping(wxWindow* parent, std::size_t slot);
  wxSizer* BuildWordButtons(wxWindow* parent, std::size_t slot);
  wxSizer* BuildWords(wxWindow* parent, std::size_t slot);
  wxSizer* BuildSaving(wxWindow* parent, std::size_t slot);
  wxSizer* BuildFilters(wxWindow* parent);
  wxSizer* BuildMerge(wxWindow* parent);

  void MoveRulesByKey(wxWindow* list);
  void MoveRulesByDragging(LineList& list);
  void DeleteByKey(wxWindow* list, PushButton& button);
  void OnFirstPaint(wxPaintEvent& event);
  void Load();
  void OnClose(wxCloseEvent& event);
  void CloseAtOnce();

  frmMorvelle& form_;
  WindowPlace place_;
  Mirror mirror_;
  Gestures gestures_;
  WidgetMaker maker_;
  MenuBar menus_;
  wxWindow* panel_ = nullptr;
  wxPoint wantedPlace_;
  bool closing_ = false;
};

}  // namespace morvelle
