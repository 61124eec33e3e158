#pragma once

#include <string>
#include <string_view>

#include "app/messages/text.h"

/// The lines that a rule file has beside its values. Only the markers are compared on reading.
namespace morvelle::labels {

inline constexpr std::string_view kMail = "MAIL";
inline constexpr std::string_view kOrder = "Order";
inline constexpr std::string_view kVersion = "Version";

inline constexpr std::string_view kRuleId = "ID de règle"_cp;
inline constexpr std::string_view kRuleName = "Nom de règle"_cp;
inline constexpr std::string_view kRuleVersion = "Version de règle"_cp;
inline constexpr std::string_view kRuleEnabled = "Validité de règle"_cp;

inline constexpr std::string_view kActions = "ACTIONS";
inline constexpr std::string_view kActionsOrder = "Ordre des actions";
inline constexpr std::string_view kActionId = "ID d'action";
inline constexpr std::string_view kActionFlags = "Flags d'action";
inline constexpr std::string_view kActionType = "Type d'action";
inline constexpr std::string_view kActionValueType = "Type de valeur d'action";
inline constexpr std::string_view kActionValue = "Valeur d'action";

inline constexpr std::string_view kCriteria = "CRITERIA";
inline constexpr std::string_view kCriteriaOrder = "Ordre des critères"_cp;
inline constexpr std::string_view kCriterionId = "ID de critère"_cp;
inline constexpr std::string_view kCriterionFlags = "Flags de critère"_cp;
inline constexpr std::string_view kCriterionLogic = "Logique de critère"_cp;
inline constexpr std::string_view kCriterionType = "Type de critère"_cp;
inline constexpr std::string_view kCriterionValueType = "Type de valeur de critère"_cp;
inline constexpr std::string_view kCriterionValue = "Valeur de critère"_cp;

/// End of the header of a file of all rules, of a rule, of a file of rules, of a word list.
inline constexpr std::string_view kEndOfTop = "EOT";
inline constexpr std::string_view kEndOfRule = "EOR";
inline constexpr std::string_view kEndOfMail = "EOM";
inline constexpr std::string_view kEndOfWords = "EOF";

/// Whether an entry of that type has value lines in a file.
bool HasActionValue(const std::string& type);
bool HasCriterionValue(const std::string& type);

}  // namespace morvelle::labels
