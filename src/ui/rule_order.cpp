#include "app/messages/errors.h"
#include "core/entry_types.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

namespace {

/// What an arrangement moves of a rule.
struct RuleLabel {
  std::string id;
  std::string name;
};

}  // namespace

void frmMorvelle::ConnectOrder() {
  Menu("mnuChangeOrder").onClick = [this] { mnuChangeOrder_Click(); };
  Menu("mnuArrange").onClick = [this] { mnuArrange_Click(); };
  picUp.onClick = [this] { picUp_Click(); };
  picDown.onClick = [this] { picDown_Click(); };
  cmdCancelOrder.onClick = [this] { cmdCancel_Click(); };
}

std::string frmMorvelle::CurrentRule() const {
  return IdOfLine(lstRules.Item(lstRules.ListIndex()));
}

void frmMorvelle::MakeCurrent(const std::string& id) {
  const Filling filling(*this);
  lstRules.SetListIndex(tables_.RowOfId(id));
}

void frmMorvelle::StartOrdering() {
  const auto current = CurrentRule();
  CloseRule();
  MakeCurrent(current);
  Menu("mnuOptions").SetEnabled(false);
  OrderEnable(true);
  FiltersEnable(false);
  RulesEnable(false);
  nMode = 0;
  lstRules.SetFocus();
}

void frmMorvelle::mnuChangeOrder_Click() {
  Ending("mnuChangeOrder_Click", [&] {
    if (!MayLeave()) return;
    StartOrdering();
    editing_.modes.ordering = true;
  });
}

void frmMorvelle::mnuArrange_Click() {
  Ending("mnuArrange_Click", [&] {
    if (!MayLeave()) return;
    StartOrdering();
    editing_.modes.arranging = true;
    editing_.bOrderChanged = true;
    const auto current = CurrentRule();
    ArrangeRules();
    const Filling filling(*this);
    lstRules.Clear();
    for (int row = 0; row < tables_.RuleCount; ++row) lstRules.AddItem(RuleText(row));
    MakeCurrent(current);
    Menu("mnuRegOrder").SetEnabled(true);
  });
}

void frmMorvelle::ArrangeRules() {
  std::vector<RuleLabel> stopping;
  std::vector<RuleLabel> deleting;
  std::vector<RuleLabel> notLoading;
  std::vector<RuleLabel> others;
  for (int row = 0; row < tables_.RuleCount; ++row) {
    const auto& rule = tables_.RuleAt(row);
    const RuleLabel label{rule.Id, rule.Name};
    bool stops = false;
    bool doesOther = false;
    for (std::size_t j = 0; j < tables_.Actions[static_cast<std::size_t>(row)]; ++j) {
      const auto& type = rule.ActionsParam[j].Type;
      if (type == kActionDeleteFromServer) {
        deleting.push_back(label);
      } else if (type == kActionNoDownload) {
        notLoading.push_back(label);
      } else if (type == kActionStop) {
        stops = true;
      } else {
        doesOther = true;
      }
    }
    if (stops) {
      stopping.push_back(label);
    } else if (doesOther) {
      others.push_back(label);
    }
  }
  int row = 0;
  for (auto* group : {&stopping, &deleting, &notLoading, &others}) {
    for (auto& label : *group) {
      // A rule of several groups has several rows; beyond the last one that is error 9.
      auto& rule = tables_.RuleAt(row);
      rule.Id = std::move(label.id);
      rule.Name = std::move(label.name);
      // What else the row holds is another rule's.
      tables_.Touch(row);
      ++row;
    }
  }
}

void frmMorvelle::OrderEdited() {
  editing_.bOrderChanged = true;
  const Filling filling(*this);
  Menu("mnuRegOrder").SetEnabled(true);
}

void frmMorvelle::SwapLines(int upper) {
  const Filling filling(*this);
  const auto line = lstRules.Item(upper);
  lstRules.SetItem(upper, lstRules.Item(upper + 1));
  lstRules.SetItem(upper + 1, line);
}

void frmMorvelle::picUp_Click() {
  Ending("picUp_Click", [&] {
    const int line = lstRules.ListIndex();
    if (line < 1) return;
    OrderEdited();
    if (nMode == 0) SwapLines(line - 1);
    lstRules.SetListIndex(line - 1);
    if (nMode != 0) editing_.nCurRule = static_cast<std::int16_t>(line - 1);
  });
}

void frmMorvelle::picDown_Click() {
  if (bFilling) return;
  Ending("picDown_Click", [&] {
    const int line = lstRules.ListIndex();
    if (line == -1 || line > tables_.RuleCount - 2) return;
    OrderEdited();
    SwapLines(line);
    lstRules.SetListIndex(line + 1);
  });
}

void frmMorvelle::cmdCancel_Click() {
  if (bFilling) return;
  Ending("cmdCancel_Click", [&] {
    const auto current = CurrentRule();
    editing_.bOrderChanged = false;
    {
      const Filling filling(*this);
      Menu("mnuRegOrder").SetEnabled(false);
    }
    if (editing_.modes.arranging) {
      // The rows carry the arranged rules: only the store knows the order from before.
      editing_.modes.arranging = false;
      loader_.MailFromBdR();
    } else {
      for (int row = 0; row < tables_.RuleCount; ++row) LoadMnu(row, RuleText(row), false);
    }
    MakeCurrent(current);
  });
}

}  // namespace morvelle
