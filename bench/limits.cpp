#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/messages/text.h"
#include "bench/loaded_rules.h"
#include "bench/rule_set.h"

/// limits: every command of the window on the rule sets of the limits, the store being a file on
/// disk. Prints a Markdown table of milliseconds and of the most memory taken; fails when a command
/// lasts more than a second or the program takes more than 200 MB.
namespace morvelle::bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kLongestMilliseconds = 1000;
constexpr double kMostMegabytes = 200;
/// Each command is run that often; its shortest time counts.
constexpr int kRounds = 3;
/// The list that a subject's and a body's words stand in.
constexpr std::size_t kSubject = 1;

struct Size {
  int rules;
  int words;
};

constexpr std::array<Size, 6> kSizes = {
    {{256, 1000}, {1024, 1000}, {4096, 1000}, {256, 8000}, {256, 32767}, {4096, 32767}}};

struct Figure {
  std::string what;
  double value;
};

void Expect(bool holds, const char* what) {
  if (!holds) throw std::runtime_error(what);
}

/// The window on one rule set. A round leaves it with as many rules as before.
class Round {
 public:
  Round(std::filesystem::path folder, Size size, int number, std::vector<Figure>& figures)
      : folder_(std::move(folder)), size_(size), number_(number), figures_(figures) {}

  void Run() {
    WriteRuleSet(folder_ / "une.reg", 1, size_.words);
    {
      std::unique_ptr<LoadedRules> loaded;
      Time("start", [&] { loaded = std::make_unique<LoadedRules>(folder_ / "regles.reg"); });
      Prepare(*loaded);
      Words();
      Files();
      Lifecycle();
      Order();
      AddedWords();
      Book();
      Time("the quit question", [&] { Expect(Form().Form_QueryUnload(), "does not quit"); });
    }
    LoadedRules into(folder_ / "une.reg");
    Prepare(into);
    into.Desktop().chosenFile = folder_ / "tout.moe";
    Time("importing all", [&] { Form().Menu("mnuImpAllRules").Choose(); });
    Expect(into.State().tables.RuleCount == size_.rules, "not all are imported");
  }

 private:
  frmMorvelle& Form() { return loaded_->Form(); }
  SilentDesktop& Desktop() { return loaded_->Desktop(); }
  [[nodiscard]] bool IsEdited() const { return loaded_->State().editing.bContentChanged; }

  void Prepare(LoadedRules& loaded) {
    loaded_ = &loaded;
    Desktop().agrees = true;
    Desktop().hasPaper = true;
    Desktop().addresses = LimitWords(size_.words);
    Desktop().addresses.back() = NewWord();
  }

  /// A word that no list holds yet, so that each save has something to write.
  [[nodiscard]] std::string NewWord() const { return "mot " + std::to_string(number_); }

  void Time(const char* what, const std::function<void()>& command) {
    const auto start = Clock::now();
    command();
    const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
    for (auto& figure : figures_) {
      if (figure.what != what) continue;
      figure.value = std::min(figure.value, taken.count());
      return;
    }
    figures_.push_back({what, taken.count()});
  }

  void Save(const char* what) {
    Time(what, [&] { Form().Menu("mnuRegContent").Choose(); });
    Expect(!IsEdited(), "not saved");
  }

  void Words() {
    Time("opening the rule with the long list",
         [&] { Form().RuleMenu("mnuMod").Choose(kLongListRow); });
    Time("showing its list", [&] { Form().optCriteria[kSubject].Click(); });
    auto& list = Form().lstBox[kSubject];
    Expect(list.Count() == size_.words, "the long list is not there");
    list.ClickItem(size_.words / 2);
    Time("deleting a word", [&] { Form().cmdDel[kSubject].Click(); });
    Form().txtBox[kSubject].Type(ToUtf16(NewWord()));
    Time("adding a word", [&] { Form().cmdAdd[kSubject].Click(); });
    Expect(IsEdited() && list.Count() == size_.words, "the new word is not there");
    Time("restoring the rule", [&] { Form().cmdRestore[kSubject].Click(); });
    list.ClickItem(size_.words / 2);
    Form().cmdDel[kSubject].Click();
    Form().txtBox[kSubject].Type(ToUtf16(NewWord()));
    Form().cmdAdd[kSubject].Click();
    Save("saving the rule");
  }

  void Files() {
    Desktop().chosenFile = folder_ / "une.roe";
    Time("exporting the rule with the long list",
         [&] { Form().RuleMenu("mnuWhatRuleToFile").Choose(kLongListRow); });
    Desktop().chosenFile = folder_ / "tout.moe";
    Time("exporting all", [&] { Form().Menu("mnuExpAllRules").Choose(); });
    Time("printing all, to the printer", [&] { Form().Menu("mnuPrintAllRules").Choose(); });
  }

  void Lifecycle() {
    const int row = size_.rules - 1;
    Time("deleting a rule", [&] { Form().RuleMenu("mnuDel").Choose(row); });
    Expect(loaded_->State().tables.RuleCount == row, "not deleted");
    Desktop().typed = "Neuve";
    Time("adding a rule", [&] { Form().Menu("mnuAdd").Choose(); });
    Save("saving the new rule");
    Desktop().typed = "Autre";
    Time("renaming a rule", [&] { Form().RuleMenu("mnuRen").Choose(row); });
    Expect(loaded_->State().tables.RuleAt(row).Name == "Autre", "not renamed");
  }

  void Order() {
    const auto isPending = [&] { return loaded_->State().editing.bOrderChanged; };
    Form().Menu("mnuChangeOrder").Choose();
    Form().lstRules.ClickItem(size_.rules / 2);
    Time("moving a rule", [&] { Form().picUp.Click(); });
    Expect(isPending(), "not moved");
    Time("saving the order", [&] { Form().Menu("mnuRegOrder").Choose(); });
    Expect(!isPending(), "the order is not saved");
    Time("arranging the rules", [&] { Form().Menu("mnuArrange").Choose(); });
    Time("giving the arrangement up", [&] { Form().cmdCancelOrder.Click(); });
    Expect(!isPending(), "the arrangement is pending");
  }

  void AddedWords() {
    const auto given = [&](const char* what, std::size_t slot) {
      Expect(IsEdited() && Form().lstBox[slot].Count() == size_.words, what);
      // The button of the list that is shown.
      Time("giving up the rule", [&] {
        for (auto& button : Form().cmdCancelRule) button.Click();
      });
    };
    Form().RuleMenu("mnuMod").Choose(kShortRow);
    Desktop().chosenFile = Prefilter();
    Form().chkFilter[4].Click();
    Time("adding the words of a prefilter", [&] { Form().cmdFiltres.Click(); });
    given("no prefilter words", kSubject + 1);
    Form().RuleMenu("mnuMerge").Choose(kShortRow);
    Desktop().chosenFile = folder_ / "une.roe";
    Time("merging a rule", [&] { Form().cmdFileToMerge.Click(); });
    given("not merged", kSubject);
  }

  /// A prefilter with as many words for the body of a message.
  std::filesystem::path Prefilter() {
    auto file = folder_ / "liste.oe";
    std::ofstream stream(file, std::ios::binary);
    stream << std::string(FromUtf16Lossy(u"Type de crit\u00E8re")) << "\r\n9\r\n";
    for (const auto& word : LimitWords(size_.words)) stream << word << "\r\n";
    stream << "EOF\r\nEOR\r\n";
    return file;
  }

  void Book() {
    Time("refreshing the address-book rule", [&] { Form().Menu("mnuChangeBook").Choose(); });
    Expect(IsEdited() && Form().lstBox[0].Count() == size_.words, "the book is not read");
    Save("saving the address-book rule");
  }

  std::filesystem::path folder_;
  Size size_;
  int number_;
  std::vector<Figure>& figures_;
  LoadedRules* loaded_ = nullptr;
};

/// Runs work in a process of its own, so that one size's memory is not another's.
void InChild(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    try {
      work();
    } catch (const std::exception& failure) {
      std::fprintf(stderr, "%s\n", failure.what());
      _exit(EXIT_FAILURE);
    }
    _exit(EXIT_SUCCESS);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
    throw std::runtime_error("a size failed");
  }
}

void Measure(const std::filesystem::path& folder, Size size) {
  std::vector<Figure> figures;
  for (int round = 0; round < kRounds; ++round) {
    Round(folder, size, round, figures).Run();
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  figures.push_back({"most memory (MB)", static_cast<double>(usage.ru_maxrss) * 1024 / 1e6});
  std::ofstream file(folder / "figures");
  for (const auto& figure : figures) file << figure.what << '\t' << figure.value << '\n';
}

std::vector<Figure> FiguresOf(const std::filesystem::path& folder, Size size) {
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  InChild([&] { WriteRuleSet(folder / "regles.reg", size.rules, size.words); });
  InChild([&] { Measure(folder, size); });
  std::vector<Figure> figures;
  std::ifstream file(folder / "figures");
  for (std::string what; std::getline(file, what, '\t');) {
    double value = 0;
    file >> value >> std::ws;
    figures.push_back({what, value});
  }
  std::filesystem::remove_all(folder);
  return figures;
}

bool PrintTable(const std::vector<std::vector<Figure>>& columns) {
  std::printf("| Rules, words of the longest list |");
  for (const auto& size : kSizes) std::printf(" %d, %d |", size.rules, size.words);
  std::printf("\n|:---|");
  for (std::size_t i = 0; i < kSizes.size(); ++i) std::printf("---:|");
  std::printf("\n");
  bool held = true;
  for (std::size_t row = 0; row < columns.front().size(); ++row) {
    const bool isMemory = row + 1 == columns.front().size();
    std::printf("| %s |", columns.front()[row].what.c_str());
    for (const auto& column : columns) {
      const double value = column[row].value;
      held = held && value <= (isMemory ? kMostMegabytes : kLongestMilliseconds);
      std::printf(" %.*f |", value < 10 ? 2 : 0, value);
    }
    std::printf("\n");
  }
  return held;
}

}  // namespace

int LimitsMain(const std::filesystem::path& folder) {
  std::vector<std::vector<Figure>> columns;
  columns.reserve(kSizes.size());
  for (const auto& size : kSizes) columns.push_back(FiguresOf(folder, size));
  if (PrintTable(columns)) return EXIT_SUCCESS;
  std::fprintf(stderr, "a command lasts more than a second, or takes more than 200 MB\n");
  return EXIT_FAILURE;
}

}  // namespace morvelle::bench

int main() {
  try {
    return morvelle::bench::LimitsMain(std::filesystem::temp_directory_path() / "morvelle-limits");
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return EXIT_FAILURE;
  }
}
