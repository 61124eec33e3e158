#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

namespace {

constexpr std::string_view kRefusedCharacter =
    "Ce caractère ne peut être enregistré dans une règle d'Outlook Express"_cp;

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

}  // namespace

const std::vector<std::string>& frmMorvelle::ListedWords(int slot) const {
  return lstBox[Index(slot)].Items();
}

void frmMorvelle::ShowWordCount(int slot, std::string_view text) {
  lblNb[Index(slot)].SetCaption(text);
}

void frmMorvelle::FillWordsList(int index) {
  Continuing("FillWordsList", [&] {
    const Filling filling(*this);
    auto& list = lstBox[Index(index)];
    list.Clear();
    const auto count = static_cast<std::size_t>(tables_.WordCount[Index(index)]);
    const auto& words = tables_.Words(index);
    for (std::size_t k = 0; k < count && k < words.size(); ++k) list.AddItem(words[k]);
  });
}

void frmMorvelle::ChangeContent(bool changed) {
  Continuing("ChangeContent", [&] {
    editing_.bContentChanged = changed;
    Menu("mnuRegContent").SetEnabled(changed);
    Menu("mnuOptions").SetEnabled(changed);
  });
}

void frmMorvelle::CancelChange() {
  Continuing("CancelChange", [&] {
    editing_.bOrderChanged = false;
    ChangeContent(false);
    EnableAll(false);
    loader_.MailFromBdR();
    ShowBookMenus();
  });
}

void frmMorvelle::ShowCopy(int i) {
  const auto& text = txtBox[Index(i)].Text();
  txtCop[Index(i)].SetText(text.empty() ? std::string{} : "'" + text + "'");
}

void frmMorvelle::EnableRestore() {
  for (auto& button : cmdRestore) button.SetEnabled(nMode == 1);
}

void frmMorvelle::ContentEdited() {
  EnableRestore();
  EnableCmdEA(true, true);
  ChangeContent(true);
}

void frmMorvelle::CharacterRefused() {
  Continuing("txtBox_Change", [&] { messages_.Msg(kRefusedCharacter, kBoxExclamation); });
}

void frmMorvelle::txtBox_Change(int i) {
  if (bFilling) return;
  Continuing("txtBox_Change", [&] {
    const auto& text = txtBox[Index(i)].Text();
    ShowCopy(i);
    editing_.bWordReady = false;
    if (bFromList) return;
    if (text.empty()) {
      sWord.clear();
      lstBox[Index(i)].SetListIndex(-1);
      EnableCmdADCR(false, false, false, false, i);
      return;
    }
    sWord = text;
    editing_.bWordReady = true;
    EnableCmdADCR(true, false, lstBox[Index(i)].ListIndex() != -1, false, i);
    EnableRestore();
  });
}

void frmMorvelle::lstBox_Click(int i) {
  if (bFilling) return;
  Continuing("lstBox_Click", [&] {
    const auto& list = lstBox[Index(i)];
    // Deselecting is no click on a word.
    if (list.ListIndex() == -1) return;
    const bool before = bFromList;
    bFromList = true;
    txtBox[Index(i)].SetText(list.Item(list.ListIndex()));
    ShowCopy(i);
    bFromList = before;
    EnableCmdADCR(false, true, false, false, i);
  });
}

void frmMorvelle::txtBox_KeyDown(int i, int keyCode) {
  if (keyCode != kKeyReturn || !editing_.bWordReady) return;
  Continuing("txtBox_KeyDown", [&] { AddWord(i); });
}

void frmMorvelle::cmdAdd_Click(int i) {
  if (bFilling || !editing_.bWordReady) return;
  Continuing("cmdAdd_Click", [&] { AddWord(i); });
}

void frmMorvelle::CountWord(int i, int difference) {
  auto& count = tables_.WordCount[Index(i)];
  count = Checked<std::int16_t>(count + difference);
  lblNb[Index(i)].SetCaption(WordCountText(count));
}

void frmMorvelle::RecountWords() {
  for (int i = 0; i < kSlotCount; ++i) {
    const int listed = lstBox[Index(i)].Count();
    if (listed > 0) CountWord(i, listed - tables_.WordCount[Index(i)]);
  }
}

void frmMorvelle::AddWord(int i) {
  auto& box = txtBox[Index(i)];
  // A word typed in another list's box is not this list's.
  if (box.Text().empty()) return;
  sWord = box.Text();
  CountWord(i, 1);
  lstBox[Index(i)].AddItem(sWord);
  Menu("mnuContent(0)").SetEnabled(true);
  Menu("mnuContent(1)").SetEnabled(true);
  InitOptions();
  if (tables_.WordCount[Index(i)] == 1) ShowContentQuestions();
  box.SetText("");
  EnableCmdADCR(false, false, false, false, i);
  ContentEdited();
}

void frmMorvelle::cmdDel_Click(int i) {
  if (bFilling) return;
  Continuing("cmdDel_Click", [&] {
    auto& list = lstBox[Index(i)];
    if (list.ListIndex() == -1) return;
    list.RemoveItem(list.ListIndex());
    sWord.clear();
    txtBox[Index(i)].SetText("");
    editing_.bWordReady = false;
    list.SetListIndex(-1);
    CountWord(i, -1);
    InitOptions();
    if (tables_.WordCount[Index(i)] == 0) ShowContentQuestions();
    txtBox[Index(i)].SetFocus();
    EnableCmdADCR(false, false, false, false, i);
    ContentEdited();
  });
}

void frmMorvelle::cmdChange_Click(int i) {
  if (bFilling) return;
  Continuing("cmdChange_Click", [&] {
    auto& list = lstBox[Index(i)];
    auto& box = txtBox[Index(i)];
    if (list.ListIndex() == -1 || box.Text().empty()) return;
    list.SetItem(list.ListIndex(), box.Text());
    sWord.clear();
    box.SetText("");
    editing_.bWordReady = false;
    list.SetListIndex(-1);
    box.SetFocus();
    EnableCmdADCR(false, false, false, true, i);
    ContentEdited();
    for (auto& button : cmdRestore) button.SetEnabled(true);
  });
}

void frmMorvelle::cmdRestore_Click() {
  if (bFilling) return;
  Continuing("cmdRestore_Click", [&] {
    const auto id = editing_.openRuleId;
    if (id.empty()) return;
    if (editing_.openRuleIsNew) {
      RestoreNewRule();
      return;
    }
    const bool merging = fraMerge.Visible();
    ClearMod();
    OpenStoredRule(id);
    if (merging) ShowMerge();
  });
}

void frmMorvelle::cmdCancelContent_Click() {
  if (bFilling) return;
  Continuing("cmdCancelContent_Click", [&] {
    ClearMod();
    ShowBookMenus();
    OrderEnable(false);
    FiltersEnable(false);
    fraAct.SetEnabled(false);
    fraMerge.SetVisible(false);
  });
}

}  // namespace morvelle
