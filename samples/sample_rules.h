#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace morvelle {

/// Folders of the sample's message store, by the ids that the rules give.
enum class SampleFolder : std::uint8_t {
  Root = 0,
  Local = 1,
  Inbox = 2,
  Outbox = 3,
  Sent = 4,
  Bin = 5,
  Drafts = 6,
  Family = 7,
  Lists = 9,
  Associations = 10,
  Orders = 12,
  Work = 13,
  Garden = 15,
  ToRead = 16,
  Archive = 18,
};

/// What a criterion or an action goes with: nothing, a list of words, a number, a text, a folder.
/// Texts are Windows-1252.
using SampleValue = std::variant<std::monostate, std::vector<std::string_view>, std::uint32_t,
                                 std::string_view, SampleFolder>;

struct SampleCriterion {
  std::uint32_t type;
  std::uint32_t flags;
  SampleValue value;
};

struct SampleAction {
  std::uint32_t type;
  SampleValue value;
};

struct SampleRule {
  std::string_view id;
  std::string_view name;
  bool enabled;
  /// How several criteria are joined: 1 or, 2 and.
  std::uint32_t logic;
  std::vector<SampleCriterion> criteria;
  std::vector<SampleAction> actions;
};

/// The rules in the order in which they are applied.
std::vector<SampleRule> SampleRules();

}  // namespace morvelle
