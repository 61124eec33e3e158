#include "core/entry_types.h"

#include <algorithm>
#include <array>

#include "core/rule_tables.h"

namespace morvelle {

namespace {

struct TypeArgument {
  std::string_view type;
  Argument argument;
};

constexpr std::array kActions = {
    TypeArgument{"1", Argument::Bytes}, TypeArgument{"2", Argument::Text},
    TypeArgument{"5", Argument::Text},  TypeArgument{"6", Argument::Bytes},
    TypeArgument{"7", Argument::None},  TypeArgument{"8", Argument::None},
    TypeArgument{"9", Argument::None},  TypeArgument{"10", Argument::Number},
    TypeArgument{"11", Argument::None}, TypeArgument{"12", Argument::None},
    TypeArgument{"13", Argument::None}, TypeArgument{"17", Argument::Number},
};

constexpr std::array kCriteria = {
    TypeArgument{"8", Argument::Bytes},  TypeArgument{"9", Argument::Bytes},
    TypeArgument{"10", Argument::Bytes}, TypeArgument{"11", Argument::Bytes},
    TypeArgument{"12", Argument::Bytes}, TypeArgument{"13", Argument::Number},
    TypeArgument{"14", Argument::None},  TypeArgument{"15", Argument::Number},
    TypeArgument{"19", Argument::Text},  TypeArgument{"20", Argument::None},
    TypeArgument{"22", Argument::Bytes}, TypeArgument{"31", Argument::Number},
};

template <std::size_t Count>
Argument Find(const std::array<TypeArgument, Count>& table, std::string_view type) {
  const auto* const found = std::find_if(table.begin(), table.end(),
                                         [&](const auto& entry) { return entry.type == type; });
  return found == table.end() ? Argument::Unknown : found->argument;
}

}  // namespace

Argument ArgumentOfAction(std::string_view type) { return Find(kActions, type); }

Argument ArgumentOfCriterion(std::string_view type) { return Find(kCriteria, type); }

ValueKind KindOf(Argument argument) {
  switch (argument) {
    case Argument::Number:
      return ValueKind::Dword;
    case Argument::Text:
      return ValueKind::String;
    case Argument::Bytes:
      return ValueKind::Binary;
    default:
      return ValueKind::None;
  }
}

std::string_view ValueTypeOf(Argument argument) {
  switch (argument) {
    case Argument::Number:
      return kValueTypeNumber;
    case Argument::Text:
      return kValueTypeText;
    case Argument::Bytes:
      return kValueTypeBytes;
    default:
      return {};
  }
}

}  // namespace morvelle
