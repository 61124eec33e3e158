#include "ui/frm_morvelle.h"

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "ui/menu_table.h"

namespace morvelle {

namespace {

struct SlotTexts {
  std::string_view option;
  std::string_view label;
  std::string_view frame;
};

constexpr std::array<SlotTexts, kSlotCount> kSlotTexts = {{
    {"Expéditeur"_cp, "De ...", "Contenu de la règle pour l'expéditeur"_cp},
    {"Objet", "Objet", "Contenu de la règle pour l'objet"_cp},
    {"Corps", "Corps", "Contenu de la règle pour le corps"_cp},
    {"Destinataires", "À ou CC ..."_cp, "Contenu de la règle pour les destinataires"_cp},
}};

constexpr std::array<std::string_view, 5> kFilterTexts = {
    "Caractères asiatiques"_cp, "Langue anglaise FAQ", "Pseudo-messages MS", "Caractère sexuel"_cp,
    "Personnalisé"_cp};

constexpr std::string_view kOneActionNote =
    "La sélection de plusieurs actions n'est possible que dans Outlook Express"_cp;

std::string Element(std::string_view name, int index) {
  return std::string(name) + "(" + std::to_string(index) + ")";
}

}  // namespace

frmMorvelle::frmMorvelle(Ports& ports, ProgramState& state)
    : form("frmMorvelle", nullptr, kAppTitle),
      fraOrderRules("fraOrderRules", &form, "Ordre des règles"_cp),
      lstRules("lstRules", &fraOrderRules),
      picUp("picUp", &fraOrderRules),
      picDown("picDown", &fraOrderRules),
      cmdCancelOrder("cmdCancelOrder", &fraOrderRules, "Annuler"),
      fraAct("fraAct", &form, "Action"),
      chkEnabled("chkEnabled", &fraAct, "règle active"_cp),
      lstAct("lstAct", &fraAct, true),
      lblActNote("lblActNote", &fraAct, kOneActionNote),
      fraOptions("fraOptions", &form, "Contenu de la règle"_cp),
      fraPreFilters("fraPreFilters", &form, "Filtres types à inclure"_cp),
      lblFiltersNote("lblFiltersNote", &fraPreFilters,
                     "Les mots en double sont éliminés et la liste est classée"_cp),
      cmdFiltres("cmdFiltres", &fraPreFilters, "Ajouter"),
      fraMerge("fraMerge", &form, "Règle à fusionner avec la règle courante"_cp),
      lblCrit("lblCrit", &fraMerge, "Critères de base"_cp),
      lstCrit("lstCrit", &fraMerge),
      txtMerge("txtMerge", &fraMerge),
      cmdFileToMerge("cmdFileToMerge", &fraMerge, "Parcourir ..."),
      statBar("statBar", &form),
      aboutBox(ports, state),
      ports_(ports),
      state_(state),
      tables_(state.tables),
      editing_(state.editing),
      program_(ports, state),
      messages_(program_.messages),
      wordLists_(messages_, tables_, *this),
      loader_(program_.registry, state.identity.MailKey, tables_, *this),
      writer_(program_.registry, state.identity.MailKey, tables_, editing_, wordLists_, *this,
              program_.deletedItems) {
  for (int slot = 0; slot < kSlotCount; ++slot) BuildSlot(slot);
  BuildRest();
  BuildMenus();
  RegisterControls();
  ShowInitialState();
  for (int slot = 0; slot < kSlotCount; ++slot) ConnectSlot(slot);
  ConnectRest();
  ConnectMenus();
}

void frmMorvelle::BuildSlot(int slot) {
  const auto& texts = kSlotTexts[static_cast<std::size_t>(slot)];
  optCriteria.emplace_back(Element("optCriteria", slot), &fraOptions, texts.option);
  auto& edit = fraEdit.emplace_back(Element("fraEdit", slot), &form, texts.frame);
  lblAbr.emplace_back(Element("lblAbr", slot), &edit, texts.label);
  txtBox.emplace_back(Element("txtBox", slot), &edit);
  if (slot < 3) lblCop.emplace_back(Element("lblCop", slot), &edit, "'recopier'");
  txtCop.emplace_back(Element("txtCop", slot), &edit).SetReadOnly(true);
  auto& word = fraWord.emplace_back(Element("fraWord", slot), &edit, "Mots");
  lstBox.emplace_back(Element("lstBox", slot), &word);
  lblNb.emplace_back(Element("lblNb", slot), &word, "100 mots");
  cmdAdd.emplace_back(Element("cmdAdd", slot), &edit, "Ajouter");
  cmdDel.emplace_back(Element("cmdDel", slot), &edit, "Supprimer");
  cmdChange.emplace_back(Element("cmdChange", slot), &edit, "Modifier");
  cmdRestore.emplace_back(Element("cmdRestore", slot), &edit, "Rétablir"_cp);
  auto& rule = fraRule.emplace_back(Element("fraRule", slot), &edit, "Règle"_cp);
  cmdRecord.emplace_back(Element("cmdRecord", slot), &rule, "Enregistrer");
  cmdCancelRule.emplace_back(Element("cmdCancelRule", slot), &rule, "Abandonner");
}

void frmMorvelle::BuildRest() {
  for (auto& option : optCriteria) {
    std::vector<OptionButton*> others;
    for (auto& other : optCriteria) {
      if (&other != &option) others.push_back(&other);
    }
    option.JoinGroup(std::move(others));
  }
  for (std::size_t i = 0; i < kFilterTexts.size(); ++i) {
    chkFilter.emplace_back(Element("chkFilter", static_cast<int>(i)), &fraPreFilters,
                           kFilterTexts[i]);
  }
  lstAct.SetToolTip(kOneActionNote);
  lstAct.AddItem(kMoveToDeletedItems);
  lstAct.AddItem("supprimer du serveur");
  lstAct.AddItem("ne pas télécharger depuis le serveur"_cp);
  lstAct.AddItem("ne plus traiter de règles"_cp);
  txtMerge.SetReadOnly(true);
}

void frmMorvelle::BuildMenus() {
  for (const auto& entry : MenuTable()) {
    const Control* parent = entry.parent.empty() ? nullptr : &Menu(entry.parent);
    if (entry.perRule) {
      ruleMenus_.push_back(&menuArrays_.emplace_back(std::string(entry.name), parent));
    } else {
      menus_[entry.name] = &menuItems_.emplace_back(std::string(entry.name), parent, entry.caption);
    }
  }
}

MenuItem& frmMorvelle::Menu(std::string_view name) {
  const auto found = menus_.find(name);
  if (found == menus_.end()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return *found->second;
}

MenuArray& frmMorvelle::RuleMenu(std::string_view name) {
  for (auto* menu : ruleMenus_) {
    if (menu->Name() == name) return *menu;
  }
  throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

void frmMorvelle::Register(Control& control) { controls_[control.Name()] = &control; }

void frmMorvelle::RegisterControls() {
  const auto registerAll = [this](auto& controls) {
    for (auto& control : controls) Register(control);
  };
  const auto registerEach = [this](auto&... controls) { (Register(controls), ...); };
  registerEach(form, fraOrderRules, lstRules, picUp, picDown, cmdCancelOrder, fraAct, chkEnabled,
               lstAct, lblActNote, fraOptions, fraPreFilters, lblFiltersNote, cmdFiltres, fraMerge,
               lblCrit, lstCrit, txtMerge, cmdFileToMerge, statBar);
  registerAll(optCriteria);
  registerAll(fraEdit);
  registerAll(lblAbr);
  registerAll(txtBox);
  registerAll(lblCop);
  registerAll(txtCop);
  registerAll(fraWord);
  registerAll(lstBox);
  registerAll(lblNb);
  registerAll(cmdAdd);
  registerAll(cmdDel);
  registerAll(cmdChange);
  registerAll(cmdRestore);
  registerAll(fraRule);
  registerAll(cmdRecord);
  registerAll(cmdCancelRule);
  registerAll(chkFilter);
}

Control* frmMorvelle::Find(std::string_view name) const {
  const auto found = controls_.find(name);
  return found == controls_.end() ? nullptr : found->second;
}

void frmMorvelle::ShowInitialState() {
  EnableAll(false);
  EnableMnu();
  EnableImports();
  EnableContentMenus(false);
  ChangeContent(false);
  ShowBookMenus();
  fraMerge.SetVisible(false);
  Menu("mnuWhiteListK9").SetVisible(false);
  optCriteria[0].Choose();
  for (std::size_t slot = 1; slot < fraEdit.size(); ++slot) fraEdit[slot].SetVisible(false);
}

void frmMorvelle::ConnectSlot(int slot) {
  const auto at = static_cast<std::size_t>(slot);
  optCriteria[at].onClick = [=, this] { optCriteria_Click(slot); };
  txtBox[at].onChange = [=, this] { txtBox_Change(slot); };
  txtBox[at].onKeyDown = [=, this](int keyCode) { txtBox_KeyDown(slot, keyCode); };
  txtBox[at].onRefused = [this] { CharacterRefused(); };
  lstBox[at].onClick = [=, this] { lstBox_Click(slot); };
  cmdAdd[at].onClick = [=, this] { cmdAdd_Click(slot); };
  cmdDel[at].onClick = [=, this] { cmdDel_Click(slot); };
  cmdChange[at].onClick = [=, this] { cmdChange_Click(slot); };
  cmdRestore[at].onClick = [this] { cmdRestore_Click(); };
  cmdRecord[at].onClick = [this] { mnuRegContent_Click(); };
  cmdCancelRule[at].onClick = [this] { cmdCancelContent_Click(); };
}

void frmMorvelle::ConnectRest() {
  chkEnabled.onClick = [this] { chkEnabled_Click(); };
  lstAct.onClick = [this] { lstAct_Click(); };
}

void frmMorvelle::ConnectMenus() {
  Menu("mnuRegContent").onClick = [this] { mnuRegContent_Click(); };
  Menu("mnuRegOrder").onClick = [this] { mnuRegOrder_Click(); };
  Menu("mnuQuit").onClick = [this] { mnuQuit_Click(); };
  RuleMenu("mnuMod").onClick = [this](int index) { mnuMod_Click(index); };
  ConnectOptions();
  ConnectLifecycle();
  ConnectOrder();
  ConnectFiles();
  ConnectTools();
}

void frmMorvelle::Form_Load() {
  StartUp(ports_, state_, program_).InitVLX(*this);
  Menu("mnuSilent").SetChecked(state_.settings.IsQuiet());
  form.SetCaption(std::string("Éditeur de règles Brisquet - "_cp) + state_.settings.VersionText);
}

void frmMorvelle::LoadRules() { loader_.MailFromBdR(); }

void frmMorvelle::TickAutoUpdateBook(bool ticked) { Menu("mnuAutoUpdateBook").SetChecked(ticked); }

void frmMorvelle::FinishStart() {
  ShowBookMenus();
  EnableImports();
  fraMerge.SetVisible(false);
  Menu("mnuWhiteListK9").SetVisible(false);
}

}  // namespace morvelle
