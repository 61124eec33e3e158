#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/messages/messages.h"

namespace morvelle {

/// Tells the user, at most once per load, that a rule is stored badly.
class DamageReport {
 public:
  /// `ruleLabel`: the rule being loaded, as RuleTables keeps it.
  DamageReport(const Messages& messages, const std::string& ruleLabel)
      : messages_(messages), ruleLabel_(ruleLabel) {}

  /// A value of the table with that label was not there.
  void BadValueReport(std::string_view table);

  /// A value of the rule being loaded is there and cannot be read; `description` says why. A
  /// damaged registry has many of them.
  void UnreadableValue(std::string_view description, std::string_view name);

  /// A load begins: the next damaged rule is reported again.
  void BeginLoad();
  /// It is over: what was left to tell is told.
  void EndLoad();

  /// The program has started: that there is no rule yet is said no more.
  void EndStart() { starting_ = false; }

  /// The order of the rules is there and cannot be read. Said once a run.
  void UnreadableOrder();

  /// These rules have a list of more words than can be counted. Said once a run.
  void TooManyWords(const std::vector<std::string>& names);

  /// Counts what was not there, reported or not.
  [[nodiscard]] int Count() const { return count_; }

 private:
  const Messages& messages_;
  const std::string& ruleLabel_;
  bool reported_ = false;
  std::optional<BoxSeries> unreadable_;  ///< During a load.
  int count_ = 0;
  /// Until the program has started, or the first load has met no order.
  bool starting_ = true;
  bool orderTold_ = false;
  bool wordsTold_ = false;
};

}  // namespace morvelle
