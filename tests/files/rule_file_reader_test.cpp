#include "files/rule_file_reader.h"

#include "tests/core/rule_model.h"

namespace morvelle {
namespace {

using std::string_literals::operator""s;

/// A value with everything that could be taken for the end of a line but the end itself.
const std::string kRawValue = "\r\r\nb\0\r\r"s;
const std::string kFolder = "ab\rde\nfg\x05\0\0\0"s;

std::string Action(const std::string& type, const std::string& value = {}) {
  return "ID d'action\r\n00F\r\nFlags d'action\r\n0\r\nType d'action\r\n" + type + "\r\n" +
         (value.empty() ? "" : "TV\r\n65\r\nV\r\n" + value + "\r\n");
}

std::string Criterion(const std::string& type, const std::string& value = {}) {
  return "IC\r\n00F\r\nFlags\r\n-1\r\nLogique\r\n1\r\nType\r\n" + type + "\r\n" +
         (value.empty() ? "" : "TV\r\n65\r\nV\r\n" + value + "\r\n");
}

std::string Rule(const std::string& name, const std::string& actions, const std::string& criteria) {
  return "Nom\r\n" + name + "\r\nVersion\r\n0\r\nEnabled\r\n\r\nACTIONS\r\nOrdre\r\n" + actions +
         "CRITERIA\r\nOrdre\r\n" + criteria + "EOR\r\n";
}

const std::string kRule =
    Rule("Été", "005 009\r\n" + Action("6", kFolder) + Action("12"),
         "007 008\r\n" + Criterion("8", "alpha\0\n\0\0\0"s) + Criterion("8", "autre\0\0\0"s));
const std::string kMail = "MAIL\r\nOrder\r\n000 001\r\nVersion\r\n327680\r\nEOT\r\nID\r\n000\r\n" +
                          kRule + "ID\r\n001\r\n" + Rule("B", "\r\n", "000\r\n") + "EOM\r\n";

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

RuleFileVerdict One(const std::string& text) {
  return ReadRuleFile(text, RuleFileKind::OneRule).verdict;
}
RuleFileVerdict All(const std::string& text) {
  return ReadRuleFile(text, RuleFileKind::AllRules).verdict;
}

TEST(RuleFileReaderTest, EntriesAreNumberedByTheirPlace) {
  const auto file = ReadRuleFile(kMail, RuleFileKind::AllRules);
  ASSERT_EQ(file.verdict, RuleFileVerdict::Good);
  EXPECT_EQ(file.version, "327680");
  ASSERT_EQ(file.rules.size(), 2U);

  RuleTables tables;
  tables.SlotType = {"12", "8", "9", "22"};
  const auto first = "000|-1|1|8|alpha\0\n\0\0\0|65\n"s;
  FillRow(tables, 0, "0A0", file.rules[0]);
  EXPECT_EQ(ShownRow(tables, 0), "0A0 Été  0\n000 001\n000|0|6|" + kFolder +
                                     "|65\n001|0|12||\n000 001\n" + first +
                                     "001|-1|1|8|autre\0\0\0|65\n|||||\n"s + first + "|||||\n|||||")
      << "the first of its kind is its slot's";
  FillRow(tables, 0, "0A1", file.rules[1]);
  EXPECT_EQ(ShownRow(tables, 0), "0A1 B  0\n\n\n|||||\n|||||\n|||||\n|||||")
      << "\"000\" and no criterion; nothing is left of the row before";
}

TEST(RuleFileReaderTest, OnlyAReturnWithALineFeedEndsAValue) {
  const auto file = ReadRuleFile(Rule("A", "000\r\n" + Action("6", kRawValue), "\r\n") + "EOM\r\n",
                                 RuleFileKind::OneRule);
  ASSERT_EQ(file.verdict, RuleFileVerdict::NotImportable) << "its second byte pair is an end";
  const auto value = "\n\r\0x\r\r"s;
  const auto good = ReadRuleFile(Rule("A\rB\nC", "000\r\n" + Action("6", value), "\r\n") + "EOM",
                                 RuleFileKind::OneRule);
  ASSERT_EQ(good.verdict, RuleFileVerdict::Good);
  EXPECT_EQ(good.rules[0].actions[0].Value, value);
  EXPECT_EQ(good.rules[0].Name, "A\rB\nC");
}

TEST(RuleFileReaderTest, AFileCutAnywhereIsRefused) {
  // Cut before the last line end, nothing of the rules is missing.
  for (std::size_t length = 0; length + 2 < kMail.size(); ++length) {
    EXPECT_NE(All(kMail.substr(0, length)), RuleFileVerdict::Good) << length;
  }
  EXPECT_EQ(All(kMail.substr(0, kMail.size() - 1)), RuleFileVerdict::Good);
}

TEST(RuleFileReaderTest, EachMarkerMustBeThere) {
  const auto mail = Replaced(kMail, "Ordre\r\n000\r\nEOR", "Ordre\r\n\r\nEOR");
  for (const std::string marker : {"EOT", "EOR", "EOM"}) {
    for (auto at = mail.find(marker + "\r\n"); at != std::string::npos;
         at = mail.find(marker + "\r\n", at + 1)) {
      auto wrong = mail;
      EXPECT_EQ(All(wrong.replace(at, 3, "XXX")), RuleFileVerdict::BadlySaved) << marker;
      auto missing = mail;
      EXPECT_EQ(All(missing.erase(at, 5)), RuleFileVerdict::BadlySaved) << marker;
    }
  }
}

TEST(RuleFileReaderTest, WhatIsWrongInARuleRefusesTheFile) {
  const std::string tooMany = "000 001 002 003 004 005 006 007 008 009 00A 00B 00C\r\n";
  std::string thirteen;
  for (int k = 0; k < 13; ++k) thirteen += Action("12");
  const std::pair<std::string, std::string> entries[] = {
      {tooMany + thirteen, "\r\n"},
      {"000\r\n" + Action("douze"), "\r\n"},
      {"000\r\n" + Action("99999999999"), "\r\n"},
      {"000\r\n" + Action("10", "rouge"), "\r\n"},
      {"\r\n", "000\r\n" + Criterion("13", "haute")}};
  for (const auto& [actions, criteria] : entries) {
    EXPECT_EQ(One(Rule("A", actions, criteria) + "EOM\r\n"), RuleFileVerdict::NotImportable);
  }
  EXPECT_EQ(All("MAIL\r\nOrder\r\n\r\nVersion\r\n\r\nEOT\r\nEOM\r\n"),
            RuleFileVerdict::NotImportable)
      << "no rule";
}

TEST(RuleFileReaderTest, ARuleWithAnEntryThatWasDamagedIsInactiveAndNumbersAreTheirDigits) {
  const auto lost = "000\r\n" + Action("");
  const auto good = "000 001\r\n" + Action("012") + Action("10", " +7");
  const auto list = Criterion("8", "a\0\0\0"s);
  const std::tuple<std::string, std::string, std::string> rules[] = {
      {good, "000\r\n" + list, "1: 12 10=7 / 8"},
      {good, "000 001\r\n" + Criterion("") + list, "0: 12 10=7 / 8"},
      {"000 001\r\n" + Action("") + Action("9"), "000\r\n" + list, "0: 9 / 8"},
      // Nothing that it never did: neither by its own actions nor by the default one.
      {lost, "000\r\n" + list, "0: 12 / 8"},
      {lost, "000\r\n" + Criterion(""), "0: 12 /"},
      {"\r\n", "000\r\n" + list, "1: / 8"}};
  for (const auto& [actions, criteria, read] : rules) {
    const auto text = Replaced(Rule("A", actions, criteria), "Enabled\r\n", "Enabled\r\n1");
    const auto file = ReadRuleFile(text + "EOM\r\n", RuleFileKind::OneRule);
    ASSERT_EQ(file.verdict, RuleFileVerdict::Good);
    const auto& block = file.rules[0];
    auto shown = block.Enabled + ":";
    for (const auto& action : block.actions) {
      shown += " " + action.Type + (action.Value.empty() ? "" : "=" + action.Value);
    }
    shown += " /";
    for (const auto& criterion : block.criteria) shown += " " + criterion.Type;
    EXPECT_EQ(shown, read);
    EXPECT_EQ(block.damaged, block.Enabled == "0");
  }
}

TEST(RuleFileReaderTest, WhateverTheLengthsTheReaderEnds) {
  std::string order;
  for (int k = 0; k < 5000; ++k) order += "000 ";
  EXPECT_EQ(All(Replaced(kMail, "000 001", order)), RuleFileVerdict::NotImportable);
  const std::string megabyte(1U << 20U, 'x');
  EXPECT_EQ(All(Replaced(kMail, "000 001", megabyte)), RuleFileVerdict::NotImportable);
  EXPECT_EQ(One(megabyte), RuleFileVerdict::NotImportable);
  const auto file =
      ReadRuleFile(Rule(megabyte, "\r\n", "000\r\n") + "EOM\r\n", RuleFileKind::OneRule);
  ASSERT_EQ(file.verdict, RuleFileVerdict::Good);
  EXPECT_EQ(file.rules[0].Name, megabyte);
}

}  // namespace
}  // namespace morvelle
