#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace morvelle::bench {

/// Where the rules stand under HKEY_CURRENT_USER, with a "\" at the end.
inline constexpr std::string_view kMailKey =
    R"(Identities\{7C2F1A60-93B4-4E0D-8A57-D1C6B2E94F38}\Software\Microsoft\Outlook Express\5.0\Rules\Mail\)";

/// Criteria of each rule, and its keys in all: the rule, Actions, one action, Criteria, criteria.
inline constexpr int kCriteria = 4;
inline constexpr int kKeysPerRule = 4 + kCriteria;

/// A registry export of that many rules (at most 4096), version 5, UTF-16LE: each with one action
/// and four word lists of eight words of 4 to 12 letters. The same at each call.
std::string RuleSet(int rules);
void WriteRuleSet(const std::filesystem::path& file, int rules);

}  // namespace morvelle::bench
