#include "core/entry_types.h"

#include <array>
#include <cstddef>
#include <initializer_list>

#include "core/rule_tables.h"

namespace morvelle {

namespace {

/// Type codes go up to here; there are gaps.
constexpr std::size_t kTypes = 32;
using Arguments = std::array<Argument, kTypes>;

constexpr void Put(Arguments& table, Argument argument, std::initializer_list<std::size_t> types) {
  for (const auto type : types) table[type] = argument;
}

constexpr Arguments kActions = [] {
  Arguments table{};
  table.fill(Argument::Unknown);
  Put(table, Argument::Bytes, {1, 6});
  Put(table, Argument::Text, {2, 5});
  Put(table, Argument::Number, {10, 17});
  Put(table, Argument::None, {7, 8, 9, 11, 12, 13});
  return table;
}();

constexpr Arguments kCriteria = [] {
  Arguments table{};
  table.fill(Argument::Unknown);
  Put(table, Argument::Bytes, {8, 9, 10, 11, 12, 22});
  Put(table, Argument::Number, {13, 15, 31});
  Put(table, Argument::Text, {19});
  Put(table, Argument::None, {14, 20});
  return table;
}();

/// Only a number's own digits name a type: " 8" and "08" are none.
Argument Find(const Arguments& table, std::string_view type) {
  if (type.empty() || type.size() > 2 || type.front() == '0') return Argument::Unknown;
  std::size_t number = 0;
  for (const char digit : type) {
    if (digit < '0' || digit > '9') return Argument::Unknown;
    number = number * 10 + static_cast<std::size_t>(digit - '0');
  }
  return number < table.size() ? table[number] : Argument::Unknown;
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
