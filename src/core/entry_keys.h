#pragma once

#include <string>

#include "core/entry_types.h"
#include "core/rule_tables.h"

namespace morvelle {

// What the keys of actions and criteria hold, told to whatever writes them: a WritePlan, which
// compares with what is stored, or NewRuleKeys, for which nothing is.

/// The path of an entry's key: it is made for each of thousands.
inline std::string EntryKey(const std::string& key, const std::string& id) {
  std::string path;
  path.reserve(key.size() + 1 + id.size());
  path.append(key).append(1, '\\').append(id);
  return path;
}

/// The argument of an entry, or its removal, as the type asks for. What is not there and has no
/// text is not made up, and what stands beside a value that stays is left alone.
template <typename Keys>
void PutArgument(Keys& keys, const std::string& key, Argument argument, const std::string& value,
                 const std::string& storedIn) {
  bool written = false;
  switch (argument) {
    case Argument::Number:
    case Argument::Text:
    case Argument::Bytes:
      if (value.empty() && keys.LacksValue(storedIn, "Value")) return;
      written = argument == Argument::Number
                    ? keys.SetNumber(key, "Value", value, storedIn)
                    : keys.SetValue(key, "Value", KindOf(argument), value, storedIn);
      break;
    case Argument::None:
      if (!keys.KeyExists(storedIn)) return;
      keys.DeleteValue(key, "Value");
      keys.DeleteValue(key, "ValueType");
      return;
    case Argument::Unknown:
      return;
  }
  if (written) keys.SetNumber(key, "ValueType", std::string(ValueTypeOf(argument)), storedIn);
}

/// A key "000" … under "Actions".
template <typename Keys>
void PutAction(Keys& keys, const std::string& actionsKey, const ActionRecord& action) {
  // A damaged action, without a type, is left as it is.
  if (action.Type.empty()) return;
  const auto path = EntryKey(actionsKey, action.Id);
  keys.SetNumber(path, "Flags", action.Flags);
  keys.SetNumber(path, "Type", action.Type);
  PutArgument(keys, path, ArgumentOfAction(action.Type), action.Value, path);
}

/// What becomes of a number without a text.
enum class Missing { StaysOut, IsZero };

/// A key "000" … under "Criteria"; `storedId` is where its values lie now, empty when they do not.
template <typename Keys>
void PutCriterion(Keys& keys, const std::string& criteriaKey, const CriterionRecord& criterion,
                  const std::string& storedId, Missing missing) {
  if (criterion.Type.empty()) return;
  const auto key = EntryKey(criteriaKey, criterion.Id);
  const auto stored = storedId.empty() ? std::string{} : EntryKey(criteriaKey, storedId);
  const auto setNumber = [&](std::string_view name, const std::string& text) {
    if (missing == Missing::StaysOut && text.empty()) return;
    keys.SetNumber(key, name, text, stored);
  };
  if (stored.empty()) keys.CreateKey(key);
  setNumber("Flags", criterion.Flags);
  setNumber("Logic", criterion.Logic);
  setNumber("Type", criterion.Type);
  PutArgument(keys, key, ArgumentOfCriterion(criterion.Type), criterion.Value, stored);
}

}  // namespace morvelle
