#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/new_rule.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

bool frmMorvelle::IsActive(int row) const { return ToLongOrZero(tables_.RuleAt(row).Enabled) == 1; }

std::string frmMorvelle::RuleText(int row) const {
  const auto& rule = tables_.RuleAt(row);
  return rule.Id + " " + rule.Name;
}

std::string frmMorvelle::RuleOfEntry(int index) {
  return IdOfLine(RuleMenu("mnuMod").CaptionOf(index));
}

void frmMorvelle::ShowPanel(int number, std::string_view text) { statBar.SetPanel(number, text); }

void frmMorvelle::BeginLoad() {
  EnableCmdADCR(false, false, false, false, -1);
  for (auto& box : txtCop) box.SetText("");
  const Filling filling(*this);
  lstRules.Clear();
}

void frmMorvelle::LoadMnu(int index, std::string_view text, bool isNew) {
  Continuing("LoadMnu", [&] {
    const Filling filling(*this);
    const bool active = IsActive(index);
    const auto caption = std::string(active ? "*" : " ") + "\t" + std::string(text);
    for (auto* menu : ruleMenus_) {
      if (index > 0 && isNew) menu->Load(index);
      menu->SetCaptionOf(index, caption);
    }
    const auto line = std::string(active ? "* " : "  ") + std::string(text);
    if (isNew) {
      lstRules.AddItem(line);
    } else {
      lstRules.SetItem(index, line);
    }
  });
}

void frmMorvelle::FillRulesList(bool swapEnds) {
  Continuing("FillRulesList", [&] {
    OrderEnable(!swapEnds);
    const Filling filling(*this);
    lstRules.Clear();
    for (int row = 0; row < tables_.RuleCount; ++row) {
      lstRules.AddItem(std::string(IsActive(row) ? "*" : " ") + "\t" + RuleText(row));
    }
    if (tables_.RuleCount == 0) return;
    if (!swapEnds) {
      lstRules.SetListIndex(editing_.nCurRule);
      return;
    }
    const int last = tables_.RuleCount - 1;
    lstRules.SetItem(0, (IsActive(last) ? "* " : "  ") + RuleText(last));
    lstRules.SetItem(last, (IsActive(0) ? "* " : "  ") + RuleText(0));
    lstRules.SetListIndex(0);
  });
}

void frmMorvelle::EnableMnu() {
  Continuing("EnableMnu", [&] {
    const Filling filling(*this);
    const bool hasRules = tables_.RuleCount >= 1;
    const bool hasTwo = tables_.RuleCount >= 2;
    EnableMnuFiles(hasRules);
    Menu("mnuAddDel").SetEnabled(true);
    Menu("mnuDelete").SetEnabled(hasRules);
    Menu("mnuRegOrder").SetEnabled(editing_.bOrderChanged && hasTwo);
    Menu("mnuChangeOrder").SetEnabled(hasTwo);
    Menu("mnuArrange").SetEnabled(hasTwo);
    for (auto* menu : ruleMenus_) {
      menu->Shorten(tables_.RuleCount);
      if (!hasRules) menu->SetCaptionOf(0, "");
    }
  });
}

void frmMorvelle::EnableMnuFiles(bool enable) {
  Continuing("EnableMnuFiles", [&] {
    for (const auto* name :
         {"mnuAddDel", "mnuChange", "mnuPrintOneRule", "mnuPrintAllRules", "mnuExpOneRule",
          "mnuExpAllRules", "mnuImpOneRule", "mnuImpAllRules"}) {
      Menu(name).SetEnabled(enable);
    }
  });
}

void frmMorvelle::EnableAll(bool keepContent) {
  Continuing("EnableAll", [&] {
    FiltersEnable(false);
    OrderEnable(false);
    EnableCmdADCR(false, false, false, false, -1);
    EnableCmdEA(false, false);
    RulesEnable(false);
    const Filling filling(*this);
    fraAct.SetEnabled(false);
    lstAct.SetEnabled(false);
    chkEnabled.SetEnabled(false);
    if (keepContent) return;
    for (std::size_t i = 0; i < kSlotCount; ++i) {
      lstBox[i].Clear();
      txtBox[i].SetText("");
      txtCop[i].SetText("");
      lblNb[i].SetCaption("");
    }
    SelectAction(-1);
    for (auto& filter : chkFilter) filter.SetChecked(false);
    chkEnabled.SetChecked(false);
    ForgetOpenRule();
  });
}

void frmMorvelle::EnableMerge(bool enable) {
  Continuing("EnableMerge", [&] {
    fraMerge.SetVisible(enable);
    txtMerge.SetText("");
    editing_.modes.bMergeFile = false;
    cmdFileToMerge.SetEnabled(enable);
  });
}

void frmMorvelle::EnableCmdADCR(bool add, bool del, bool change, bool restore, int index) {
  Continuing("EnableCmdADCR", [&] {
    const Filling filling(*this);
    for (int i = 0; i < kSlotCount; ++i) {
      if (index != -1 && index != i) continue;
      const auto at = static_cast<std::size_t>(i);
      cmdAdd[at].SetEnabled(add);
      cmdDel[at].SetEnabled(del);
      cmdChange[at].SetEnabled(change);
      cmdRestore[at].SetEnabled(restore);
    }
  });
}

void frmMorvelle::EnableCmdEA(bool record, bool cancel) {
  Continuing("EnableCmdEA", [&] {
    for (auto& button : cmdRecord) button.SetEnabled(record);
    for (auto& button : cmdCancelRule) button.SetEnabled(cancel);
  });
}

void frmMorvelle::FiltersEnable(bool enable) {
  Continuing("FiltersEnable", [&] {
    const Filling filling(*this);
    fraPreFilters.SetEnabled(enable);
    for (auto& filter : chkFilter) filter.SetEnabled(enable);
    if (!enable) cmdFiltres.SetEnabled(false);
  });
}

void frmMorvelle::RulesEnable(bool enable) {
  Continuing("RulesEnable", [&] {
    const Filling filling(*this);
    fraOptions.SetEnabled(enable);
    for (std::size_t i = 0; i < kSlotCount; ++i) {
      optCriteria[i].SetEnabled(enable);
      fraEdit[i].SetEnabled(enable);
      lstBox[i].SetEnabled(enable);
      txtBox[i].SetEnabled(enable);
      txtCop[i].SetEnabled(enable);
    }
  });
}

void frmMorvelle::OrderEnable(bool enable) {
  Continuing("OrderEnable", [&] {
    fraOrderRules.SetEnabled(enable);
    lstRules.SetEnabled(enable);
    cmdCancelOrder.SetEnabled(enable);
    picUp.SetEnabled(enable);
    picDown.SetEnabled(enable);
  });
}

void frmMorvelle::EnableRuleEditing(int index, bool editable) {
  RuleMenu("mnuMod").SetEnabledOf(index, editable);
  RuleMenu("mnuMerge").SetEnabledOf(index, editable);
}

void frmMorvelle::EnableContentMenus(bool enable) {
  Menu("mnuChangeContent").SetEnabled(enable);
  Menu("mnuMergeContent").SetEnabled(enable);
}

void frmMorvelle::EnableImports() {
  Menu("mnuImpOneRule").SetEnabled(true);
  Menu("mnuImpAllRules").SetEnabled(true);
}

bool frmMorvelle::HasBookRule() const {
  for (int row = 0; row < tables_.RuleCount; ++row) {
    if (EqualIgnoringCase(tables_.RuleAt(row).Name, kBookRule)) return true;
  }
  return false;
}

void frmMorvelle::ShowBookMenus() {
  const bool hasBook = HasBookRule();
  Menu("mnuChangeBook").SetEnabled(hasBook);
  Menu("mnuAutoUpdateBook").SetEnabled(hasBook);
  Menu("mnuAddBook").SetEnabled(!hasBook);
  // The deletion of the rule took the mark away, not the mode.
  if (hasBook) TickAutoUpdateBook(state_.settings.BookIsAutomatic());
}

}  // namespace morvelle
