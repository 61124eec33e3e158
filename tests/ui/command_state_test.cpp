#include <algorithm>
#include <functional>
#include <map>
#include <utility>

#include "tests/ui/window.h"
#include "ui/menu_table.h"

namespace morvelle {
namespace {

/// A column for each state, in the order of the test's own table.
constexpr const char* kTable = R"(
mnufilesVLX        x x x x x x x x x x x x x x x x
mnuRegContent      . x . . x x . . x . . . . x . .
mnuRegOrder        . x . . . x . . . . . x x x . .
mnuImpOneRule      x . x . . . x . . . x x x . . x
mnuImpAllRules     x . x . . . x . . . x x x . . x
mnuExpOneRule      . . x . . . x . . . x x x . . x
mnuWhatRuleToFile  . . x . . . x . . . x x x . . x
mnuExpAllRules     . . x . . . x . . . x x x . . x
mnuImpSign         x x x x x x x x x x x x x x x x
mnuExpSign         x x x x x x x x x x x x x x x x
mnuPrintOneRule    . . x . . . x . . . x x x . . x
mnuWhatRuleToPrint . . x . . . x . . . x x x . . x
mnuPrintAllRules   . . x . . . x . . . x x x . . x
mnuQuit            x x x x x x x x x x x x x x x x
mnuChange          . . x . . . x . . . x x x . . x
mnuRename          . . x . . . x . . . x x x . . x
mnuRen             . . x . . . x . . . x x x . . x
mnuChangeContent   . . x . . . x . . . x x x . . x
mnuMod             . . x . . . x . . . x x x . . x
mnuMergeContent    . . x . . . x . . . x x x . . x
mnuMerge           . . x . . . x . . . x x x . . x
mnuChangeOrder     . . . . . . x . . . x x x . . x
mnuArrange         . . . . . . x . . . x x x . . x
mnuChangeBook      . . . . . . . . . . . . . . . x
mnuAddDel          x . x . . . x . . . x x x . . x
mnuAdd             x . x . . . x . . . x x x . . x
mnuDelete          . . x . . . x . . . x x x . . x
mnuDel             . . x . . . x . . . x x x . . x
mnuAddBook         x . x . . . x . . . x x x . . .
mnuOptions         . x . x x x . x x x . . . x x .
mnuCritères       . . . . x . . . x . . . . . . .
mnuCriteriaYes     . . . . x . . . x . . . . . . .
mnuCriteriaNo      . . . . x . . . x . . . . . . .
mnuContent(0)      . . . x x . . x x x . . . . x .
mnuContentYes      . . . x x . . x x x . . . . x .
mnuContentNo       . . . x x . . x x x . . . . x .
mnuContent(1)      . . . x x . . x x x . . . . x .
mnuContentAll      . . . x x . . x x x . . . . x .
mnuContentOne      . . . x x . . x x x . . . . x .
mnuTools           x x x x x x x x x x x x x x x x
mnuStore           x x x x x x x x x x x x x x x x
mnuWab             x x x x x x x x x x x x x x x x
mnufiles           x x x x x x x x x x x x x x x x
mnuAutoUpdateBook  . . . . . . . . . . . . . . . x
mnuWhiteListK9     . . . . . . . . . . . . . . . .
mnuSilent          x x x x x x x x x x x x x x x x
mnuAide            x x x x x x x x x x x x x x x x
mnuHelp            x x x x x x x x x x x x x x x x
mnuPropos          x x x x x x x x x x x x x x x x
lstRules           . . . . . . . . . . x x x . . .
picUp              . . . . . . . . . . x x x . . .
picDown            . . . . . . . . . . x x x . . .
cmdCancelOrder     . . . . . . . . . . x x x . . .
chkEnabled         . x . x x x . x x x . . . x x .
lstAct             . x . x x x . x x x . . . x x .
optCriteria(0)     . x . x x x . x x x . . . x x .
lstBox(0)          . x . x x x . x x x . . . x x .
txtBox(0)          . x . x x x . x x x . . . x x .
txtCop(0)          . x . x x x . x x x . . . x x .
cmdAdd(0)          . . . . . . . . . . . . . . . .
cmdDel(0)          . . . . . . . . . x . . . . . .
cmdChange(0)       . . . . . . . . . . . . . . . .
cmdRestore(0)      . . . . x . . . x . . . . . . .
cmdRecord(0)       . x . . x x . . x . . . . x . .
cmdCancelRule(0)   . x . x x x . x x x . . . x x .
chkFilter(0)       . x . x x x . x x x . . . x x .
cmdFiltres         . . . . . . . . . . . . . . . .
lstCrit            . . . . . . . . . . . . . . x .
txtMerge           . . . . . . . . . . . . . . x .
cmdFileToMerge     . . . . . . . . . . . . . . x .
)";

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
  void AddNew() {
    dialogs.ExpectText("Entrer le nom de la règle à créer"_cp, "Neuve");
    Choose("mnuAdd");
  }
};

TEST_F(CommandState, OfEveryMenuEntryAndControl) {
  const std::pair<const char*, std::function<void()>> states[] = {
      {"no rule: idle", [this] { StartWith(0); }},
      {"no rule: both changed, a new one", [this] { StartWith(0), AddNew(); }},
      {"one rule: idle", [this] { StartWith(1); }},
      {"one rule: editing", [this] { StartWith(1), Open(0); }},
      {"one rule: edited", [this] { StartWith(1), Edit(); }},
      {"one rule: both changed, a new one", [this] { StartWith(1), AddNew(); }},
      {"many: idle", [this] { StartWith(3); }},
      {"many: editing", [this] { StartWith(3), Open(0); }},
      {"many: edited", [this] { StartWith(3), Edit(); }},
      {"many: a word selected", [this] { StartWith(3), Open(0), ClickWord(kSender, 0); }},
      {"many: ordering", [this] { StartWith(3), Choose("mnuChangeOrder"); }},
      {"many: order changed", [this] { StartWith(3), Choose("mnuChangeOrder"), MoveLast(); }},
      {"many: arranged", [this] { StartWith(3), Choose("mnuArrange"); }},
      {"many: both changed, a new one", [this] { StartWith(3), AddNew(); }},
      {"many: merging", [this] { StartWith(3), Open(0), form->EnableMerge(true); }},
      {"many: saved", [this] { StartWith(3), Edit(), Save(); }},
  };
  std::map<std::string, std::string> columns;
  std::vector<std::string> names;
  const auto note = [&](const std::string& name, bool can) {
    if (columns.count(name) == 0) names.push_back(name);
    columns[name] += can ? " x" : " .";
  };
  for (const auto& [name, enter] : states) {
    SCOPED_TRACE(name);
    enter();
    dialogs.ExpectAllShown();
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
  std::string shown = "\n";
  for (const auto& name : names) {
    auto padded = name;
    padded.resize(std::max<std::size_t>(padded.size(), 18), ' ');
    shown += padded + columns[name] + "\n";
  }
  EXPECT_EQ(shown, kTable);
}

}  // namespace
}  // namespace morvelle
