// What is written on the window, held against files that say it once: captions/menus.txt, where an
// entry stands further in than what it hangs under, and captions/controls.txt, a line for each
// control or control array.
#include <sstream>

#include "tests/support/temp_folder.h"
#include "tests/ui/window.h"
#include "ui/menu_table.h"

namespace morvelle {
namespace {

struct Captions : Window {
  Captions() { StartWithTwoRules(); }

  /// The caption, or those of an array's elements, or the lines of the list.
  std::string ShownOn(const std::string& name) {
    if (name == "lstAct") return Joined(form->lstAct.Items());
    if (const auto* control = form->Find(name)) return ToUtf8(control->Caption());
    std::vector<std::string> captions;
    while (const auto* one = form->Find(name + "(" + std::to_string(captions.size()) + ")")) {
      captions.push_back(one->Caption());
    }
    return Joined(captions);
  }
  static std::string Joined(const std::vector<std::string>& captions) {
    std::string all;
    for (const auto& caption : captions) all += (all.empty() ? "" : " | ") + ToUtf8(caption);
    return all;
  }
};

TEST_F(Captions, OfTheMenus) {
  std::string shown;
  for (const auto& row : MenuTable()) {
    const Control& menu =
        row.perRule ? static_cast<Control&>(form->RuleMenu(row.name)) : form->Menu(row.name);
    for (const auto* above = menu.Parent(); above != nullptr; above = above->Parent())
      shown += "  ";
    shown += menu.Name() + (row.perRule ? "" : " " + ToUtf8(menu.Caption())) + "\n";
  }
  EXPECT_EQ(shown, ReadFile(MORVELLE_CAPTIONS "/menus.txt"));
}

TEST_F(Captions, OfTheControls) {
  std::istringstream lines(ReadFile(MORVELLE_CAPTIONS "/controls.txt"));
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    const auto name = line.substr(0, line.find(':'));
    EXPECT_EQ(name + ": " + ShownOn(name), line);
  }
  EXPECT_EQ(count, 26);
  EXPECT_EQ(form->lstAct.ToolTip(), form->lblActNote.Caption());
}

}  // namespace
}  // namespace morvelle
