#include "app/messages/text.h"
#include "files/rule_export.h"
#include "files/rule_file_reader.h"
#include "fuzz/fuzzer.h"
#include "fuzz/quiet_desktop.h"

namespace morvelle {

namespace {

class NoFolder final : public DeletedItemsSource {
 public:
  const std::string& DeletedItems() override { return value_; }

 private:
  std::string value_ = "False";
};

/// The rules of a file as tables, as an import makes them.
void FillTables(const RuleFile& file, RuleTables& tables) {
  tables.SlotType = {"12", "8", "9", "22"};
  tables.RuleCount = static_cast<std::int16_t>(file.rules.size());
  tables.ReDimTables();
  std::vector<std::string> ids;
  for (int row = 0; row < tables.RuleCount; ++row) {
    FillRow(tables, row, ThreeDigitId(row), file.rules[static_cast<std::size_t>(row)]);
    ids.push_back(tables.RuleAt(row).Id);
  }
  tables.Mail.Order = JoinIds(ids);
  tables.Mail.Version = file.version;
}

std::string Exported(RuleTables& tables, RuleFileKind kind) {
  QuietDesktop desktop;
  const Messages messages(desktop);
  NoFolder folder;
  LineSink sink(LineSink::Output::File);
  RuleExport rules(messages, tables, folder, sink);
  rules.MailToFile(kind == RuleFileKind::OneRule, 0, desktop);
  Demand(rules.NotReadable().empty(), "what came from a file can be read from one");
  return sink.FileText();
}

void Try(std::string_view input, RuleFileKind kind) {
  const auto file = ReadRuleFile(input, kind);
  if (file.verdict != RuleFileVerdict::Good || file.rules.empty()) return;
  RuleTables tables;
  FillTables(file, tables);
  const auto text = Exported(tables, kind);
  const auto again = ReadRuleFile(text, kind);
  Demand(again.verdict == RuleFileVerdict::Good, "a file that was written can be read");
  RuleTables tablesAgain;
  FillTables(again, tablesAgain);
  Demand(Exported(tablesAgain, kind) == text, "rules survive being written and read");
}

}  // namespace

void TryInput(std::string_view input) {
  Try(input, RuleFileKind::OneRule);
  Try(input, RuleFileKind::AllRules);
}

}  // namespace morvelle
