#include "files/rule_export.h"

#include <gmock/gmock.h>

#include "files/rule_file_reader.h"
#include "tests/core/rule_model.h"
#include "tests/support/fake_machine.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;

constexpr std::string_view kFirst = "Publicités"_cp;
const std::string kFolder = "stored01\x04\0\0\0"s;

/// UTF-8 as a file has it, each "|" an end of line.
std::string FileOf(const std::string& text) {
  std::string lines;
  for (const char character : FromUtf8(text).value_or(text)) {
    lines += character == '|' ? "\r\n" : std::string(1, character);
  }
  return lines;
}

struct RuleExportTest : testing::Test {
  RuleExportTest() { model.deletedItems = "stored01\x04\0\0"s; }

  /// A rule of many kinds of entries, and one without actions or criteria.
  void LoadTwoRules() {
    model.set.Order("000 00A");
    model.set.Rule("000", kFirst).Actions("000 001").Criteria("000 001 002");
    model.set.Action("000", 6).Bytes(kFolder).Action("001", 3);
    model.set.Words("000", 12, {"zoe", "alpha"}, 1, 2).Criterion("001", 13, 0, 2).Number(3);
    model.set.Criterion("002", 14, 0, 2);
    model.set.Rule("00A", "Vide", 0).Actions("").Criteria("000");
    model.loader.MailFromBdR();
  }
  std::string File(bool oneRule, int row = 0) {
    LineSink sink(LineSink::Output::File);
    Export(sink, oneRule, row);
    return sink.FileText();
  }
  std::vector<std::string> Paper(bool oneRule, int row = 0) {
    LineSink sink(LineSink::Output::Paper);
    Export(sink, oneRule, row);
    return sink.PaperLines();
  }
  void Export(LineSink& sink, bool oneRule, int row) {
    RuleExport writers(model.messages, model.tables, model, sink);
    writers.MailToFile(oneRule, row, progress);
    leftOut = writers.LeftOut();
    notReadable = writers.NotReadable();
  }

  RuleModel model;
  FakeProgress progress;
  std::vector<std::string> leftOut;
  std::vector<std::string> notReadable;
};

TEST_F(RuleExportTest, AFileHoldsLabelsAndValuesAsTheTablesHaveThem) {
  LoadTwoRules();
  const auto firstRule = FileOf(
      "Nom de règle|Publicités|Version de règle|0|Validité de règle|1|"
      "ACTIONS|Ordre des actions|000 001|"
      "ID d'action|000|Flags d'action|0|Type d'action|6|"
      "Type de valeur d'action|65|Valeur d'action|stored01\x04\0\0\0|"
      "ID d'action|001|Flags d'action|0|Type d'action|3|"
      "CRITERIA|Ordre des critères|000 001 002|"
      "ID de critère|000|Flags de critère|1|Logique de critère|2|Type de critère|12|"
      "Type de valeur de critère|65|Valeur de critère|zoe\0alpha\0\0\0|"
      "ID de critère|001|Flags de critère|0|Logique de critère|2|Type de critère|13|"
      "Type de valeur de critère|19|Valeur de critère|3|"
      "ID de critère|002|Flags de critère|0|Logique de critère|2|Type de critère|14|EOR|"s);
  EXPECT_EQ(File(true), firstRule + "EOM\r\n");
  const auto secondRule = FileOf(
      "ID de règle|00A|Nom de règle|Vide|Version de règle|0|Validité de règle|0|"
      "ACTIONS|Ordre des actions|000|ID d'action|000|Flags d'action|0|Type d'action|6|"
      "Type de valeur d'action|65|Valeur d'action|stored01\x04\0\0\0|"
      "CRITERIA|Ordre des critères|000|EOR|EOM|"s);
  EXPECT_EQ(File(false), FileOf("MAIL|Order|000 00A|Version|327680|EOT|ID de règle|000|") +
                             firstRule + secondRule);
  EXPECT_THAT(progress.works, ElementsAre("Exportation des règles ..."_cp));
}

TEST_F(RuleExportTest, PaperIndentsShowsWordsInOrderAndHasNoMarkers) {
  LoadTwoRules();
  model.tables.Words0 = {"de la règle ouverte"};
  std::string listing;
  for (const auto& line : Paper(false)) listing += ToUtf8(line) + "\n";
  EXPECT_EQ(listing, ReadFile(MORVELLE_LISTING));
  EXPECT_THAT(model.tables.Words0, ElementsAre("de la règle ouverte"));
  EXPECT_EQ(Paper(true).front(), std::string("     Nom de règle"_cp));
}

TEST_F(RuleExportTest, ARuleWithoutActionsGetsTheDefaultOneWhereItsFolderIsKnown) {
  LoadTwoRules();
  model.deletedItems.clear();
  EXPECT_THAT(File(true, 1), testing::HasSubstr("Ordre des actions\r\n\r\nCRITERIA\r\n"));
  EXPECT_EQ(model.tables.Actions[1], 0);
  model.deletedItems = "stored01\x04\0\0"s;
  File(true, 1);
  EXPECT_EQ(model.tables.RuleAt(1).ActionsParam[0].Value, kFolder);
  // The next load reads what the store says.
  model.loader.MailFromBdR();
  EXPECT_EQ(model.tables.Actions[1], 0);
}

TEST_F(RuleExportTest, AShortFolderValuePrintsAsAnEmptyLine) {
  model.set.Order("000").Rule("000", "A").Actions("000").Action("000", 6).Bytes("\x01\x02");
  model.set.Criteria("000");
  model.loader.MailFromBdR();
  EXPECT_THAT(Paper(true), testing::Contains(std::string(25, ' ')));
}

TEST_F(RuleExportTest, ARuleThatTheTablesDoNotHoldIsLeftOutAndNotCounted) {
  model.set.Order("000 001");
  model.set.Rule("000", "Trop").Actions(kTwelve + " 00C");
  model.set.Criteria("000").PlainRule("001", "Bonne", "000");
  model.dialogs.AllowAnyBox();
  model.loader.MailFromBdR();
  const auto text = File(false);
  EXPECT_THAT(text, testing::StartsWith("MAIL\r\nOrder\r\n001\r\nVersion\r\n"));
  EXPECT_THAT(text, testing::Not(testing::HasSubstr("Trop")));
  EXPECT_THAT(leftOut, ElementsAre("Trop"));
  EXPECT_EQ(ReadRuleFile(text, RuleFileKind::AllRules).rules.size(), 1U);
}

TEST_F(RuleExportTest, ARuleThatCouldNotBeReadBackIsNamed) {
  model.set.Order("000 001 002");
  model.set.PlainRule("000", "Deux\r\nlignes", "000");
  model.set.PlainRule("001", "Valeur", "000").Words("000", 8, {"a\r\nb"});
  model.set.PlainRule("002", "Bonne", "000").Words("000", 8, {"a\rb", "c\nd", "e\r"});
  model.loader.MailFromBdR();
  File(false);
  EXPECT_THAT(notReadable, ElementsAre("Deux\r\nlignes", "Valeur"));
  model.tables.Mail.Version = "cinq";
  File(false);
  EXPECT_EQ(notReadable.at(0), "MAIL");
}

TEST_F(RuleExportTest, NoRuleIsAHeaderAndNothingElse) {
  EXPECT_EQ(File(false), FileOf("MAIL|Order||Version||EOT|EOM|"));
  EXPECT_EQ(Paper(false).size(), 5U);
}

}  // namespace
}  // namespace morvelle
