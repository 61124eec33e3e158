#include "bench/rule_set.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <random>

#include "app/messages/text.h"

namespace morvelle::bench {

namespace {

constexpr int kWords = 8;
constexpr std::array<int, kCriteria> kTypes = {12, 8, 9, 22};
/// Of a rule with one action: "delete from the server". Of one with many: types without an argument
/// that an arrangement of the rules puts into one group.
constexpr int kDelete = 8;
constexpr std::array<int, 3> kOtherActions = {7, 11, 13};
constexpr int kMost = 12;
constexpr int kFullEvery = 16;
constexpr std::string_view kRefusedInNames = "\\/:*?\"<>|";

std::string Id(int number) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "%03X", static_cast<unsigned>(number) & 0xFFFU);
  return text.data();
}

std::string Dword(const char* name, int value) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "\"%s\"=dword:%08x\r\n", name,
                static_cast<unsigned>(value));
  return text.data();
}

/// The order of the first `count` ids.
std::string Order(int count) {
  std::string order = "\"Order\"=\"";
  for (int i = 0; i < count; ++i) order.append(i > 0 ? " " : "").append(Id(i));
  return order.append("\"\r\n");
}

class Writer {
 public:
  explicit Writer(int longList) : longList_(longList) {}

  std::string Write(int rules) {
    text_ = "Windows Registry Editor Version 5.00\r\n";
    WriteIdentity();
    Key("");
    text_ += Order(rules) + Dword("Version", 0x50000);
    for (int rule = 0; rule < rules; ++rule) WriteRule(rule);
    text_ += "\r\n";
    return std::move(text_);
  }

 private:
  void WriteIdentity() {
    const auto id = kMailKey.substr(0, kMailKey.find('}') + 1);
    text_.append(
        "\r\n[HKEY_CURRENT_USER\\Software\\Microsoft\\WAB\\WAB4\\Wab File Name]\r\n"
        "@=\"C:\\\\carnet.csv\"\r\n");
    text_.append("\r\n[HKEY_CURRENT_USER\\Identities]\r\n\"Last User ID\"=\"");
    text_.append(id.substr(id.find('{'))).append("\"\r\n\r\n[HKEY_CURRENT_USER\\");
    text_.append(kMailKey.substr(0, kMailKey.find("\\Rules"))).append("]\r\n");
    text_ += "\"Store Root\"=\"C:\\\\Messages\\\\\"\r\n";
  }

  void Key(const std::string& path) {
    text_.append("\r\n[HKEY_CURRENT_USER\\").append(kMailKey).append(path);
    if (text_.back() == '\\') text_.pop_back();
    text_ += "]\r\n";
  }

  [[nodiscard]] bool IsFull(int rule) const {
    return longList_ > 0 && rule % kFullEvery == kFullEvery - 1;
  }

  [[nodiscard]] int CriteriaOf(int rule) const {
    if (longList_ > 0 && rule >= kBookRow && rule <= kShortRow) return 1;
    return IsFull(rule) ? kMost : kCriteria;
  }

  /// Sixteen characters that a name may have, other ones from rule to rule.
  [[nodiscard]] std::string NameOf(int rule) const {
    if (longList_ > 0 && rule == kBookRow) return "Carnet d'adresses";
    std::string name = "R\xE8gle " + Id(rule);
    if (longList_ == 0) return name;
    constexpr int kFirst = 0x21;
    constexpr int kCount = 0x100 - kFirst;
    name += ' ';
    for (int i = 0; i < 16; ++i) {
      const auto character = static_cast<char>(kFirst + (16 * rule + i) % kCount);
      if (character == '\x7F' || kRefusedInNames.find(character) != std::string_view::npos)
        continue;
      name += character;
    }
    return name;
  }

  void WriteRule(int rule) {
    const auto id = Id(rule);
    Key(id);
    text_.append("\"Name\"=\"").append(NameOf(rule)).append("\"\r\n");
    text_ += Dword("Enabled", 1) + Dword("Version", 0);
    const int actions = IsFull(rule) ? kMost : 1;
    Key(id + "\\Actions");
    text_ += Order(actions);
    for (int i = 0; i < actions; ++i) {
      Key(id + "\\Actions\\" + Id(i));
      const auto other = kOtherActions[static_cast<std::size_t>(i) % kOtherActions.size()];
      text_ += Dword("Type", IsFull(rule) ? other : kDelete) + Dword("Flags", 0);
    }
    const int criteria = CriteriaOf(rule);
    const bool isLong = longList_ > 0 && rule == kLongListRow;
    Key(id + "\\Criteria");
    text_ += Order(criteria);
    for (int i = 0; i < criteria; ++i) {
      Key(id + "\\Criteria\\" + Id(i));
      const auto type = static_cast<std::size_t>(isLong ? 1 : i) % kTypes.size();
      text_ += Dword("Type", kTypes[type]) + Dword("Flags", 0) + Dword("Logic", 1);
      text_ += (isLong ? LongList() : WordList()) + Dword("ValueType", 65);
    }
  }

  [[nodiscard]] std::string LongList() const {
    std::string bytes;
    for (const auto& word : LimitWords(longList_)) bytes.append(word).append(1, '\0');
    bytes.append(2, '\0');
    return Hex("\"Value\"=hex:", bytes);
  }

  std::string WordList() {
    std::uniform_int_distribution<int> length(4, 12);
    std::uniform_int_distribution<int> letter('a', 'z');
    std::string bytes;
    for (int word = 0; word < kWords; ++word) {
      const int count = length(random_);
      for (int i = 0; i < count; ++i) bytes += static_cast<char>(letter(random_));
      bytes += '\0';
    }
    bytes.append(2, '\0');
    return Hex("\"Value\"=hex:", bytes);
  }

  static std::string Hex(std::string_view start, const std::string& bytes) {
    std::string text(start);
    std::size_t column = text.size();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      std::array<char, 4> digits{};
      std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned char>(bytes[i]));
      text += digits.data();
      if (i + 1 == bytes.size()) break;
      text += ',';
      column += 3;
      if (column < 77) continue;
      text += "\\\r\n  ";
      column = 2;
    }
    return text + "\r\n";
  }

  int longList_;
  std::string text_;  ///< Windows-1252.
  std::mt19937 random_{20031};
};

}  // namespace

std::string RuleSet(int rules, int longList) {
  const auto text = ToUtf16(Writer(longList).Write(rules));
  std::string wide = "\xFF\xFE";
  wide.reserve(wide.size() + text.size() * 2);
  for (const char16_t unit : text) {
    wide += {static_cast<char>(unit & 0xFFU), static_cast<char>(unit >> 8U)};
  }
  return wide;
}

void WriteRuleSet(const std::filesystem::path& file, int rules, int longList) {
  std::ofstream(file, std::ios::binary) << RuleSet(rules, longList);
}

std::vector<std::string> LimitWords(int count) {
  std::mt19937 random{20032};
  std::uniform_int_distribution<int> length(2, 9);
  std::uniform_int_distribution<int> letter('a', 'z');
  std::vector<std::string> words;
  for (int word = 0; word < count; ++word) {
    auto& text = words.emplace_back();
    const int letters = length(random);
    for (int i = 0; i < letters; ++i) text += static_cast<char>(letter(random));
    // Three letters more, from "à" to "ÿ", make each word another one.
    for (int rest = word, i = 0; i < 3; ++i, rest /= 32) {
      text += static_cast<char>(0xE0 + rest % 32);
    }
  }
  return words;
}

}  // namespace morvelle::bench
