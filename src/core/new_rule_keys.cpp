#include "core/new_rule_keys.h"

#include <cstdint>
#include <span>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/entry_keys.h"
#include "core/entry_types.h"

namespace morvelle {

namespace {

/// Whether an argument, just written to an empty key, is read as it stands in its record.
bool ReadsBack(Argument argument, const std::string& value, const std::string& valueType) {
  if (!CarriesValue(argument)) return value.empty() && valueType.empty();
  if (value.empty() || valueType != ValueTypeOf(argument)) return false;
  return argument != Argument::Number || IsPlainNumber(value);
}

bool ReadsBack(const ActionRecord& action) {
  return IsPlainNumber(action.Type) && IsPlainNumber(action.Flags) &&
         ReadsBack(ArgumentOfAction(action.Type), action.Value, action.ValueType);
}

bool ReadsBack(const CriterionRecord& criterion) {
  return IsPlainNumber(criterion.Type) && IsPlainNumber(criterion.Flags) &&
         IsPlainNumber(criterion.Logic) &&
         ReadsBack(ArgumentOfCriterion(criterion.Type), criterion.Value, criterion.ValueType);
}

/// Whether all of the first `count` entries, and there is one, are read back under the ids of their
/// order.
template <typename Records>
bool AllReadBack(const Records& records, std::size_t count, std::string_view order) {
  if (count == 0 || (order.size() + 1) / 4 != count) return false;
  for (std::size_t i = 0; i < count; ++i) {
    if (order.substr(4 * i, 3) != records[i].Id || !ReadsBack(records[i])) return false;
  }
  return true;
}

}  // namespace

bool NewRuleKeys::IsAsRead(const RuleTables& tables, int row) {
  const auto at = static_cast<std::size_t>(row);
  const auto& rule = tables.RuleAt(row);
  return !rule.overfull && IsThreeDigitId(rule.Id) && IsPlainNumber(rule.Enabled) &&
         IsPlainNumber(rule.Version) &&
         AllReadBack(rule.ActionsParam, tables.Actions[at], rule.ActionsOrder) &&
         AllReadBack(rule.CriteriaParam, tables.Criteria[at], rule.CriteriaOrder);
}

RegistryStatus NewRuleKeys::Write(const RuleTables& tables, int row) {
  return Trap(registry_.Boxes().Boxes(), "RuleToBdR", [&] {
    const auto at = static_cast<std::size_t>(row);
    const auto& rule = tables.RuleAt(row);
    const std::string actions = "Actions";
    const std::string criteria = "Criteria";
    keyCount_ = valueCount_ = 0;
    SetValue({}, "Name", ValueKind::String, rule.Name);
    SetNumber({}, "Enabled", rule.Enabled);
    SetNumber({}, "Version", rule.Version);
    SetValue(actions, "Order", ValueKind::String, rule.ActionsOrder);
    for (std::size_t i = 0; i < tables.Actions[at]; ++i) {
      PutAction(*this, actions, rule.ActionsParam[i]);
    }
    SetValue(criteria, "Order", ValueKind::String, rule.CriteriaOrder);
    for (std::size_t i = 0; i < tables.Criteria[at]; ++i) {
      PutCriterion(*this, criteria, rule.CriteriaParam[i], {}, Missing::IsZero);
    }
    const auto key = mailKey_ + rule.Id;
    const auto keys = std::span(keys_).first(keyCount_);
    return registry_.Store().WriteNewKeys(key, keys) ? kStatusSuccess : WriteOneByOne(key);
  });
}

bool NewRuleKeys::SetNumber(const std::string& path, std::string_view name, const std::string& text,
                            const std::string& /*storedIn*/) {
  Turn(path);
  const auto bits = static_cast<std::uint32_t>(ToLong(text));
  auto& bytes = numbers_.at(valueCount_);
  for (unsigned i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(bits >> (8 * i));
  Add(name, ValueKind::Dword, {bytes.data(), bytes.size()});
  return true;
}

bool NewRuleKeys::SetValue(const std::string& path, std::string_view name, ValueKind kind,
                           const std::string& text, const std::string& /*storedIn*/) {
  Turn(path);
  // A string has its final zero behind its last character.
  Add(name, kind, {text.c_str(), text.size() + (kind == ValueKind::String ? 1 : 0)});
  return true;
}

void NewRuleKeys::Turn(const std::string& path) {
  if (keyCount_ > 0 && keys_[keyCount_ - 1].path == path) return;
  paths_.at(keyCount_) = path;
  keys_[keyCount_] = {paths_[keyCount_], {&values_[valueCount_], 0}};
  ++keyCount_;
}

void NewRuleKeys::Add(std::string_view name, ValueKind kind, std::string_view data) {
  values_.at(valueCount_++) = {name, kind, data};
  auto& values = keys_[keyCount_ - 1].values;
  values = {values.data(), values.size() + 1};
}

RegistryStatus NewRuleKeys::WriteOneByOne(const std::string& key) const {
  for (const auto& made : std::span(keys_).first(keyCount_)) {
    const auto path = made.path.empty() ? key : EntryKey(key, std::string(made.path));
    const OpenedKey opened(registry_, path, true);
    auto status = opened.Status();
    for (const auto& value : made.values) {
      if (status != kStatusSuccess) break;
      status = registry_.Store().SetValue(opened.Handle(), value.name, value.kind, value.data);
    }
    if (status != kStatusSuccess) return status;
  }
  return kStatusSuccess;
}

}  // namespace morvelle
