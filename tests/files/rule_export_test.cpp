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

/// A text as a file has it: "~" stands for a zero, "^" for a byte 4.
std::string FileOf(const std::string& text) {
  std::string file;
  for (const char character : FromUtf8(text).value_or(text)) {
    const char byte = character == '~' ? '\0' : character == '^' ? '\4' : character;
    file += character == '\n' ? "\r\n" : std::string(1, byte);
  }
  return file;
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
  const auto all = FileOf(ReadFile(MORVELLE_RULE_FILE));
  EXPECT_EQ(File(false), all);
  EXPECT_THAT(progress.works, ElementsAre("Exportation des règles ..."_cp));
  const auto rule = all.find("Nom de");
  EXPECT_EQ(File(true), all.substr(rule, all.find("ID de r", rule) - rule) + "EOM\r\n");
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
  EXPECT_EQ(File(false), FileOf("MAIL\nOrder\n\nVersion\n\nEOT\nEOM\n"));
  EXPECT_EQ(Paper(false).size(), 5U);
}

}  // namespace
}  // namespace morvelle
