#include "bench/rule_set.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <random>

namespace morvelle::bench {

namespace {

constexpr int kWords = 8;
constexpr std::array<int, kCriteria> kTypes = {12, 8, 9, 22};

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
  std::string Write(int rules) {
    text_ = "Windows Registry Editor Version 5.00\r\n";
    WriteIdentity();
    Key("");
    text_ += Order(rules) + Dword("Version", 0x50000);
    for (int rule = 0; rule < rules; ++rule) WriteRule(Id(rule));
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

  void WriteRule(const std::string& id) {
    Key(id);
    text_.append("\"Name\"=\"Règle ").append(id).append("\"\r\n");
    text_ += Dword("Enabled", 1) + Dword("Version", 0);
    Key(id + "\\Actions");
    text_ += Order(1);
    Key(id + "\\Actions\\000");
    text_ += Dword("Type", 8) + Dword("Flags", 0);
    Key(id + "\\Criteria");
    text_ += Order(kCriteria);
    for (int i = 0; i < kCriteria; ++i) {
      Key(id + "\\Criteria\\" + Id(i));
      text_ += Dword("Type", kTypes[static_cast<std::size_t>(i)]) + Dword("Flags", 0) +
               Dword("Logic", 1) + WordList() + Dword("ValueType", 65);
    }
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

  std::string text_;
  std::mt19937 random_{20031};
};

}  // namespace

std::string RuleSet(int rules) {
  const std::string text = Writer().Write(rules);
  std::string wide = "\xFF\xFE";
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto code = static_cast<unsigned char>(text[i]);
    // The only characters beyond ASCII are two-byte ones below U+0100.
    if (code >= 0x80) {
      const auto next = static_cast<unsigned char>(text[++i]);
      code = static_cast<unsigned char>(((code & 3U) << 6U) | (next & 0x3FU));
    }
    wide += {static_cast<char>(code), '\0'};
  }
  return wide;
}

void WriteRuleSet(const std::filesystem::path& file, int rules) {
  std::ofstream(file, std::ios::binary) << RuleSet(rules);
}

}  // namespace morvelle::bench
