#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/messages/text.h"
#include "core/word_lists.h"
#include "ports/registry_store.h"
#include "tests/support/fake_registry.h"

namespace morvelle {

inline constexpr std::string_view kTestIdentity = "{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}";
inline const std::string kTestSettingsKey =
    "Identities\\" + std::string(kTestIdentity) + "\\Software\\Microsoft\\Outlook Express\\5.0\\";
inline const std::string kTestMailKey = kTestSettingsKey + "Rules\\Mail\\";
inline constexpr std::string_view kTestBookKey = "Software\\Microsoft\\WAB\\WAB4\\Wab File Name";

/// The report of a rule that is stored in a way that it should not be.
inline std::string DamagedRule(std::string_view label) {
  return std::string("La règle \""_cp).append(label) +
         std::string("\" a mal été enregistrée.\rIl est conseillé de la supprimer."_cp);
}

/// As many actions or criteria as the tables hold.
inline const std::string kTwelve = "000 001 002 003 004 005 006 007 008 009 00A 00B";

/// Makes an identity with rules in a store, value by value, as the mail client leaves them:
///
///     RuleSet set(store);
///     set.Order("000");
///     set.Rule("000", "Publicités"_cp).Actions("000").Action("000", 12).Criteria("000")
///         .Words("000", 8, {"gratuit", "promo"});
///
/// Rule, Actions and Criteria choose where the calls after them write; a value that is not asked
/// for is not made.
class RuleSet {
 public:
  explicit RuleSet(RegistryStore& store) : store_(store) {
    PutText("Identities", "Last User ID", kTestIdentity);
    PutText(kTestSettingsKey, "Store Root", "C:\\Courrier\\", ValueKind::ExpandString);
  }

  RuleSet& Order(std::string_view order) {
    PutText(kTestMailKey, "Order", order);
    return PutNumber(kTestMailKey, "Version", 327680);
  }
  RuleSet& Rule(std::string_view id, std::string_view name, std::uint32_t enabled = 1) {
    ruleKey_ = kTestMailKey + std::string(id);
    PutText(ruleKey_, "Name", name);
    PutNumber(ruleKey_, "Enabled", enabled);
    return PutNumber(ruleKey_, "Version", 0);
  }
  RuleSet& Actions(std::string_view order) {
    return PutText(ruleKey_ + "\\Actions", "Order", order);
  }
  RuleSet& Criteria(std::string_view order) {
    return PutText(ruleKey_ + "\\Criteria", "Order", order);
  }

  /// An action without argument, or one with bytes (a folder), a text or a number.
  RuleSet& Action(std::string_view id, std::uint32_t type) {
    entryKey_ = ruleKey_ + "\\Actions\\" + std::string(id);
    PutNumber(entryKey_, "Type", type);
    return PutNumber(entryKey_, "Flags", 0);
  }
  /// A criterion without argument, or the first part of one that has.
  RuleSet& Criterion(std::string_view id, std::uint32_t type, std::uint32_t flags = 0,
                     std::uint32_t logic = 0) {
    entryKey_ = ruleKey_ + "\\Criteria\\" + std::string(id);
    PutNumber(entryKey_, "Type", type);
    PutNumber(entryKey_, "Flags", flags);
    return PutNumber(entryKey_, "Logic", logic);
  }
  /// The argument of the last action or criterion.
  RuleSet& Bytes(std::string_view bytes) {
    PutNumber(entryKey_, "ValueType", 65);
    return Put(entryKey_, "Value", ValueKind::Binary, bytes);
  }
  RuleSet& Text(std::string_view text) {
    PutNumber(entryKey_, "ValueType", 30);
    return PutText(entryKey_, "Value", text);
  }
  RuleSet& Number(std::uint32_t number) {
    PutNumber(entryKey_, "ValueType", 19);
    return PutNumber(entryKey_, "Value", number);
  }
  /// A criterion with a list of words.
  RuleSet& Words(std::string_view id, std::uint32_t type, const std::vector<std::string>& words,
                 std::uint32_t flags = 0, std::uint32_t logic = 0) {
    return Criterion(id, type, flags, logic).Bytes(EncodeWords(words));
  }
  /// Any value of the last action or criterion, or of a key of the rule.
  RuleSet& Raw(std::string_view name, ValueKind kind, std::string_view data) {
    return Put(entryKey_, name, kind, data);
  }
  RuleSet& RawAt(std::string_view below, std::string_view name, ValueKind kind,
                 std::string_view data) {
    return Put(ruleKey_ + std::string(below), name, kind, data);
  }
  /// Takes a value of the last action or criterion away again.
  RuleSet& Without(std::string_view name) { return Remove(entryKey_, name); }
  RuleSet& RuleWithout(std::string_view name) { return Remove(ruleKey_, name); }

  /// A rule of actions of these types, a move (6) with its value, and one word for the sender.
  RuleSet& WithActions(std::string_view id, std::string_view name,
                       const std::vector<std::uint32_t>& types, std::string_view move,
                       std::uint32_t enabled = 1) {
    Rule(id, name, enabled).Actions(kTwelve.substr(0, 4 * types.size())).Criteria("000");
    for (std::size_t j = 0; j < types.size(); ++j) {
      Action(kTwelve.substr(4 * j, 3), types[j]);
      if (types[j] == 6) Bytes(move);
    }
    return Words("000", 12, {"alpha"});
  }
  /// What most tests need: a rule of one action "stop" and the criteria that follow.
  RuleSet& PlainRule(std::string_view id, std::string_view name, std::string_view criteria) {
    return Rule(id, name).Actions("000").Action("000", 12).Criteria(criteria);
  }

  RuleSet& Put(const std::string& path, std::string_view name, ValueKind kind,
               std::string_view data) {
    KeyHandle key = 0;
    store_.CreateKey(path, key);
    store_.SetValue(key, name, kind, data);
    store_.CloseKey(key);
    return *this;
  }
  RuleSet& PutText(const std::string& path, std::string_view name, std::string_view text,
                   ValueKind kind = ValueKind::String) {
    return Put(path, name, kind, std::string(text) + '\0');
  }
  RuleSet& PutNumber(const std::string& path, std::string_view name, std::uint32_t number) {
    std::string data;
    for (unsigned shift = 0; shift < 32; shift += 8) data += static_cast<char>(number >> shift);
    return Put(path, name, ValueKind::Dword, data);
  }
  RuleSet& Remove(const std::string& path, std::string_view name) {
    KeyHandle key = 0;
    store_.CreateKey(path, key);
    store_.DeleteValue(key, name);
    store_.CloseKey(key);
    return *this;
  }

 private:
  RegistryStore& store_;
  std::string ruleKey_;
  std::string entryKey_;
};

namespace detail {

inline std::string Shown(ValueKind kind, const std::string& data) {
  if (kind == ValueKind::Dword && data.size() == 4) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) {
      number = number << 8U | static_cast<unsigned char>(data[i]);
    }
    return std::to_string(number);
  }
  std::string text;
  for (const char character : data) {
    text += character == '\0' ? "~" : ToUtf8(std::string(1, character));
  }
  const auto quoted = "\"" + text + "\"";
  // A string as it should be stored, its final zero not shown.
  if (kind == ValueKind::String && text.ends_with('~')) {
    return "\"" + text.substr(0, text.size() - 1) + "\"";
  }
  return std::to_string(static_cast<unsigned>(kind)) + ":" + quoted;
}

}  // namespace detail

/// All below a key as text, one line a value in stored order: `000\Actions\000\Type = 12`,
/// `000\Name = "Famille"`, `000\Criteria\000\Value = 3:"alpha~beta~~~"`. A zero shows as "~"; a
/// number and a string that is closed as it should be show without their type.
inline std::string DumpOf(FakeRegistry& store, std::string_view path = kTestMailKey) {
  if (!store.HasKey(path)) return "(no such key)";
  std::string text;
  store.Walk(
      std::string(path),
      [&](const std::string& below, const std::string& name, ValueKind kind,
          const std::string& data) {
        text += below + name + " = " + detail::Shown(kind, data) + "\n";
      },
      [&](const std::string& below) { text += below + "\n"; });
  return text;
}

}  // namespace morvelle
