#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace morvelle::bench {

/// Where the rules stand under HKEY_CURRENT_USER, with a "\" at the end.
inline constexpr std::string_view kMailKey =
    R"(Identities\{7C2F1A60-93B4-4E0D-8A57-D1C6B2E94F38}\Software\Microsoft\Outlook Express\5.0\Rules\Mail\)";

/// Criteria of each rule, and its keys in all: the rule, Actions, one action, Criteria, criteria.
inline constexpr int kCriteria = 4;
inline constexpr int kKeysPerRule = 4 + kCriteria;

/// What stands in the first rows of the rule set of the limits.
inline constexpr int kBookRow = 1;      ///< "Carnet d'adresses".
inline constexpr int kLongListRow = 2;  ///< One long list, of subjects.
inline constexpr int kShortRow = 3;     ///< One list of eight senders; its other lists are empty.

/// A registry export of that many rules (at most 4096), version 5, UTF-16LE: each with one action
/// and four word lists of eight words of 4 to 12 letters. The same at each call.
///
/// With a `longList` (at most 32,767 words) it is the rule set of the limits: the rows above hold
/// what they say, every sixteenth rule has twelve criteria and twelve actions, and the names hold
/// every character that a name may have.
std::string RuleSet(int rules, int longList = 0);
void WriteRuleSet(const std::filesystem::path& file, int rules, int longList = 0);

/// Words of 5 to 12 letters in Windows-1252, each another one.
std::vector<std::string> LimitWords(int count);

}  // namespace morvelle::bench
