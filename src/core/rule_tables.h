#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace morvelle {

/// Actions and criteria that one rule can hold in the tables.
inline constexpr int kMaxEntries = 12;
/// Rules that one identity can hold: their ids are three hexadecimal digits.
inline constexpr int kMaxRules = 4096;
/// Words that one list can hold: they are counted in 16 bits.
inline constexpr std::size_t kMaxWords = 32767;
/// Word lists of a rule: sender, subject, body, recipients.
inline constexpr int kSlotCount = 4;
/// "Version" of a rules key as the mail client writes it (0x50000).
inline constexpr std::int32_t kRuleStoreVersion = 327680;

/// "ValueType" codes, which are variant types (wtypes.h).
inline constexpr std::string_view kValueTypeNumber = "19";
inline constexpr std::string_view kValueTypeText = "30";
inline constexpr std::string_view kValueTypeBytes = "65";

/// A rule's action, every field as the text that the registry gives; a number as its digits.
struct ActionRecord {
  std::string Id;
  std::string Flags;
  std::string Type;
  std::string Value;
  std::string ValueType;
};

/// A rule's criterion, in the same form.
struct CriterionRecord {
  std::string Id;
  std::string Flags;
  std::string Logic;
  std::string Type;
  std::string Value;
  std::string ValueType;
  /// Of the criterion of a word-list slot: its value was not there when the list was to be shown,
  /// or is neither text nor bytes. An empty list then does not say that the rule has none.
  bool unreadable = false;
};

/// The places of a rule's actions or criteria, kMaxEntries of them. One that was never used is
/// blank and takes no memory: most rules have few.
template <typename Record>
class EntryPlaces {
 public:
  EntryPlaces() = default;
  EntryPlaces& operator=(std::vector<Record> records) {
    used_ = std::move(records);
    return *this;
  }

  [[nodiscard]] const Record& operator[](std::size_t place) const {
    static const Record kBlank;
    return place < used_.size() ? used_[place] : kBlank;
  }
  [[nodiscard]] Record& operator[](std::size_t place) {
    if (place >= used_.size()) used_.resize(place + 1);
    return used_[place];
  }
  /// Makes room for so many at once.
  void Reserve(std::size_t count) { used_.reserve(count); }

  // The used ones.
  [[nodiscard]] auto begin() { return used_.begin(); }
  [[nodiscard]] auto end() { return used_.end(); }
  [[nodiscard]] auto begin() const { return used_.begin(); }
  [[nodiscard]] auto end() const { return used_.end(); }

 private:
  std::vector<Record> used_;
};

struct RuleRecord {
  std::string Enabled;
  std::string Name;
  std::string Version;
  std::string ActionsOrder;
  std::string Id;
  EntryPlaces<ActionRecord> ActionsParam;
  std::string CriteriaOrder;
  EntryPlaces<CriterionRecord> CriteriaParam;
  /// The store holds more actions or criteria than the tables can: the rule is listed, renamed,
  /// ordered and deleted, but never opened or rewritten.
  bool overfull = false;
  /// A list of the rule holds more words than kMaxWords: as with overfull, but the tables hold it
  /// whole, for a file or for paper.
  bool overlong = false;
  /// Change mark of the rule's key when the row was read; 0 when the row may say something else
  /// than the store, or was damaged.
  std::uint64_t readMark = 0;
  /// Nothing but the id stands in the row yet.
  bool blank = true;
};

struct MailRecord {
  std::string Order;
  std::string Version;
};

/// The rule set of the identity in use, named after the registry keys that it mirrors, and the word
/// lists of the rule being edited.
struct RuleTables {
  MailRecord Mail;
  std::int16_t RuleCount = 0;
  /// Id, then id and name, of the rule being loaded, for the damaged-rule message.
  std::string RuleLabel;
  std::vector<RuleRecord> Rule = std::vector<RuleRecord>(1);
  /// Number of actions and of criteria of each rule.
  std::vector<std::uint8_t> Actions = std::vector<std::uint8_t>(1);
  std::vector<std::uint8_t> Criteria = std::vector<std::uint8_t>(1);
  /// For each rule, its criterion of each word-list slot; blank when it has none.
  std::vector<std::array<CriterionRecord, kSlotCount>> FirstCriteria =
      std::vector<std::array<CriterionRecord, kSlotCount>>(1);

  /// Criteria type code of each slot.
  std::array<std::string, kSlotCount> SlotType;

  std::vector<std::string> Words0;
  std::vector<std::string> Words1;
  std::vector<std::string> Words2;
  std::vector<std::string> Words3;
  std::array<std::int16_t, kSlotCount> WordCount{};

  [[nodiscard]] std::vector<std::string>& Words(int slot);

  /// The row of a rule by number; error 9 beyond the tables.
  [[nodiscard]] RuleRecord& RuleAt(int row);
  [[nodiscard]] const RuleRecord& RuleAt(int row) const;
  /// The row was changed and is to be read again at the next load.
  void Touch(int row) { RuleAt(row).readMark = 0; }
  /// A rule's criterion of a word-list slot; error 9 beyond the tables.
  [[nodiscard]] CriterionRecord& SlotOf(int row, int slot);
  /// The row of the rule with that id, letter case ignored; -1 when there is none.
  [[nodiscard]] int RowOfId(std::string_view id) const;
  /// The slot whose type code this is; -1 for a criterion of another kind.
  [[nodiscard]] int SlotOfType(std::string_view type) const;

  /// Gives the per-rule tables RuleCount rows (one at the least), keeping what they hold.
  void ReDimTables();
  /// The rows up to `end` become those up to `newEnd`: the last of them go, or blank ones follow
  /// them. The rows behind keep their place behind, and RuleCount counts them all.
  void ResizeBlock(int end, int newEnd);
  /// Empties order, version, rows and slots before a load.
  void Blank();
};

/// The ids of an "Order" value: three characters at every fourth, whatever stands between them.
std::vector<std::string> IdsOfOrder(std::string_view order);
/// The ids without those that stand further ahead already, letter case ignored.
std::vector<std::string> EachIdOnce(const std::vector<std::string>& ids);
std::string JoinIds(const std::vector<std::string>& ids);

}  // namespace morvelle
