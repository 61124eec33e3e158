#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the rule model shows of its work. The window implements these.
namespace morvelle {

/// The nine panels of the status bar, numbered from 1.
class StatusPanels {
 public:
  virtual ~StatusPanels() = default;
  virtual void ShowPanel(int number, std::string_view text) = 0;
};

/// The list boxes of the four word-list slots and their count labels.
class WordListDisplay {
 public:
  virtual ~WordListDisplay() = default;
  [[nodiscard]] virtual const std::vector<std::string>& ListedWords(int slot) const = 0;
  virtual void ShowWordCount(int slot, std::string_view text) = 0;
};

/// The rule list and the menus that follow the rules.
class RuleDisplay : public StatusPanels {
 public:
  /// Word buttons off, copy boxes and rule list empty: a load begins.
  virtual void BeginLoad() = 0;
  /// Shows one rule in the rule list and in the six per-rule menus.
  virtual void LoadMnu(int index, std::string_view text, bool isNew) = 0;
  virtual void EnableMnu() = 0;
  /// Whether the rule of that row can be opened for its words.
  virtual void EnableRuleEditing(int index, bool editable) = 0;
  /// Whether any rule can.
  virtual void EnableContentMenus(bool enable) = 0;
  /// Importing is possible without any rule.
  virtual void EnableImports() = 0;
};

}  // namespace morvelle
