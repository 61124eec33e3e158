#pragma once

#include <array>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "app/program.h"
#include "app/start_up.h"
#include "core/displays.h"
#include "core/rule_loader.h"
#include "core/rule_writer.h"
#include "core/word_lists.h"
#include "files/file_choice.h"
#include "files/line_sink.h"
#include "files/prefilter_file.h"
#include "files/rule_export.h"
#include "files/rule_file_reader.h"
#include "ui/controls.h"
#include "ui/frm_version.h"

namespace morvelle {

/// Head of lstAct's first entry, up to the quote before the folder's name, and the entry as
/// designed.
inline constexpr std::string_view kMoveTo = "déplacer vers \""_cp;
inline constexpr std::string_view kMoveToDeletedItems = "déplacer vers \"Éléments supprimés\""_cp;
/// What it says instead where the list of folders is known and the rule's folder is not in it.
inline constexpr std::string_view kMoveToUnknownFolder = "déplacer vers un dossier inconnu"_cp;

/// The main window as state and commands. The controls are its own, under their own names; every
/// handler is a method. A view shows it; without one it works all the same.
class frmMorvelle final : public RuleDisplay, public WordListDisplay, public StartUpWindow {
 public:
  frmMorvelle(Ports& ports, ProgramState& state);
  frmMorvelle(const frmMorvelle&) = delete;
  frmMorvelle& operator=(const frmMorvelle&) = delete;
  ~frmMorvelle() override = default;

  // --- The window itself -------------------------------------------------------------------------
  Frame form;
  /// Load event: starts the program.
  void Form_Load();
  /// The user wants to leave: true when the window may close. Unsaved work is given up only once
  /// every question has been answered.
  bool Form_QueryUnload();
  /// Told by the view: closes the window without a question.
  Handler onClose;

  // --- Rule order --------------------------------------------------------------------------------
  Frame fraOrderRules;
  ListBox lstRules;
  PushButton picUp;
  PushButton picDown;
  PushButton cmdCancelOrder;

  // --- Actions -----------------------------------------------------------------------------------
  Frame fraAct;
  CheckBox chkEnabled;
  ListBox lstAct;
  Label lblActNote;

  // --- Word lists --------------------------------------------------------------------------------
  Frame fraOptions;
  std::deque<OptionButton> optCriteria;
  std::deque<Frame> fraEdit;
  std::deque<Label> lblAbr;
  std::deque<TextBox> txtBox;
  /// Captions of the copy boxes of slots 0 to 2.
  std::deque<Label> lblCop;
  std::deque<TextBox> txtCop;
  std::deque<Frame> fraWord;
  std::deque<ListBox> lstBox;
  std::deque<Label> lblNb;
  std::deque<PushButton> cmdAdd;
  std::deque<PushButton> cmdDel;
  std::deque<PushButton> cmdChange;
  std::deque<PushButton> cmdRestore;
  std::deque<Frame> fraRule;
  std::deque<PushButton> cmdRecord;
  std::deque<PushButton> cmdCancelRule;

  // --- Prefilters and merge ----------------------------------------------------------------------
  Frame fraPreFilters;
  Label lblFiltersNote;
  std::deque<CheckBox> chkFilter;
  PushButton cmdFiltres;
  Frame fraMerge;
  Label lblCrit;
  ListBox lstCrit;
  TextBox txtMerge;
  PushButton cmdFileToMerge;

  StatusBar statBar;

  // --- Menus -------------------------------------------------------------------------------------
  /// An entry of the menu table by name; a per-rule array is in MenuArrays instead.
  [[nodiscard]] MenuItem& Menu(std::string_view name);
  [[nodiscard]] MenuArray& RuleMenu(std::string_view name);
  [[nodiscard]] const std::vector<MenuArray*>& RuleMenus() const { return ruleMenus_; }
  /// Every control that is no menu, for a view that looks them up by name; null when there is none.
  [[nodiscard]] Control* Find(std::string_view name) const;

  // --- State routines ----------------------------------------------------------------------------
  void FillRulesList(bool swapEnds);
  void EnableMnu() override;
  void EnableMnuFiles(bool enable);
  void EnableAll(bool keepContent);
  void EnableMerge(bool enable);
  void EnableCmdADCR(bool add, bool del, bool change, bool restore, int index);
  void EnableCmdEA(bool record, bool cancel);
  void FiltersEnable(bool enable);
  void RulesEnable(bool enable);
  void OrderEnable(bool enable);

  // --- What the rule model shows -----------------------------------------------------------------
  void ShowPanel(int number, std::string_view text) override;
  void BeginLoad() override;
  void LoadMnu(int index, std::string_view text, bool isNew) override;
  void EnableRuleEditing(int index, bool editable) override;
  void EnableContentMenus(bool enable) override;
  void EnableImports() override;
  [[nodiscard]] const std::vector<std::string>& ListedWords(int slot) const override;
  void ShowWordCount(int slot, std::string_view text) override;
  StatusPanels& Panels() override { return *this; }
  void LoadRules() override;
  void TickAutoUpdateBook(bool ticked) override;
  void FinishStart() override;

  // --- Word lists --------------------------------------------------------------------------------
  void FillWordsList(int index);
  void ChangeContent(bool changed);
  void CancelChange();

  // --- Criteria options --------------------------------------------------------------------------
  void InitOptions();

  // --- Address book, tools and help --------------------------------------------------------------
  frmVersion aboutBox;
  /// Told by the view: shows the about box.
  Handler onAbout;
  void EnableWab(bool known) override;
  void ShowWhiteListK9(bool shown) override;

  // --- Opening and leaving a rule ----------------------------------------------------------------
  void InitMod(bool changed);
  void ClearMod();
  void FillListBox(int slot, const std::string& criteriaKey);

  // --- Saving ------------------------------------------------------------------------------------
  /// Whether the edit in hand may be left; unsaved changes are given up when the user agrees.
  bool NoChange();
  void OkForAll();

 private:
  /// Set while code changes controls, so that handlers return at once; nests.
  class Filling {
   public:
    explicit Filling(frmMorvelle& window) : window_(window), before_(window.bFilling) {
      window_.bFilling = true;
    }
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;
    ~Filling() { window_.bFilling = before_; }

   private:
    frmMorvelle& window_;
    bool before_;
  };

  // frm_morvelle.cpp
  void BuildMenus();
  void BuildSlot(int slot);
  void BuildRest();
  void RegisterControls();
  void Register(Control& control);
  void ConnectMenus();
  void ConnectSlot(int slot);
  void ConnectRest();
  void ShowInitialState();
  /// Runs a procedure; an unexpected error is reported under its name and ends the program.
  template <typename Body>
  auto Ending(const char* procedure, Body&& body) {
    return Trap(ports_.dialogs, procedure, std::forward<Body>(body));
  }
  /// As Ending, but the program goes on after the report.
  template <typename Body>
  void Continuing(const char* procedure, Body&& body) {
    TrapAndContinue(ports_.dialogs, procedure, std::forward<Body>(body));
  }

  // rule_list.cpp
  void ShowBookMenus();
  [[nodiscard]] bool HasBookRule() const;
  [[nodiscard]] std::string RuleText(int row) const;
  /// Id of the rule that an entry of the per-rule menus shows. An arrangement in hand moves the
  /// rules of the rows, not the entries.
  [[nodiscard]] std::string RuleOfEntry(int index);
  [[nodiscard]] bool IsActive(int row) const;

  // word_lists.cpp
  void txtBox_Change(int i);
  void txtBox_KeyDown(int i, int keyCode);
  void lstBox_Click(int i);
  void cmdAdd_Click(int i);
  void cmdDel_Click(int i);
  void cmdChange_Click(int i);
  void cmdRestore_Click();
  void cmdCancelContent_Click();
  void AddWord(int i);
  void ShowCopy(int i);
  void EnableRestore();
  /// The open rule was edited: it can be saved, abandoned and put back.
  void ContentEdited();
  void CharacterRefused();
  void CountWord(int i, int difference);
  /// Counts again the words of the list boxes that hold any.
  void RecountWords();

  // criteria_options.cpp
  void ConnectOptions();
  void optCriteria_Click(int i);
  void mnuCriteriaYes_Click();
  void mnuCriteriaNo_Click();
  void mnuContentYes_Click();
  void mnuContentNo_Click();
  void mnuContentAll_Click();
  void mnuContentOne_Click();
  void SetLogic(std::string_view logic);
  void SetFlags(bool otherFirst, bool otherSecond, std::string_view whenFirst,
                std::string_view whenSecond);
  void CheckPair(std::array<bool, 2>& pair, const std::array<bool, 2>& checks,
                 std::string_view firstMenu, std::string_view secondMenu);
  void ShowContentQuestions();
  [[nodiscard]] CriterionRecord& SlotRecord(int slot);

  // actions.cpp
  void mnuMod_Click(int index);
  void chkEnabled_Click();
  void lstAct_Click();
  /// Opens the rule as it is stored, after a reload.
  void OpenStoredRule(const std::string& id);
  void OpenRule(int row, bool modified);
  void FillSlots();
  void ShowFirstSlot();
  void ShowActions();
  /// The folder that the value of a move names; null for an unknown one or another store's.
  [[nodiscard]] const FolderRec* FolderOf(std::string_view value);
  /// What lstAct says of a rule with that move; `former`, unless it is empty, where the folder is
  /// unknown.
  [[nodiscard]] std::string MoveText(std::string_view value, const std::string& former);
  /// Whether lstAct shows an action selected beside that one.
  [[nodiscard]] bool OtherActionSelected(int item) const;
  void SelectAction(int item);
  void TakeOverLogic();
  void ForgetOpenRule();
  /// Opens the rule of a row that the store does not know yet, as modified, and remembers it, with
  /// the words of the word tables, as it was created.
  void OpenNewRule(int row);
  void RestoreNewRule();
  /// Gives the new rule another id where another program has made a rule under its own meanwhile;
  /// false when none is left.
  [[nodiscard]] bool SettleNewId(int row);
  /// Empties the editing controls; nothing is read again.
  void ClearEditor();
  /// Leaves the rule that is open, if any, once its changes have been given up.
  void CloseRule();

  // address_book.cpp
  void mnuAddBook_Click();
  void mnuChangeBook_Click();
  void mnuAutoUpdateBook_Click();
  void mnuWhiteListK9_Click();
  /// Makes the address-book rule and opens it.
  void AddRuleFromWab();
  /// Puts the book's addresses into the address-book rule that there is, and opens it.
  void ChangeBook();
  /// Leaves the rule that is open; its changes have been given up.
  void LeaveForBook();
  /// Makes the words those of the sender list, and shows them.
  void ShowBookWords(std::vector<std::string> words);

  // tools.cpp
  void ConnectTools();
  void mnuStore_Click();
  void mnuWab_Click();
  void mnufiles_Click();
  void mnuSilent_Click();
  void mnuHelp_Click();
  void mnuPropos_Click();
  /// The page of the manual that tells about what the window shows.
  [[nodiscard]] std::string HelpPage() const;

  // rule_lifecycle.cpp
  void ConnectLifecycle();
  void mnuAdd_Click();
  void mnuDel_Click(int index);
  RegistryStatus DelMailOrder_Click(int row);
  void mnuRen_Click(int index);
  /// Asks for a rule's name until it can be used; nothing when the user gives up.
  struct NameQuestion {
    std::string prompt;
    std::string title;
    std::string proposal;
    int ownRow;  ///< The rule that bears the name already; -1 for a new one.
    std::string_view usedMessage;
    int usedStyle;
  };
  /// Asks until the name has no fault; nothing when the user cancels.
  [[nodiscard]] std::optional<std::string> AskRuleName(const NameQuestion& question);
  [[nodiscard]] bool DeleteRule(int row);
  [[nodiscard]] bool RenameRule(int row, const std::string& name);
  [[nodiscard]] bool AgreesToDrop();
  [[nodiscard]] bool MayLeave();
  void mnuRegContent_Click();
  void mnuRegOrder_Click();
  /// False when the rule could not be stored: it then stays open, modified and whole.
  [[nodiscard]] bool SaveOpenRule(bool withOrder);
  [[nodiscard]] bool WriteOpenRule(bool withOrder);
  [[nodiscard]] bool SaveOrder();
  /// Reads the rule set again; the line that is current stays so with its rule.
  void Reload();
  void mnuQuit_Click();

  // --- Files and paper ---
  // rule_files.cpp
  void ConnectFiles();
  [[nodiscard]] FileChoice Files();
  void mnuWhatRuleToFile_Click(int index);
  void mnuAllRulesToFile_Click();
  void MailToFile(bool oneRule, int row);
  void ImportRules(const char* procedure, RuleFileKind kind);
  void TellLeftOut(const RuleExport& writers);
  // printing.cpp
  void mnuWhatRuleToPrint_Click(int index);
  void mnuPrintAllRules_Click();
  void PrintRules(bool oneRule, int row);
  // signatures.cpp
  void mnuExpSign_Click();
  void mnuImpSign_Click();
  // prefilters.cpp
  void chkFilter_Click(int i);
  void cmdFilters_Click();
  [[nodiscard]] std::filesystem::path PrefilterFile(std::size_t i) const;
  [[nodiscard]] SlotWords CheckedPrefilters();
  /// Whether no list has more words than can be counted; says so when one has.
  [[nodiscard]] bool CanBeCounted(const SlotWords& words);
  /// The word tables were added to: the rule is shown with them, as modified.
  void ShowAddedWords();
  // merge.cpp
  void mnuMerge_Click(int index);
  void ShowMerge();
  void cmdFileToMerge_Click();
  /// The lists of the open rule and those of another, as one rule has them.
  struct JoinedLists {
    SlotWords words;
    std::array<std::string, kSlotCount> flags;
  };
  /// Joins the other's lists to what the list boxes show; false, after saying why, when they cannot
  /// be joined.
  [[nodiscard]] bool Join(const RuleBlock& other, JoinedLists& joined);
  void TakeJoined(const RuleBlock& other, JoinedLists joined);

  // rule_order.cpp
  void ConnectOrder();
  void mnuChangeOrder_Click();
  void mnuArrange_Click();
  void ArrangeRules();
  void picUp_Click();
  void picDown_Click();
  void cmdCancel_Click();
  void StartOrdering();
  void OrderEdited();
  void SwapLines(int upper);
  [[nodiscard]] std::string CurrentRule() const;
  void MakeCurrent(const std::string& id);

  Ports& ports_;
  ProgramState& state_;
  RuleTables& tables_;
  EditingState& editing_;
  Program program_;
  Messages& messages_;
  WordLists wordLists_;
  RuleLoader loader_;
  RuleWriter writer_;

  std::deque<MenuItem> menuItems_;
  std::deque<MenuArray> menuArrays_;
  std::map<std::string_view, MenuItem*> menus_;
  std::vector<MenuArray*> ruleMenus_;
  std::map<std::string_view, Control*> controls_;

  /// A rule that the store does not know, as it was when it was opened.
  struct CreatedRule {
    RuleRecord rule;
    std::uint8_t actions = 0;
    std::uint8_t criteria = 0;
    std::array<CriterionRecord, kSlotCount> slots;
    std::array<std::vector<std::string>, kSlotCount> words;
  };
  CreatedRule created_;

  /// Checked state of the five prefilters, as the handlers see it.
  std::array<bool, 5> abFilter{};
  /// Name of the user's own prefilter file, and where it lies.
  std::string sCustomFilter;
  std::filesystem::path customFilterFile_;

  bool bFilling = false;
  bool bFromList = false;
  std::string sWord;
  std::uint8_t nMode = 0;
  std::uint8_t nCurList = 0;
  std::uint8_t SelectedActionCount = 0;
  std::array<bool, 2> abContainsYesNo{};
  std::array<bool, 2> abContainsAllOne{};
};

}  // namespace morvelle
