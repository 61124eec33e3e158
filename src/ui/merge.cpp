#include <algorithm>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/entry_types.h"
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

/// The and/or of a rule, as it is told on opening one; nothing where it has none.
std::string LogicOf(const RuleBlock& rule, const RuleTables& tables) {
  for (const bool wordLists : {true, false}) {
    for (const auto& criterion : rule.criteria) {
      const bool isList = tables.SlotOfType(criterion.Type) >= 0;
      if (isList == wordLists && IsAndOr(criterion.Logic)) {
        return criterion.Logic;
      }
    }
  }
  return {};
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
    FileFault fault;
    const auto content = ReadWholeFile(*file, kTextFileLimit, &fault);
    if (TellTooLarge(messages_, *file, fault)) return;
    const auto read = content ? ReadRuleFile(*content, RuleFileKind::OneRule) : RuleFile{};
    if (read.verdict != RuleFileVerdict::Good) {
      messages_.FileDoesNotExist(*file);
      return;
    }
    JoinedLists joined;
    if (!Join(read.rules[0], joined)) return;
    TakeJoined(read.rules[0], std::move(joined));
    txtMerge.SetText(FileTitle(*file));
    editing_.modes.bMergeFile = true;
  });
}

bool frmMorvelle::Join(const RuleBlock& other, JoinedLists& joined) {
  for (int slot = 0; slot < kSlotCount; ++slot) {
    joined.words[Index(slot)] = lstBox[Index(slot)].Items();
    joined.flags[Index(slot)] = SlotRecord(slot).Flags;
  }
  bool any = false;
  for (const auto& criterion : other.criteria) {
    const int slot = tables_.SlotOfType(criterion.Type);
    if (slot < 0) continue;
    auto& words = joined.words[Index(slot)];
    auto& flags = joined.flags[Index(slot)];
    const auto list = WordsOf(criterion);
    if (list.empty()) continue;
    if (!words.empty() && MeaningOf(flags) != MeaningOf(criterion.Flags)) {
      messages_.Msg(
          std::string("Les mots de cette règle n'ont pas le même sens dans la liste "_cp) +
              optCriteria[Index(slot)].Caption() +
              std::string(" (contient, ne contient pas, tous les mots) :\r"
                          "rien n'a été fusionné"_cp),
          kBoxExclamation);
      return false;
    }
    if (words.empty()) flags = MeaningOf(criterion.Flags);
    words.insert(words.end(), list.begin(), list.end());
    words = SortedOnce(std::move(words));
    any = true;
  }
  if (any) return CanBeCounted(joined.words);
  messages_.Msg("La règle de ce fichier n'a pas de liste de mots : rien n'a été fusionné"_cp,
                kBoxExclamation);
  return false;
}

void frmMorvelle::TakeJoined(const RuleBlock& other, JoinedLists joined) {
  tables_.Touch(editing_.nCurRule);
  const bool hasWords =
      std::any_of(lstBox.begin(), lstBox.end(), [](const auto& list) { return list.Count() > 0; });
  // A rule that asks for nothing yet has no and/or of its own, unless the user chose one.
  const bool takesLogic =
      !hasWords && tables_.Criteria[Index(editing_.nCurRule)] == 0 && !editing_.logicChosen;
  const auto logic = takesLogic ? LogicOf(other, tables_) : std::string{};
  for (int slot = 0; slot < kSlotCount; ++slot) {
    auto& words = joined.words[Index(slot)];
    SlotRecord(slot).Flags = joined.flags[Index(slot)];
    if (!logic.empty()) SlotRecord(slot).Logic = logic;
    tables_.WordCount[Index(slot)] = Checked<std::int16_t>(words.size());
    tables_.Words(slot) = std::move(words);
  }
  ShowAddedWords();
}

}  // namespace morvelle
