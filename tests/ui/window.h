#pragma once

#include <gmock/gmock.h>

#include "samples/dbx_builder.h"
#include "tests/support/fake_machine.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

using std::string_literals::operator""s;

inline const std::string kStoreMark = "stored01";
inline const std::string kDeletedItems = kStoreMark + "5\0\0\0"s;
inline constexpr std::string_view kUnreadableFolders = "Erreur de lecture du fichier Folders.dbx";

// Boxes of several commands.
inline constexpr auto kLoseContent =
    "Vous avez modifié la règle en cours\rÊtes-vous d'accord pour annuler ces modifications ?"_cp;
inline constexpr auto kLoseOrder =
    "Vous avez modifié l'ordre des règles\rÊtes-vous d'accord pour annuler ces modifications ?"_cp;
inline constexpr auto kLoseBoth =
    "Vous avez modifié la règle en cours et l'ordre des règles\r"
    "Êtes-vous d'accord pour annuler ces modifications ?"_cp;
inline constexpr auto kSaveBoth =
    "Pour cette fonction,\rle contenu de la règle en cours et l'ordre des règles doivent être "
    "enregistrés simultanément\rÊtes-vous d'accord pour enregistrer ces modifications ?"_cp;
inline constexpr auto kNotStored = "Les modifications n'ont pas pu être enregistrées."_cp;

// Slots.
inline constexpr int kSender = 0;
inline constexpr int kSubject = 1;
inline constexpr int kBody = 2;
inline constexpr int kRecipients = 3;

/// The program with its window, on a registry and a disk of the test's own, driven by gestures.
/// `rules` makes the rule set; then Start.
struct Window : ScriptedMachine {
  Window() {
    std::filesystem::create_directories(environment.userFolder);
    WriteFile(FoldersFile(), DbxBuilder(kStoreMark)
                                 .Add({'5', 0, std::string("Éléments supprimés"_cp), "bin.dbx"})
                                 .Add({'7', 0, "Spam", ""})
                                 .Add({'9', 0, "Famille", "Famille.dbx"})
                                 .Build()
                                 .bytes);
    // A book that can be read: the start of the program then shows no box.
    rules.PutText(std::string(kTestBookKey), "", "C:\\Carnet\\moi.wab");
    addressBook.addresses = {"a@b.fr"};
  }

  [[nodiscard]] std::filesystem::path FoldersFile() const {
    return environment.HostPath("C:\\Courrier\\Folders.dbx");
  }

  void Start() {
    form = std::make_unique<frmMorvelle>(ports, state);
    form->onClose = [this] { closed = true; };
    form->Form_Load();
  }
  /// Two rules: 000 "Publicités" with words for the sender, 001 "Famille", not active, with words
  /// for subject and body.
  void StartWithTwoRules() {
    rules.Order("000 001");
    rules.PlainRule("000", "Publicités"_cp, "000").Words("000", 12, {"alpha", "beta"});
    rules.Rule("001", "Famille", 0).Actions("000").Action("000", 12).Criteria("000 001");
    rules.Words("000", 8, {"anniversaire"}, 1, 2).Words("001", 9, {"bises", "papa"}, 3, 2);
    Start();
  }

  // --- Gestures ----------------------------------------------------------------------------------
  void Choose(std::string_view menu) { form->Menu(menu).Choose(); }
  void Open(int row) { form->RuleMenu("mnuMod").Choose(row); }
  void Show(int slot) { form->optCriteria[Index(slot)].Click(); }
  void Type(int slot, std::u16string_view text) { form->txtBox[Index(slot)].Type(text); }
  void Press(int slot, int keyCode) { form->txtBox[Index(slot)].KeyDown(keyCode); }
  void ClickWord(int slot, int index) { form->lstBox[Index(slot)].ClickItem(index); }
  void Click(std::string_view button) {
    auto* found = dynamic_cast<PushButton*>(form->Find(button));
    ASSERT_NE(found, nullptr) << button;
    found->Click();
  }
  /// Shows the list and adds the word with its button.
  void Add(int slot, std::u16string_view word) {
    Show(slot);
    Type(slot, word);
    form->cmdAdd[Index(slot)].Click();
  }
  /// "Enregistrer" beside the list on show.
  void Save() {
    for (std::size_t slot = 0; slot < kSlotCount; ++slot) {
      if (form->cmdRecord[slot].Reachable()) return form->cmdRecord[slot].Click();
    }
    ADD_FAILURE() << "the rule cannot be saved";
  }

  // --- What can be seen --------------------------------------------------------------------------
  [[nodiscard]] const std::vector<std::string>& Words(int slot) const {
    return form->lstBox[Index(slot)].Items();
  }
  [[nodiscard]] const std::string& Count(int slot) const {
    return form->lblNb[Index(slot)].Caption();
  }
  [[nodiscard]] const std::string& Typed(int slot) const {
    return form->txtBox[Index(slot)].Text();
  }
  [[nodiscard]] bool Checked(std::string_view menu) const { return form->Menu(menu).Checked(); }
  /// Whether a gesture on that menu entry or control would do anything.
  [[nodiscard]] bool Can(std::string_view name) const {
    if (const auto* control = form->Find(name)) return control->Reachable();
    return form->Menu(name).Reachable();
  }
  /// Those of the names that Can.
  [[nodiscard]] std::string Which(const std::vector<std::string>& names) const {
    std::string can;
    for (const auto& name : names) {
      if (Can(name)) can += (can.empty() ? "" : " ") + name;
    }
    return can;
  }
  /// The lines of lstAct that are shown selected.
  [[nodiscard]] std::vector<int> SelectedActions() const {
    std::vector<int> selected;
    for (int i = 0; i < form->lstAct.Count(); ++i) {
      if (form->lstAct.Selected(i)) selected.push_back(i);
    }
    return selected;
  }
  /// All that is stored below the rules key.
  [[nodiscard]] std::string Stored() { return DumpOf(store); }
  [[nodiscard]] std::string Stored(const std::string& below) {
    return DumpOf(store, kTestMailKey + below);
  }

  static std::size_t Index(int i) { return static_cast<std::size_t>(i); }

  FakeRegistry store;
  Ports ports = On(store);
  ProgramState state;
  RuleSet rules{store};
  std::unique_ptr<frmMorvelle> form;
  bool closed = false;
};

}  // namespace morvelle
