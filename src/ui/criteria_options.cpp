#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

namespace {

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

}  // namespace

CriterionRecord& frmMorvelle::SlotRecord(int slot) {
  return tables_.SlotOf(editing_.nCurRule, slot);
}

void frmMorvelle::ConnectOptions() {
  Menu("mnuCriteriaYes").onClick = [this] { mnuCriteriaYes_Click(); };
  Menu("mnuCriteriaNo").onClick = [this] { mnuCriteriaNo_Click(); };
  Menu("mnuContentYes").onClick = [this] { mnuContentYes_Click(); };
  Menu("mnuContentNo").onClick = [this] { mnuContentNo_Click(); };
  Menu("mnuContentAll").onClick = [this] { mnuContentAll_Click(); };
  Menu("mnuContentOne").onClick = [this] { mnuContentOne_Click(); };
}

void frmMorvelle::optCriteria_Click(int i) {
  if (bFilling) return;
  Ending("optCriteria_Click", [&] {
    for (int j = 0; j < kSlotCount; ++j) fraEdit[Index(j)].SetVisible(j == i);
    nCurList = static_cast<std::uint8_t>(i);
    // A word typed in this list's box before another list was shown still waits to be added.
    editing_.bWordReady = cmdAdd[Index(i)].Enabled();
    ShowContentQuestions();
  });
}

void frmMorvelle::ShowContentQuestions() {
  const bool hasWords = tables_.WordCount[nCurList] >= 1;
  Menu("mnuContent(0)").SetEnabled(hasWords);
  Menu("mnuContent(1)").SetEnabled(hasWords);
  if (!hasWords) return;
  const auto& flags = SlotRecord(nCurList).Flags;
  // Flags of no known meaning check neither answer, so that answering one question keeps them.
  const bool atLeastOne = flags.empty() || flags == "0";
  CheckPair(abContainsYesNo, {atLeastOne || flags == "2", flags == "1" || flags == "3"},
            "mnuContentYes", "mnuContentNo");
  CheckPair(abContainsAllOne, {flags == "2" || flags == "3", atLeastOne || flags == "1"},
            "mnuContentAll", "mnuContentOne");
}

void frmMorvelle::CheckPair(std::array<bool, 2>& pair, const std::array<bool, 2>& checks,
                            std::string_view firstMenu, std::string_view secondMenu) {
  const Filling filling(*this);
  pair = checks;
  Menu(firstMenu).SetChecked(pair[0]);
  Menu(secondMenu).SetChecked(pair[1]);
}

void frmMorvelle::SetLogic(std::string_view logic) {
  ContentEdited();
  for (int slot = 0; slot < kSlotCount; ++slot) SlotRecord(slot).Logic = logic;
  editing_.logicChosen = true;
  const Filling filling(*this);
  Menu("mnuCriteriaYes").SetChecked(logic == "2");
  Menu("mnuCriteriaNo").SetChecked(logic == "1");
}

void frmMorvelle::mnuCriteriaYes_Click() {
  if (bFilling) return;
  Ending("mnuCriteriaYes_Click", [&] { SetLogic("2"); });
}

void frmMorvelle::mnuCriteriaNo_Click() {
  if (bFilling) return;
  Ending("mnuCriteriaNo_Click", [&] { SetLogic("1"); });
}

void frmMorvelle::SetFlags(bool otherFirst, bool otherSecond, std::string_view whenFirst,
                           std::string_view whenSecond) {
  ContentEdited();
  auto& flags = SlotRecord(nCurList).Flags;
  if (otherSecond) {
    flags = whenSecond;
  } else if (otherFirst) {
    flags = whenFirst;
  }
}

void frmMorvelle::mnuContentYes_Click() {
  if (bFilling) return;
  Ending("mnuContentYes_Click", [&] {
    SetFlags(abContainsAllOne[0], abContainsAllOne[1], "2", "0");
    CheckPair(abContainsYesNo, {true, false}, "mnuContentYes", "mnuContentNo");
  });
}

void frmMorvelle::mnuContentNo_Click() {
  if (bFilling) return;
  Ending("mnuContentNo_Click", [&] {
    SetFlags(abContainsAllOne[0], abContainsAllOne[1], "3", "1");
    CheckPair(abContainsYesNo, {false, true}, "mnuContentYes", "mnuContentNo");
  });
}

void frmMorvelle::mnuContentAll_Click() {
  if (bFilling) return;
  Ending("mnuContentAll_Click", [&] {
    SetFlags(abContainsYesNo[0], abContainsYesNo[1], "2", "3");
    CheckPair(abContainsAllOne, {true, false}, "mnuContentAll", "mnuContentOne");
  });
}

void frmMorvelle::mnuContentOne_Click() {
  if (bFilling) return;
  Ending("mnuContentOne_Click", [&] {
    SetFlags(abContainsYesNo[0], abContainsYesNo[1], "0", "1");
    CheckPair(abContainsAllOne, {false, true}, "mnuContentAll", "mnuContentOne");
  });
}

void frmMorvelle::InitOptions() {
  Continuing("InitOptions", [&] {
    const Filling filling(*this);
    int listsWithWords = 0;
    for (const auto count : tables_.WordCount) listsWithWords += count >= 1 ? 1 : 0;
    Menu("mnuCritères").SetEnabled(listsWithWords >= 2);
    if (listsWithWords < 2) return;
    const auto& logic = SlotRecord(0).Logic;
    if (logic != "1" && logic != "2") return;
    Menu("mnuCriteriaYes").SetChecked(logic == "2");
    Menu("mnuCriteriaNo").SetChecked(logic == "1");
  });
}

}  // namespace morvelle
