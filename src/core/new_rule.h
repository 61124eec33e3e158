#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "app/messages/text.h"
#include "core/deleted_items.h"
#include "core/registry_access.h"
#include "core/rule_tables.h"

/// What every command that makes rules needs: an id that no rule has, and a row to start from.
namespace morvelle {

/// Said where one rule more would pass kMaxRules, or where no id is left.
inline constexpr std::string_view kTooManyRules =
    "Vous avez atteint le nombre de règles autorisé (4 096)"_cp;

/// The ids that new rules can have: those of no row and of no subkey of the rules key, letter case
/// ignored. A key that no order lists is a rule's all the same: another one must not be written
/// over it.
class FreeRuleIds {
 public:
  FreeRuleIds(const RuleTables& tables, RegistryAccess& registry, const std::string& mailKey);

  /// `wanted` where it is free, else the first free id from 000 up; nothing when none is left. The
  /// id is taken from then on.
  std::optional<std::string> Take(const std::string& wanted = {});

 private:
  bool TakeIfFree(const std::string& id);

  /// In lower case.
  std::unordered_set<std::string> taken_;
  int next_ = 0;
};

/// The id that adding a rule asks for: 000 for the first rule, else the lowest from 001 up that no
/// row has. It may be taken all the same, by a key that no order lists or, at its last resort, by
/// a row.
std::string UsualRuleId(const RuleTables& tables);

/// What is wrong with a name that a rule is to have. The user's choices only: what is stored may be
/// named as it likes.
enum class NameFault { None, Characters, Reserved, Used };

/// The rule that holds the address book.
inline constexpr std::string_view kBookRule = "Carnet d'adresses";

/// The first fault of a name for a new rule, or for the rule of `ownRow`: characters that a file
/// name cannot have, a control character or blanks only, the address-book rule's name, another
/// rule's name. Letter case is ignored.
NameFault FaultOfName(const RuleTables& tables, std::string_view name, int ownRow = -1);

/// Adds a row at the end of the tables and of the order, which is made anew from the rows: an
/// active rule of version 0, without action or criterion, that the store does not know. Returns the
/// row; error 6 beyond what a row number holds.
std::int16_t AddRow(RuleTables& tables, const std::string& id, std::string_view name);

/// Gives a row the one action that a rule starts with: a move to "Éléments supprimés", or, where
/// that folder is not known, "stop processing rules".
void GiveDefaultAction(RuleTables& tables, int row, DeletedItemsSource& deletedItems);

}  // namespace morvelle
