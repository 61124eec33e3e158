#include "tests/support/temp_folder.h"
#include "tests/ui/window.h"
#include "ui/menu_table.h"

namespace morvelle {
namespace {

/// The window's states against every menu entry and every control that takes a gesture.
struct CommandState : Window {
  void StartWith(int count) {
    form.reset();
    state = {};
    std::vector<std::string> ids;
    for (int i = 0; i < count; ++i) {
      ids.push_back(ThreeDigitId(i));
      rules.PlainRule(ids.back(), "R" + ids.back(), "000").Words("000", 12, {"alpha", "beta"});
    }
    rules.Order(JoinIds(ids));
    if (count == 0) {
      dialogs.Expect("Il n'existe pas encore de règle de courrier"_cp);
      rules.Remove(kTestMailKey, "Order");
    }
    Start();
  }
  void Edit() {
    Open(0);
    Add(kBody, u"delta");
    Add(kSender, u"gamma");
  }
  void MoveLast() {
    form->lstRules.ClickItem(form->lstRules.Count() - 1);
    Click("picUp");
  }
  void ChangeOrder() {
    state.editing.bOrderChanged = true;
    form->EnableMnu();
  }
  void AddNew() {
    dialogs.ExpectText("Entrer le nom de la règle à créer"_cp, "Neuve");
    Choose("mnuAdd");
  }
};

TEST_F(CommandState, OfEveryMenuEntryAndControl) {
  struct State {
    const char* name;
    /// What F1 shows; nothing for the manual's first page.
    const char* page;
    std::function<void()> enter;
  };
  const State states[] = {
      {"no rule: idle", "", [this] { StartWith(0); }},
      {"no rule: both changed, a new one", "mots.htm", [this] { StartWith(0), AddNew(); }},
      {"one rule: idle", "", [this] { StartWith(1); }},
      {"one rule: editing", "mots.htm", [this] { StartWith(1), Open(0); }},
      {"one rule: edited", "mots.htm", [this] { StartWith(1), Edit(); }},
      {"one rule: both changed, a new one", "mots.htm", [this] { StartWith(1), AddNew(); }},
      {"many: idle", "", [this] { StartWith(3); }},
      {"many: editing", "mots.htm", [this] { StartWith(3), Open(0); }},
      {"many: edited", "mots.htm", [this] { StartWith(3), Edit(); }},
      {"many: a word selected", "mots.htm",
       [this] { StartWith(3), Open(0), ClickWord(kSender, 0); }},
      {"many: ordering", "ordre.htm", [this] { StartWith(3), Choose("mnuChangeOrder"); }},
      {"many: order changed", "ordre.htm",
       [this] { StartWith(3), Choose("mnuChangeOrder"), MoveLast(); }},
      {"many: arranged", "ordre.htm", [this] { StartWith(3), Choose("mnuArrange"); }},
      {"many: both changed, a new one", "mots.htm", [this] { StartWith(3), AddNew(); }},
      {"many: merging", "fusion.htm",
       [this] { StartWith(3), form->RuleMenu("mnuMerge").Choose(0); }},
      {"many: saved", "", [this] { StartWith(3), Edit(), Save(); }},
      {"many: put back", "mots.htm", [this] { StartWith(3), Edit(), Click("cmdRestore(0)"); }},
      {"many: left", "", [this] { StartWith(3), Edit(), Click("cmdCancelRule(0)"); }},
      {"one rule: its order changed", "", [this] { StartWith(1), ChangeOrder(); }},
      {"many: the book's rule, a new one", "carnet.htm",
       [this] { StartWith(3), Choose("mnuAddBook"); }},
  };
  std::map<std::string, std::string> columns;
  std::vector<std::string> names;
  const auto note = [&](const std::string& name, bool can) {
    if (columns.count(name) == 0) names.push_back(name);
    columns[name] += can ? 'x' : '.';
  };
  for (const auto& [name, page, enter] : states) {
    SCOPED_TRACE(name);
    enter();
    dialogs.ExpectAllShown();
    Choose("mnuHelp");
    EXPECT_EQ(shell.helpPages.back(), page);
    for (const auto& entry : MenuTable()) {
      if (entry.caption == "-") continue;
      const std::string menu(entry.name);
      if (entry.perRule) {
        auto& array = form->RuleMenu(menu);
        note(menu, array.Reachable() && array.EnabledOf(0));
      } else {
        note(menu, form->Menu(menu).Reachable());
      }
    }
    for (const auto* control :
         {"lstRules",         "picUp",          "picDown",      "cmdCancelOrder", "chkEnabled",
          "lstAct",           "optCriteria(0)", "lstBox(0)",    "txtBox(0)",      "txtCop(0)",
          "cmdAdd(0)",        "cmdDel(0)",      "cmdChange(0)", "cmdRestore(0)",  "cmdRecord(0)",
          "cmdCancelRule(0)", "chkFilter(0)",   "cmdFiltres",   "lstCrit",        "txtMerge",
          "cmdFileToMerge"}) {
      note(control, Can(control));
    }
  }
  std::map<std::string, std::string> alike;
  for (const auto& name : names) {
    auto& line = alike[columns[name]];
    const auto width = line.size() - (line.rfind('\n') + 1);
    line += (width + name.size() > 70 ? "\n  " : " ") + name;
  }
  std::string shown;
  for (const auto& [column, line] : alike) shown += column + line + "\n";
  // A column for each state, in the order of the list above, and who does something there.
  EXPECT_EQ(shown, ReadFile(MORVELLE_COMMAND_STATES));
}

}  // namespace
}  // namespace morvelle
