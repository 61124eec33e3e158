#include "tests/ui/window.h"
#include "ui/menu_table.h"

namespace morvelle {
namespace {

constexpr const char* kNote =
    "La sélection de plusieurs actions n'est possible que dans Outlook Express";

/// Each menu with its entries, and behind ">" what hangs under an entry. A line that is set in
/// goes on with the one before.
constexpr const char* kMenus = R"(
mnufilesVLX Fichier | mnuRegContent Enregistrer le contenu de la règle en cours
    | mnuRegOrder Enregistrer l'ordre des règles | mnu0 -
    | mnuImpOneRule Importer une règle depuis un fichier
    | mnuImpAllRules Importer la totalité des règles depuis un fichier | mnu1 -
    | mnuExpOneRule Exporter une règle dans un fichier > mnuWhatRuleToFile
    | mnuExpAllRules Exporter la totalité des règles dans un fichier | mnu2 -
    | mnuImpSign Importer une signature | mnuExpSign Exporter les signatures | mnu10 -
    | mnuPrintOneRule Imprimer une règle > mnuWhatRuleToPrint
    | mnuPrintAllRules Imprimer la totalité des règles | mnu3 - | mnuQuit Quitter
mnuChange Modifications | mnuRename Renommer une règle > mnuRen | mnu11 -
    | mnuChangeContent Modifier le contenu d'une règle > mnuMod
    | mnuMergeContent Fusionner deux règles (choix de la règle de base) > mnuMerge | mnu4 -
    | mnuChangeOrder Modifier l'ordre des règles | mnuArrange Ordonner les priorités des règles
    | mnu5 - | mnuChangeBook Mettre à jour manuellement votre règle "Carnet d'adresses"
mnuAddDel Ajout ou suppression | mnuAdd Ajouter une règle
    | mnuDelete Supprimer une règle > mnuDel | mnu6 -
    | mnuAddBook Utiliser votre carnet d'adresses comme règle de liste blanche
mnuOptions Options | mnuCritères Les messages répondent-ils à la fois aux deux critères ?
    > mnuCriteriaYes oui, à tous les critères > mnuCriteriaNo non, à au moins un critère | mnu7 -
    | mnuContent(0) Le message contient-il au moins un des mots de la liste ?
    > mnuContentYes oui, il contient contient au moins un des mots
    > mnuContentNo non, il ne les contient pas
    | mnuContent(1) Le message contient-il tous les mots de la liste ?
    > mnuContentAll oui, il les contient tous > mnuContentOne non, il en contient au moins un
mnuTools Outils | mnuStore Dossier de stockage des messages
    | mnuWab Dossier du carnet d'adresses | mnufiles Dossier des fichiers d'VLX | mnu8 -
    | mnuAutoUpdateBook Mettre à jour votre règle "Carnet d'adresses" à chaque démarrage
    | mnuWhiteListK9 Mettre à jour la "whitelist" de K9 | mnuSilent Quitter sans confirmation
mnuAide ? | mnuHelp Aide sur Morvelle | mnu9 - | mnuPropos À propos de Morvelle
)";

/// A control and its caption; of a control array those of its elements, or the one of all.
const std::pair<const char*, std::vector<const char*>> kControls[] = {
    {"fraOptions", {"Contenu de la règle"}},
    {"optCriteria", {"Expéditeur", "Objet", "Corps", "Destinataires"}},
    {"lblAbr", {"De ...", "Objet", "Corps", "À ou CC ..."}},
    {"fraEdit",
     {"Contenu de la règle pour l'expéditeur", "Contenu de la règle pour l'objet",
      "Contenu de la règle pour le corps", "Contenu de la règle pour les destinataires"}},
    {"fraWord", {"Mots"}},
    {"lblCop", {"'recopier'"}},
    {"cmdAdd", {"Ajouter"}},
    {"cmdDel", {"Supprimer"}},
    {"cmdChange", {"Modifier"}},
    {"cmdRestore", {"Rétablir"}},
    {"fraRule", {"Règle"}},
    {"cmdRecord", {"Enregistrer"}},
    {"cmdCancelRule", {"Abandonner"}},
    {"fraMerge", {"Règle à fusionner avec la règle courante"}},
    {"lblCrit", {"Critères de base"}},
    {"cmdFileToMerge", {"Parcourir ..."}},
    {"fraPreFilters", {"Filtres types à inclure"}},
    {"lblFiltersNote", {"Les mots en double sont éliminés et la liste est classée"}},
    {"chkFilter",
     {"Caractères asiatiques", "Langue anglaise FAQ", "Pseudo-messages MS", "Caractère sexuel",
      "Personnalisé"}},
    {"cmdFiltres", {"Ajouter"}},
    {"fraAct", {"Action"}},
    {"chkEnabled", {"règle active"}},
    {"lblActNote", {kNote}},
    {"fraOrderRules", {"Ordre des règles"}},
    {"cmdCancelOrder", {"Annuler"}},
};

struct Captions : Window {
  Captions() { StartWithTwoRules(); }
};

TEST_F(Captions, OfTheMenus) {
  std::string shown = "\n";
  const Control* bar = nullptr;
  const Control* entry = nullptr;
  for (const auto& row : MenuTable()) {
    const Control& menu =
        row.perRule ? static_cast<Control&>(form->RuleMenu(row.name)) : form->Menu(row.name);
    const bool inBar = menu.Parent() == nullptr;
    const bool isEntry = !inBar && menu.Parent() == bar;
    EXPECT_TRUE(inBar || isEntry || menu.Parent() == entry) << row.name << " hangs elsewhere";
    shown += inBar ? (bar == nullptr ? "" : "\n") : isEntry ? " | " : " > ";
    shown += menu.Name() + (row.perRule ? "" : " ") + ToUtf8(menu.Caption());
    if (inBar) bar = &menu;
    if (inBar || isEntry) entry = &menu;
  }
  std::string given = kMenus;
  for (std::size_t at = 0; (at = given.find("\n    ")) != std::string::npos;) {
    given.replace(at, 5, " ");
  }
  EXPECT_EQ(shown + "\n", given);
}

TEST_F(Captions, OfTheControls) {
  for (const auto& [name, captions] : kControls) {
    if (const auto* control = form->Find(name)) {
      EXPECT_EQ(ToUtf8(control->Caption()), captions.front()) << name;
      continue;
    }
    std::size_t count = 0;
    while (const auto* element = form->Find(name + ("(" + std::to_string(count) + ")"))) {
      const auto* caption = captions.size() == 1 ? captions.front() : captions.at(count);
      EXPECT_EQ(ToUtf8(element->Caption()), caption) << name;
      ++count;
    }
    EXPECT_EQ(count, name == "lblCop"s ? 3U : name == "chkFilter"s ? 5U : 4U) << name;
  }
  const char* const actions[] = {"déplacer vers \"Éléments supprimés\"", "supprimer du serveur",
                                 "ne pas télécharger depuis le serveur",
                                 "ne plus traiter de règles"};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(ToUtf8(form->lstAct.Item(i)), actions[i]);
  EXPECT_EQ(form->lstAct.Count(), 4);
  EXPECT_EQ(ToUtf8(form->lstAct.ToolTip()), kNote);
}

}  // namespace
}  // namespace morvelle
