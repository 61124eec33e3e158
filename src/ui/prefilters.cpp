#include <algorithm>
#include <system_error>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "disk/whole_file.h"
#include "files/file_names.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

namespace {

constexpr std::array<std::string_view, 4> kFixedFiles = {
    "Brisquet_asiatique.oe", "Brisquet_anglais.oe", "Brisquet_pseudos.oe", "Brisquet_sexe.oe"};
constexpr std::size_t kCustom = 4;
constexpr std::string_view kCustomProposal = "Brisquet_orvic";

std::size_t Index(int i) { return static_cast<std::size_t>(i); }

}  // namespace

void frmMorvelle::chkFilter_Click(int i) {
  if (bFilling) return;
  Ending("chkFilter_Click", [&] {
    const auto at = Index(i);
    // Boxes are cleared with the rule, too: what is seen counts.
    for (std::size_t k = 0; k < abFilter.size(); ++k) abFilter[k] = chkFilter[k].Checked();
    if (at == kCustom && abFilter[kCustom]) {
      sCustomFilter = kCustomProposal;
      const auto file = Files().ToOpen("oe", state_.settings.UserFilesFolder, sCustomFilter);
      if (file) {
        customFilterFile_ = *file;
        sCustomFilter = FileTitle(*file);
      } else {
        chkFilter[kCustom].SetChecked(false);
      }
    }
    const Filling filling(*this);
    cmdFiltres.SetEnabled(std::find(abFilter.begin(), abFilter.end(), true) != abFilter.end());
  });
}

std::filesystem::path frmMorvelle::PrefilterFile(std::size_t i) const {
  if (i == kCustom) return customFilterFile_;
  auto own = state_.settings.AppPath / kFixedFiles[i];
  // The user's own copy comes first; then what lies beside the program, as it is shipped or
  // installed.
  const auto program = ports_.environment.ProgramFile().parent_path();
  for (const auto& file :
       {own, program / kFixedFiles[i],
        program.parent_path() / "share" / "morvelle" / "prefiltres" / kFixedFiles[i]}) {
    if (std::error_code error; std::filesystem::exists(file, error)) return file;
  }
  return own;
}

SlotWords frmMorvelle::CheckedPrefilters() {
  SlotWords all;
  for (std::size_t i = 0; i < chkFilter.size(); ++i) {
    if (!chkFilter[i].Checked()) continue;
    FileFault fault;
    const auto file = PrefilterFile(i);
    const auto content = ReadWholeFile(file, kSmallFileLimit, &fault);
    if (TellTooLarge(messages_, file, fault)) continue;
    const auto words = content ? ReadPrefilter(*content, tables_.SlotType) : std::nullopt;
    if (!words) {
      messages_.FileDoesNotExist(i == kCustom ? ToPath(sCustomFilter) : ToPath(kFixedFiles[i]));
      continue;
    }
    for (std::size_t slot = 0; slot < all.size(); ++slot) {
      all[slot].insert(all[slot].end(), (*words)[slot].begin(), (*words)[slot].end());
    }
  }
  return all;
}

bool frmMorvelle::CanBeCounted(const SlotWords& words) {
  const bool can = std::all_of(words.begin(), words.end(),
                               [](const auto& list) { return list.size() <= kMaxWords; });
  if (!can) {
    messages_.Msg("Une liste de mots dépasserait 32 767 mots : rien n'a été ajouté"_cp,
                  kBoxExclamation);
  }
  return can;
}

void frmMorvelle::ShowAddedWords() {
  ContentEdited();
  for (int slot = 0; slot < kSlotCount; ++slot) {
    FillWordsList(slot);
    if (const auto count = tables_.WordCount[Index(slot)]; count > 0) {
      ShowWordCount(slot, WordCountText(count));
    }
    // The list is filled anew, with nothing selected. Only a word that was typed still waits.
    const bool typed = cmdAdd[Index(slot)].Enabled();
    if (!typed) {
      const Filling filling(*this);
      txtBox[Index(slot)].SetText("");
      ShowCopy(slot);
    }
    EnableCmdADCR(typed, false, false, true, slot);
  }
  InitMod(true);
  InitOptions();
}

void frmMorvelle::cmdFilters_Click() {
  if (bFilling || editing_.openRuleId.empty()) return;
  Ending("cmdFilters_Click", [&] {
    FiltersEnable(false);
    SlotWords words;
    {
      const Filling filling(*this);
      words = CheckedPrefilters();
    }
    const bool any =
        std::any_of(words.begin(), words.end(), [](const auto& list) { return !list.empty(); });
    // What the user typed is part of the rule.
    for (std::size_t slot = 0; slot < kSlotCount; ++slot) {
      const auto& listed = lstBox[slot].Items();
      words[slot].insert(words[slot].begin(), listed.begin(), listed.end());
    }
    // Without a word the rule is what it was.
    if (!any || !CanBeCounted(words)) {
      FiltersEnable(true);
      cmdFiltres.SetEnabled(true);
      return;
    }
    for (int slot = 0; slot < kSlotCount; ++slot) {
      auto& list = tables_.Words(slot);
      list = std::move(words[Index(slot)]);
      tables_.WordCount[Index(slot)] = Checked<std::int16_t>(list.size());
      if (!list.empty()) wordLists_.SortTable(list, slot);
    }
    ShowAddedWords();
  });
}

}  // namespace morvelle
