// Each type of action and criterion, on its way through tables, store and file.

#include "core/entry_types.h"

#include "files/labels.h"
#include "files/rule_export.h"
#include "tests/core/rule_model.h"
#include "tests/support/fake_machine.h"

namespace morvelle {
namespace {

// How the type of that number carries its argument: as bytes, text or a number, not at all ("-"),
// or in a way that is not known ("?").
constexpr std::string_view kActions = "?BT??TB---N---???N??";
constexpr std::string_view kCriteria = "????????BBBBBN-N???T-?B????????N??";

struct EntryTypes : testing::TestWithParam<bool> {};

TEST_P(EntryTypes, CarryTheirArgumentsThroughStoreAndFile) {
  const bool action = GetParam();
  const std::map<char, std::string> arguments = {{'B', "ValueType = 65\nValue = 3:\"8\"\n"},
                                                 {'T', "ValueType = 30\nValue = \"8\"\n"},
                                                 {'N', "ValueType = 19\nValue = 8\n"},
                                                 {'?', "ValueType = 65\nValue = 3:\"7\"\n"},
                                                 {'-', ""}};
  std::uint32_t type = 0;
  for (const char how : action ? kActions : kCriteria) {
    SCOPED_TRACE(type);
    RuleModel model;
    auto& set = model.set.Order("000").PlainRule("000", "A", "000").Criterion("000", 20);
    action ? set.Action("000", type) : set.Criterion("000", type);
    how == 'N' ? set.Number(7) : how == 'T' ? set.Text("7") : set.Bytes("7");
    model.loader.MailFromBdR();
    LineSink sink(LineSink::Output::File);
    FakeProgress progress;
    RuleExport(model.messages, model.tables, model, sink).MailToFile(true, 0, progress);
    const std::string label(action ? labels::kActionValue : labels::kCriterionValue);
    const bool carries = how != '-' && how != '?';
    EXPECT_EQ(sink.FileText().find(label + "\r\n7\r\n") != std::string::npos, carries);
    EXPECT_EQ(sink.FileText().find(label) != std::string::npos, carries);

    auto& rule = model.tables.RuleAt(0);
    (action ? rule.ActionsParam[0].Value : rule.CriteriaParam[0].Value) = "8";
    ASSERT_TRUE(model.Save(0, {}));
    EXPECT_EQ(
        DumpOf(model.store, kTestMailKey + "000\\" + (action ? "Actions" : "Criteria") + "\\000"),
        "Type = " + std::to_string(type++) + "\nFlags = 0\n" + (action ? "" : "Logic = 0\n") +
            arguments.at(how));
  }
}

INSTANTIATE_TEST_SUITE_P(Each, EntryTypes, testing::Bool());

}  // namespace
}  // namespace morvelle
