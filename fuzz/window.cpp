#include <array>
#include <set>
#include <vector>

#include "fuzz/fuzzer.h"
#include "fuzz/quiet_desktop.h"
#include "fuzz/reg_text_store.h"
#include "platform/unicode.h"
#include "ui/frm_morvelle.h"
#include "ui/menu_table.h"

namespace morvelle {

namespace {

/// The bytes of an input, taken one by one; 0 when there are no more.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
  [[nodiscard]] bool Left() const { return at_ < bytes_.size(); }
  int Next() { return Left() ? static_cast<unsigned char>(bytes_[at_++]) : 0; }
  std::string_view Take(std::size_t count) {
    const auto taken = bytes_.substr(std::min(at_, bytes_.size()), count);
    at_ += count;
    return taken;
  }
  std::string_view Rest() { return Take(bytes_.size()); }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;
};

/// A rule set of four rules, for inputs that bring none.
constexpr std::string_view kRuleSet =
    "REGEDIT4\r\n\r\n"
    "[HKEY_CURRENT_USER\\Identities]\r\n"
    "\"Last User ID\"=\"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}\"\r\n\r\n"
#define MAIL                                                                         \
  "[HKEY_CURRENT_USER\\Identities\\{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}\\Software" \
  "\\Microsoft\\Outlook Express\\5.0\\Rules\\Mail"
#define RULE(id, name, action, criterion)                                                          \
  MAIL "\\" id "]\r\n\"Name\"=\"" name "\"\r\n\"Enabled\"=dword:1\r\n\"Version\"=dword:0\r\n" MAIL \
       "\\" id "\\Actions]\r\n\"Order\"=\"000\"\r\n" MAIL "\\" id                                  \
       "\\Actions\\000]\r\n\"Type\"=dword:" action "\r\n\"Flags\"=dword:0\r\n" MAIL "\\" id        \
       "\\Criteria]\r\n\"Order\"=\"000\"\r\n" MAIL "\\" id                                         \
       "\\Criteria\\000]\r\n\"Type\"=dword:" criterion                                             \
       "\r\n\"Flags\"=dword:0\r\n\"Logic\"=dword:0\r\n\"ValueType\"=dword:41\r\n"                  \
       "\"Value\"=hex:61,62,00,63,00,00,00\r\n"
    MAIL "]\r\n\"Order\"=\"000 001 00A 002\"\r\n\"Version\"=dword:50000\r\n" RULE(
        "000", "Listes", "c", "c") RULE("001", "Famille", "8", "8")
        RULE("00A", "Travail", "9", "14") RULE("002", "Carnet d'adresses", "c", "c");
#undef RULE
#undef MAIL

/// Commands that may write to the store; every other gesture must leave it alone.
const std::set<std::string_view> kWritingMenus = {
    "mnuRegContent", "mnuRegOrder", "mnuImpOneRule", "mnuImpAllRules", "mnuImpSign",
    "mnuRen",        "mnuDel",      "mnuChangeBook", "mnuAddBook"};

class Session {
 public:
  explicit Session(std::string_view rules)
      : store_(rules.empty() ? kRuleSet : rules),
        ports_{store_,   desktop_, desktop_, desktop_, desktop_,
               desktop_, desktop_, desktop_, desktop_},
        form_(ports_, state_) {
    form_.Form_Load();
  }

  /// One gesture of the user; what it does not ask to be written must not be written.
  void Gesture(Bytes& bytes) {
    const auto before = store_.writes;
    mayWrite_ = false;
    desktop_.answers = static_cast<unsigned>(bytes.Next());
    Act(bytes);
    Demand(mayWrite_ || store_.writes == before, "only a command that saves writes to the store");
    CheckTables();
  }

  void Quit() {
    desktop_.answers = 0xFF;
    Demand(form_.Form_QueryUnload(), "the program can be left when its user agrees to all");
  }

 private:
  void Act(Bytes& bytes) {
    constexpr std::array<const char*, 4> kButtons = {"picUp", "picDown", "cmdCancelOrder",
                                                     "cmdFiltres"};
    const int slot = bytes.Next() % kSlotCount;
    const auto at = static_cast<std::size_t>(slot);
    const int argument = bytes.Next();
    switch (argument % 16) {
      case 0:
      case 1:
        return ChooseMenu(bytes.Next());
      case 2:
      case 3:
        return ChooseRule(bytes);
      case 4:
        return form_.optCriteria[at].Click();
      case 5: {
        desktop_.typed = std::string(bytes.Take(static_cast<std::size_t>(bytes.Next() % 40)));
        return form_.txtBox[at].Type(ToUtf16(desktop_.typed));
      }
      case 6:
        return form_.txtBox[at].KeyDown(bytes.Next());
      case 7:
        return ClickLine(form_.lstBox[at], bytes.Next());
      case 8:
        return form_.cmdAdd[at].Click();
      case 9:
        return form_.cmdDel[at].Click();
      case 10:
        return form_.cmdChange[at].Click();
      case 11:
        return form_.cmdRestore[at].Click();
      case 12:
        mayWrite_ = true;
        return form_.cmdRecord[at].Click();
      case 13:
        return form_.cmdCancelRule[at].Click();
      case 14:
        return ClickLine(bytes.Next() % 2 == 0 ? form_.lstAct : form_.lstRules, bytes.Next());
      default:
        if (bytes.Next() % 3 == 0) return form_.chkEnabled.Click();
        return dynamic_cast<PushButton&>(*form_.Find(kButtons[at])).Click();
    }
  }
  static void ClickLine(ListBox& list, int line) {
    if (list.Count() > 0) list.ClickItem(line % list.Count());
  }
  void ChooseMenu(int number) {
    const auto& entry = MenuTable()[static_cast<std::size_t>(number) % MenuTable().size()];
    if (entry.perRule || entry.name == "mnuQuit") return;
    mayWrite_ = kWritingMenus.contains(entry.name);
    form_.Menu(entry.name).Choose();
  }
  void ChooseRule(Bytes& bytes) {
    constexpr std::array<std::string_view, 6> kArrays = {
        "mnuMod", "mnuRen", "mnuDel", "mnuMerge", "mnuWhatRuleToFile", "mnuWhatRuleToPrint"};
    const auto name = kArrays[static_cast<std::size_t>(bytes.Next()) % kArrays.size()];
    mayWrite_ = kWritingMenus.contains(name);
    form_.RuleMenu(name).Choose(bytes.Next() % (state_.tables.RuleCount + 1));
  }
  void CheckTables() const {
    const auto& tables = state_.tables;
    Demand(tables.RuleCount >= 0 && tables.RuleCount <= kMaxRules, "at most 4096 rules");
    Demand(form_.lstRules.Count() == tables.RuleCount || form_.lstRules.Count() == 0,
           "the list shows the rules");
    for (int slot = 0; slot < kSlotCount; ++slot) {
      Demand(tables.WordCount[static_cast<std::size_t>(slot)] >= 0, "a list has 0 words or more");
    }
  }

  QuietDesktop desktop_;
  RegTextStore store_;
  Ports ports_;
  ProgramState state_;
  frmMorvelle form_;
  bool mayWrite_ = false;
};

}  // namespace

/// The first byte says how many gestures follow, five bytes or so each; the rest is a `.reg` file,
/// or nothing for a rule set that is always the same.
void TryInput(std::string_view input) {
  Bytes bytes(input);
  const auto size = static_cast<std::size_t>(bytes.Next()) * 8;
  Bytes gestures(bytes.Take(size));
  try {
    Session session(bytes.Rest());
    while (gestures.Left()) session.Gesture(gestures);
    session.Quit();
  } catch (const ProgramEnd&) {
    // An unexpected error was shown: an end, but an orderly one.
    return;
  }
}

}  // namespace morvelle
