#include "core/rule_tables.h"

#include <algorithm>
#include <unordered_set>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

std::vector<std::string>& RuleTables::Words(int slot) {
  switch (slot) {
    case 0:
      return Words0;
    case 1:
      return Words1;
    case 2:
      return Words2;
    case 3:
      return Words3;
    default:
      throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  }
}

const RuleRecord& RuleTables::RuleAt(int row) const {
  if (row < 0 || row >= static_cast<int>(Rule.size())) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  }
  return Rule[static_cast<std::size_t>(row)];
}

RuleRecord& RuleTables::RuleAt(int row) {
  return const_cast<RuleRecord&>(static_cast<const RuleTables*>(this)->RuleAt(row));
}

CriterionRecord& RuleTables::SlotOf(int row, int slot) {
  if (row < 0 || row >= static_cast<int>(FirstCriteria.size()) || slot < 0 || slot >= kSlotCount) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  }
  return FirstCriteria[static_cast<std::size_t>(row)][static_cast<std::size_t>(slot)];
}

int RuleTables::RowOfId(std::string_view id) const {
  for (int row = 0; row < RuleCount; ++row) {
    if (EqualIgnoringCase(Rule[static_cast<std::size_t>(row)].Id, id)) return row;
  }
  return -1;
}

int RuleTables::SlotOfType(std::string_view type) const {
  if (type.empty()) return -1;
  for (int slot = 0; slot < kSlotCount; ++slot) {
    if (SlotType[static_cast<std::size_t>(slot)] == type) return slot;
  }
  return -1;
}

void RuleTables::ReDimTables() {
  const auto rows = static_cast<std::size_t>(RuleCount < 1 ? 1 : RuleCount);
  Rule.resize(rows);
  Actions.resize(rows);
  Criteria.resize(rows);
  FirstCriteria.resize(rows);
}

void RuleTables::ResizeBlock(int end, int newEnd) {
  const auto resize = [&](auto& rows) {
    const auto from = rows.begin() + std::min(end, newEnd);
    if (newEnd < end) {
      rows.erase(from, rows.begin() + end);
    } else {
      rows.insert(from, static_cast<std::size_t>(newEnd - end), {});
    }
  };
  resize(Rule);
  resize(Actions);
  resize(Criteria);
  resize(FirstCriteria);
  RuleCount = static_cast<std::int16_t>(RuleCount + newEnd - end);
  ReDimTables();
}

void RuleTables::Blank() {
  Mail = {};
  RuleCount = 0;
  Rule.clear();
  Actions.clear();
  Criteria.clear();
  FirstCriteria.clear();
  ReDimTables();
}

std::vector<std::string> IdsOfOrder(std::string_view order) {
  std::vector<std::string> ids;
  const std::size_t count = (order.size() + 1) / 4;
  ids.reserve(count);
  for (std::size_t k = 0; k < count; ++k) ids.emplace_back(order.substr(4 * k, 3));
  return ids;
}

std::vector<std::string> EachIdOnce(const std::vector<std::string>& ids) {
  std::vector<std::string> once;
  once.reserve(ids.size());
  std::unordered_set<std::string> seen;
  for (const auto& id : ids) {
    if (seen.insert(LowerCase(id)).second) once.push_back(id);
  }
  return once;
}

std::string JoinIds(const std::vector<std::string>& ids) {
  std::string order;
  order.reserve(ids.size() * 4);
  for (const auto& id : ids) {
    if (!order.empty()) order += ' ';
    order += id;
  }
  return order;
}

}  // namespace morvelle
