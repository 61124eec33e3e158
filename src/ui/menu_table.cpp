#include "ui/menu_table.h"

#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr bool kPerRule = true;
constexpr bool kCheckable = true;

constexpr MenuEntry kMenus[] = {
    {"mnufilesVLX", "Fichier", ""},
    {"mnuRegContent", "Enregistrer le contenu de la règle en cours"_cp, "mnufilesVLX", false, false,
     "Ctrl+S"},
    {"mnuRegOrder", "Enregistrer l'ordre des règles"_cp, "mnufilesVLX"},
    {"mnu0", "-", "mnufilesVLX"},
    {"mnuImpOneRule", "Importer une règle depuis un fichier"_cp, "mnufilesVLX"},
    {"mnuImpAllRules", "Importer la totalité des règles depuis un fichier"_cp, "mnufilesVLX"},
    {"mnu1", "-", "mnufilesVLX"},
    {"mnuExpOneRule", "Exporter une règle dans un fichier"_cp, "mnufilesVLX"},
    {"mnuWhatRuleToFile", "", "mnuExpOneRule", kPerRule},
    {"mnuExpAllRules", "Exporter la totalité des règles dans un fichier"_cp, "mnufilesVLX"},
    {"mnu2", "-", "mnufilesVLX"},
    {"mnuImpSign", "Importer une signature", "mnufilesVLX"},
    {"mnuExpSign", "Exporter les signatures", "mnufilesVLX"},
    {"mnu10", "-", "mnufilesVLX"},
    {"mnuPrintOneRule", "Imprimer une règle"_cp, "mnufilesVLX"},
    {"mnuWhatRuleToPrint", "", "mnuPrintOneRule", kPerRule},
    {"mnuPrintAllRules", "Imprimer la totalité des règles"_cp, "mnufilesVLX", false, false,
     "Ctrl+P"},
    {"mnu3", "-", "mnufilesVLX"},
    {"mnuQuit", "Quitter", "mnufilesVLX"},

    {"mnuChange", "Modifications", ""},
    {"mnuRename", "Renommer une règle"_cp, "mnuChange"},
    {"mnuRen", "", "mnuRename", kPerRule},
    {"mnu11", "-", "mnuChange"},
    {"mnuChangeContent", "Modifier le contenu d'une règle"_cp, "mnuChange"},
    {"mnuMod", "", "mnuChangeContent", kPerRule},
    {"mnuMergeContent", "Fusionner deux règles (choix de la règle de base)"_cp, "mnuChange"},
    {"mnuMerge", "", "mnuMergeContent", kPerRule},
    {"mnu4", "-", "mnuChange"},
    {"mnuChangeOrder", "Modifier l'ordre des règles"_cp, "mnuChange"},
    {"mnuArrange", "Ordonner les priorités des règles"_cp, "mnuChange"},
    {"mnu5", "-", "mnuChange"},
    {"mnuChangeBook", "Mettre à jour manuellement votre règle \"Carnet d'adresses\""_cp,
     "mnuChange"},

    {"mnuAddDel", "Ajout ou suppression", ""},
    {"mnuAdd", "Ajouter une règle"_cp, "mnuAddDel"},
    {"mnuDelete", "Supprimer une règle"_cp, "mnuAddDel"},
    {"mnuDel", "", "mnuDelete", kPerRule},
    {"mnu6", "-", "mnuAddDel"},
    {"mnuAddBook", "Utiliser votre carnet d'adresses comme règle de liste blanche"_cp, "mnuAddDel"},

    {"mnuOptions", "Options", ""},
    {"mnuCritères", "Les messages répondent-ils à la fois aux deux critères ?"_cp, "mnuOptions"},
    {"mnuCriteriaYes", "oui, à tous les critères"_cp, "mnuCritères", false, kCheckable},
    {"mnuCriteriaNo", "non, à au moins un critère"_cp, "mnuCritères", false, kCheckable},
    {"mnu7", "-", "mnuOptions"},
    {"mnuContent(0)", "Le message contient-il au moins un des mots de la liste ?", "mnuOptions"},
    {"mnuContentYes", "oui, il contient contient au moins un des mots", "mnuContent(0)", false,
     kCheckable},
    {"mnuContentNo", "non, il ne les contient pas", "mnuContent(0)", false, kCheckable},
    {"mnuContent(1)", "Le message contient-il tous les mots de la liste ?", "mnuOptions"},
    {"mnuContentAll", "oui, il les contient tous", "mnuContent(1)", false, kCheckable},
    {"mnuContentOne", "non, il en contient au moins un", "mnuContent(1)", false, kCheckable},

    {"mnuTools", "Outils", ""},
    {"mnuStore", "Dossier de stockage des messages", "mnuTools"},
    {"mnuWab", "Dossier du carnet d'adresses", "mnuTools"},
    {"mnufiles", "Dossier des fichiers d'VLX", "mnuTools"},
    {"mnu8", "-", "mnuTools"},
    {"mnuAutoUpdateBook", "Mettre à jour votre règle \"Carnet d'adresses\" à chaque démarrage"_cp,
     "mnuTools", false, kCheckable},
    {"mnuWhiteListK9", "Mettre à jour la \"whitelist\" de K9"_cp, "mnuTools"},
    {"mnuSilent", "Quitter sans confirmation", "mnuTools", false, kCheckable},

    {"mnuAide", "?", ""},
    {"mnuHelp", "Aide sur Morvelle", "mnuAide", false, false, "F1"},
    {"mnu9", "-", "mnuAide"},
    {"mnuPropos", "À propos de Morvelle"_cp, "mnuAide"},
};

}  // namespace

std::span<const MenuEntry> MenuTable() { return kMenus; }

}  // namespace morvelle
