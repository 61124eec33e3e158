#pragma once

#include <string_view>

#include "ports/registry_store.h"

/// What the program knows of the type codes of actions and criteria. Codes that are not here pass
/// through unchanged.
namespace morvelle {

inline constexpr std::string_view kActionMove = "6";
inline constexpr std::string_view kActionDeleteFromServer = "8";
inline constexpr std::string_view kActionNoDownload = "9";
inline constexpr std::string_view kActionStop = "12";

/// Whether "Logic" says how a criterion joins the others: "1" or, "2" and.
inline bool IsAndOr(std::string_view logic) { return logic == "1" || logic == "2"; }

/// How an entry of a type carries its argument.
enum class Argument {
  Unknown,  ///< Not a type that the program knows: left alone.
  None,     ///< The type has none; "Value" and "ValueType" do not belong there.
  Number,
  Text,
  Bytes,
};

Argument ArgumentOfAction(std::string_view type);
Argument ArgumentOfCriterion(std::string_view type);

/// Whether an argument of that kind is read and written.
inline bool CarriesValue(Argument argument) {
  return argument == Argument::Number || argument == Argument::Text || argument == Argument::Bytes;
}

/// Registry type of "Value", and the code that stands beside it as "ValueType".
ValueKind KindOf(Argument argument);
std::string_view ValueTypeOf(Argument argument);

}  // namespace morvelle
