#include <algorithm>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "disk/whole_file.h"
#include "files/file_names.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

namespace {

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

/// Empty flags are those of "contains at least one".
std::string_view MeaningOf(std::string_view flags) { return flags.empty() ? "0" : flags; }

/// The words of a criterion. An empty one is in every message: a damaged value must not bring it.
std::vector<std::string> WordsOf(const CriterionRecord& criterion) {
  auto words = DecodeWords(criterion.Value);
  words.erase(std::remove(words.begin(), words.end(), std::string()), words.end());
  return words;
}

}  // namespace

void frmMorvelle::mnuMerge_Click(int index) {
  if (bFilling || index >= tables_.RuleCount) return;
  Ending("mnuMerge_Click", [&] {
    const auto id = RuleOfEntry(index);
    if (!MayLeave()) return;
    editing_.modes.editingContent = true;
    ClearMod();
    OpenStoredRule(id);
    ShowMerge();
  });
}

void frmMorvelle::ShowMerge() {
  if (editing_.openRuleId.empty()) return;
  EnableMerge(true);
  lstCrit.Clear();
  for (std::size_t slot = 0; slot < kSlotCount; ++slot) {
    if (lstBox[slot].Count() == 0) continue;
    lstCrit.AddItem(optCriteria[slot].Caption() + " (" + WordCountText(lstBox[slot].Count()) + ")");
  }
}

void frmMorvelle::cmdFileToMerge_Click() {
  if (bFilling || editing_.openRuleId.empty()) return;
  Ending("cmdFileToMerge_Click", [&] {
    const auto file = Files().ToOpen("roe", state_.settings.UserFilesFolder);
    if (!file) return;
    const auto content = ReadWholeFile(*file);
    const auto read = content ? ReadRuleFile(*content, RuleFileKind::OneRule) : RuleFile{};
    if (read.verdict != RuleFileVerdict::Good) {
      messages_.FileDoesNotExist(*file);
      return;
    }
    TakeOverLists();
    if (!CanJoin(read.rules[0])) return;
    JoinRule(read.rules[0]);
    txtMerge.SetText(FileTitle(*file));
    editing_.modes.bMergeFile = true;
  });
}

bool frmMorvelle::CanJoin(const RuleBlock& other) {
  SlotWords words;
  std::array<std::string, kSlotCount> flags;
  std::array<bool, kSlotCount> filled{};
  for (int slot = 0; slot < kSlotCount; ++slot) {
    filled[Index(slot)] = tables_.WordCount[Index(slot)] > 0;
    flags[Index(slot)] = MeaningOf(SlotRecord(slot).Flags);
  }
  for (const auto& criterion : other.criteria) {
    const int slot = tables_.SlotOfType(criterion.Type);
    if (slot < 0) continue;
    const auto at = Index(slot);
    const auto list = WordsOf(criterion);
    if (list.empty()) continue;
    if (filled[at] && flags[at] != MeaningOf(criterion.Flags)) {
      messages_.Msg(
          std::string("Les mots de cette règle n'ont pas le même sens dans la liste "_cp) +
              optCriteria[at].Caption() +
              std::string(" (contient, ne contient pas, tous les mots) :\r"
                          "rien n'a été fusionné"_cp),
          kBoxExclamation);
      return false;
    }
    filled[at] = true;
    flags[at] = MeaningOf(criterion.Flags);
    words[at].insert(words[at].end(), list.begin(), list.end());
  }
  if (std::all_of(words.begin(), words.end(), [](const auto& list) { return list.empty(); })) {
    messages_.Msg("La règle de ce fichier n'a pas de liste de mots : rien n'a été fusionné"_cp,
                  kBoxExclamation);
    return false;
  }
  return HasRoomFor(words);
}

void frmMorvelle::JoinRule(const RuleBlock& other) {
  tables_.Touch(editing_.nCurRule);
  for (const auto& criterion : other.criteria) {
    const int slot = tables_.SlotOfType(criterion.Type);
    const auto list = WordsOf(criterion);
    if (slot < 0 || list.empty()) continue;
    auto& words = tables_.Words(slot);
    if (words.empty()) SlotRecord(slot).Flags = MeaningOf(criterion.Flags);
    words.insert(words.end(), list.begin(), list.end());
    words = SortedOnce(std::move(words));
    tables_.WordCount[Index(slot)] = Checked<std::int16_t>(words.size());
  }
  ShowAddedWords();
}

}  // namespace morvelle
