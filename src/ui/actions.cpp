#include <algorithm>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/deleted_items.h"
#include "core/entry_types.h"
#include "dbx/hex.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

namespace {

/// The action types of lstAct's entries, in their order.
constexpr std::array kActionTypes = {kActionMove, kActionDeleteFromServer, kActionNoDownload,
                                     kActionStop};
constexpr int kMoveItem = 0;
constexpr int kStopItem = 3;

/// The value of a move: the mark of the store that the folder is in, then the folder's id.
constexpr std::size_t kStoreMark = 8;
constexpr std::size_t kFolderIdLength = 3;

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

}  // namespace

void frmMorvelle::mnuMod_Click(int index) {
  if (bFilling || index >= tables_.RuleCount) return;
  Ending("mnuMod_Click", [&] {
    // The entry is turned into its rule before anything reloads.
    const auto id = RuleOfEntry(index);
    if (!MayLeave()) return;
    editing_.modes.editingContent = true;
    fraMerge.SetVisible(false);
    ClearMod();
    OpenStoredRule(id);
  });
}

void frmMorvelle::OpenStoredRule(const std::string& id) {
  const int row = tables_.RowOfId(id);
  // Another program may have deleted the rule, or changed it beyond what the window can hold.
  if (row < 0 || !RuleMenu("mnuMod").EnabledOf(row)) {
    EnableAll(false);
    ShowBookMenus();
    return;
  }
  OpenRule(row, false);
}

void frmMorvelle::OpenRule(int row, bool modified) {
  OrderEnable(false);
  nMode = 1;
  editing_.nCurRule = static_cast<std::int16_t>(row);
  editing_.openRuleId = tables_.RuleAt(row).Id;
  editing_.logicChosen = false;
  lstRules.SetListIndex(row);
  EnableCmdEA(modified, true);
  EnableMnuFiles(false);
  InitMod(modified);
  Menu("mnuOptions").SetEnabled(true);
  txtBox[nCurList].SetFocus();
}

void frmMorvelle::FillSlots() {
  const auto& slots = tables_.FirstCriteria[Index(editing_.nCurRule)];
  const auto criteriaKey =
      state_.identity.MailKey + tables_.RuleAt(editing_.nCurRule).Id + "\\Criteria\\";
  for (int slot = 0; slot < kSlotCount; ++slot) {
    const auto& id = slots[Index(slot)].Id;
    if (!id.empty()) FillListBox(slot, criteriaKey + id);
  }
}

void frmMorvelle::TakeOverLogic() {
  tables_.Touch(editing_.nCurRule);
  const auto& rule = tables_.RuleAt(editing_.nCurRule);
  auto& slots = tables_.FirstCriteria[Index(editing_.nCurRule)];
  std::string own;
  for (const auto& slot : slots) {
    if (own.empty() && IsAndOr(slot.Logic)) own = slot.Logic;
  }
  for (const auto& criterion : rule.CriteriaParam) {
    if (own.empty() && IsAndOr(criterion.Logic)) own = criterion.Logic;
  }
  if (own.empty()) own = "1";
  for (auto& slot : slots) {
    if (!IsAndOr(slot.Logic)) slot.Logic = own;
  }
}

void frmMorvelle::InitMod(bool changed) {
  Ending("InitMod", [&] {
    const auto& rule = tables_.RuleAt(editing_.nCurRule);
    RulesEnable(true);
    if (!changed) FillSlots();
    TakeOverLogic();
    ShowFirstSlot();
    FiltersEnable(true);
    {
      const Filling filling(*this);
      for (auto& filter : chkFilter) filter.SetChecked(false);
      cmdFiltres.SetEnabled(false);
      fraAct.SetEnabled(true);
      lstAct.SetEnabled(true);
      chkEnabled.SetEnabled(true);
      statBar.SetPanel(9, rule.Name);
      chkEnabled.SetChecked(ToLongOrZero(rule.Enabled) != 0);
      ShowActions();
    }
    ChangeContent(changed);
    if (changed) {
      const Filling filling(*this);
      editing_.bOrderChanged = true;
      Menu("mnuRegOrder").SetEnabled(true);
    }
    InitOptions();
    ShowContentQuestions();
  });
}

void frmMorvelle::ShowFirstSlot() {
  int slot = nCurList;
  for (int s = kSlotCount - 1; s >= 0; --s) {
    if (tables_.WordCount[Index(s)] > 0) slot = s;
  }
  optCriteria[Index(slot)].Choose();
}

void frmMorvelle::ShowActions() {
  const Filling filling(*this);
  const auto& rule = tables_.RuleAt(editing_.nCurRule);
  // The bound of the passes is one byte wide: a rule without an action has none.
  const auto last = Checked<std::uint8_t>(tables_.Actions[Index(editing_.nCurRule)] - 1);
  SelectedActionCount = 0;
  SelectAction(-1);
  for (int j = 0; j <= last; ++j) {
    if (rule.ActionsParam[Index(j)].Type != kActionStop) continue;
    lstAct.SetSelected(kStopItem, true);
    ++SelectedActionCount;
  }
  std::string move;
  for (int j = 0; j <= last; ++j) {
    const auto& action = rule.ActionsParam[Index(j)];
    for (int item = kMoveItem; item < kStopItem; ++item) {
      if (action.Type != kActionTypes[Index(item)]) continue;
      lstAct.SetSelected(item, true);
      ++SelectedActionCount;
      if (item == kMoveItem) move = MoveText(action.Value, move);
    }
  }
  if (!move.empty()) lstAct.SetItem(kMoveItem, move);
}

const FolderRec* frmMorvelle::FolderOf(std::string_view value) {
  const auto store = program_.deletedItems.DeletedItems().substr(0, kStoreMark);
  // The folder store names folders by three bytes; a fourth one above zero is another folder's.
  constexpr std::size_t kIdEnd = kStoreMark + kFolderIdLength;
  if (!value.starts_with(store) || value.size() < kIdEnd) return nullptr;
  if (value.size() > kIdEnd && value[kIdEnd] != '\0') return nullptr;
  const auto id = StrToHex(value.substr(kStoreMark, kFolderIdLength));
  for (const auto& folder : program_.deletedItems.Folders().Folders) {
    if (EqualIgnoringCase(folder.Id, id)) return &folder;
  }
  return nullptr;
}

std::string frmMorvelle::MoveText(std::string_view value, const std::string& former) {
  // Where the list of folders cannot be read, nothing is known of any.
  if (program_.deletedItems.DeletedItems().size() < kStoreMark) return former;
  if (const auto* folder = FolderOf(value)) {
    // A folder that was never used carries its final zero in its name.
    return std::string(kMoveTo) + folder->Name.substr(0, folder->Name.find('\0')) + "\"";
  }
  return former.empty() ? std::string(kMoveToUnknownFolder) : former;
}

void frmMorvelle::SelectAction(int item) {
  const Filling filling(*this);
  for (int i = 0; i < lstAct.Count(); ++i) lstAct.SetSelected(i, i == item);
  lstAct.SetListIndex(item);
}

void frmMorvelle::ForgetOpenRule() {
  nMode = 0;
  sWord.clear();
  editing_.bWordReady = false;
  editing_.openRuleId.clear();
  editing_.openRuleIsNew = false;
  editing_.logicChosen = false;
  tables_.WordCount.fill(0);
  if (fraMerge.Visible()) EnableMerge(false);
  lstCrit.Clear();
}

void frmMorvelle::ClearEditor() {
  const Filling filling(*this);
  for (auto& filter : chkFilter) filter.SetChecked(false);
  chkEnabled.SetChecked(false);
  chkEnabled.SetEnabled(false);
  SelectAction(-1);
  lstAct.SetItem(kMoveItem, kMoveToDeletedItems);
  for (std::size_t s = 0; s < kSlotCount; ++s) {
    lstBox[s].Clear();
    txtBox[s].SetText("");
    txtCop[s].SetText("");
    lblNb[s].SetCaption("");
  }
  ForgetOpenRule();
  statBar.SetPanel(9, "");
}

void frmMorvelle::ClearMod() {
  Ending("ClearMod", [&] {
    const Filling filling(*this);
    ClearEditor();
    if (tables_.RuleCount > 0 && lstRules.ListIndex() >= 1) lstRules.SetListIndex(0);
    Menu("mnuRegOrder").SetEnabled(false);
    EnableCmdEA(false, false);
    Menu("mnuChange").SetEnabled(true);
    Menu("mnuAddDel").SetEnabled(true);
    editing_.bOrderChanged = false;
    ChangeContent(false);
    loader_.MailFromBdR();
    RulesEnable(false);
    if (tables_.RuleCount > 0) {
      EnableMnuFiles(true);
    } else {
      EnableMnu();
      EnableImports();
    }
  });
}

void frmMorvelle::CloseRule() {
  fraMerge.SetVisible(false);
  // Without an open rule the tables say what the store says: a damaged one is not reported again.
  if (!editing_.openRuleId.empty()) {
    ClearMod();
    ShowBookMenus();
  }
  EnableAll(false);
}

void frmMorvelle::FillListBox(int slot, const std::string& criteriaKey) {
  Ending("FillListBox", [&] {
    RegistryValue value;
    {
      const OpenedKey key(program_.registry, criteriaKey, false);
      if (key.IsOpen()) value = program_.registry.Peek(key.Handle(), "Value");
    }
    const auto* words = std::get_if<std::string>(&value);
    SlotRecord(slot).unreadable = words == nullptr;
    wordLists_.DecodeValue(words != nullptr ? std::string_view(*words) : std::string_view{}, slot);
    FillWordsList(slot);
    EnableCmdADCR(false, false, false, false, slot);
    ShowCopy(slot);
  });
}

void frmMorvelle::chkEnabled_Click() {
  if (bFilling || editing_.nCurRule < 0) return;
  Ending("chkEnabled_Click", [&] {
    tables_.Touch(editing_.nCurRule);
    auto& rule = tables_.RuleAt(editing_.nCurRule);
    rule.Enabled = ToLongOrZero(rule.Enabled) != 0 ? "0" : "1";
    LoadMnu(editing_.nCurRule, RuleText(editing_.nCurRule), false);
    ContentEdited();
  });
}

void frmMorvelle::lstAct_Click() {
  if (bFilling) return;
  Ending("lstAct_Click", [&] {
    const int item = lstAct.ListIndex();
    if (item == -1) return;
    const auto& present = tables_.RuleAt(editing_.nCurRule).ActionsParam[0];
    auto value = present.Value;
    if (item == kMoveItem) {
      const auto& deletedItems = program_.deletedItems.DeletedItems();
      if (!IsDeletedItems(deletedItems)) {
        messages_.Msg(kFoldersUnreadable, kBoxStop);
        ShowActions();
        return;
      }
      value = deletedItems + '\0';
    }
    const bool alone = !OtherActionSelected(item);
    SelectAction(item);
    const auto type = kActionTypes[Index(item)];
    if (alone && present.Type == type && present.Value == value) return;
    tables_.Touch(editing_.nCurRule);
    auto& action = tables_.RuleAt(editing_.nCurRule).ActionsParam[0];
    action.Type = type;
    action.Value = value;
    ContentEdited();
  });
}

bool frmMorvelle::OtherActionSelected(int item) const {
  for (int i = 0; i < lstAct.Count(); ++i) {
    if (i != item && lstAct.Selected(i)) return true;
  }
  return false;
}

}  // namespace morvelle
