#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/rule_tables.h"

namespace morvelle {

/// The two kinds of rule files: `.roe` and `.moe`.
enum class RuleFileKind { OneRule, AllRules };

/// "roe" or "moe".
std::string ExtensionOf(RuleFileKind kind);

/// A rule as a file gives it: its actions and criteria numbered by their place, without an id of
/// its own.
///
/// A block with an action or criterion that could not be read when it was exported, and so has no
/// type, is damaged: without that entry the rule would act on other mail, or otherwise. It comes
/// without the entry and inactive; where no action is left it does nothing but stop.
struct RuleBlock {
  std::string Name;
  std::string Version;
  std::string Enabled;
  std::vector<ActionRecord> actions;      ///< kMaxEntries at most.
  std::vector<CriterionRecord> criteria;  ///< The same.
  bool damaged = false;
};

/// Puts a rule of a file in a row of the tables, under that id.
void FillRow(RuleTables& tables, int row, const std::string& id, RuleBlock block);

enum class RuleFileVerdict {
  Good,
  NotImportable,  ///< Something in a rule, or what leads to the rules, is missing or wrong.
  BadlySaved,     ///< A marker is missing or another line stands in its place.
};

struct RuleFile {
  RuleFileVerdict verdict = RuleFileVerdict::NotImportable;
  std::string version;
  std::vector<RuleBlock> rules;
};

/// Takes a file of rules apart. Labels are read over, whatever they say; markers must be there.
/// Whatever the text, nothing but the result changes.
RuleFile ReadRuleFile(std::string_view text, RuleFileKind kind);

/// Whether that text is the lines before the first rule of a file of all rules.
bool ReadsBackTop(std::string_view top);

/// What an import would make of that text, one rule block as a file of this kind has it, up to its
/// marker; nothing when it is none.
std::optional<RuleBlock> ReadBlock(std::string_view text, RuleFileKind kind);

}  // namespace morvelle
