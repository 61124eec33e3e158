#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "bench/command_bench.h"
#include "bench/loaded_rules.h"
#include "bench/rule_set.h"
#include "bench/whitelist_bench.h"

/// The program at its limit: 4096 rules of four word lists of eight words and one action. Every
/// figure is set against another one of the same run.
namespace morvelle::bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRules = 4096;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A field of /proc/self/status in bytes (the kernel gives kibibytes).
double MemoryField(const std::string& field) {
  std::ifstream status("/proc/self/status");
  for (std::string name; status >> name;) {
    double value = 0;
    if (name == field + ":" && status >> value) return value * 1024;
  }
  return 0;
}

/// The folder of the rule set, made once in a run.
class Workplace {
 public:
  Workplace() : folder_(std::filesystem::temp_directory_path() / "morvelle-bench") {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    WriteRuleSet(RuleSetFile(), kRules);
  }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace() { std::filesystem::remove_all(folder_); }
  [[nodiscard]] std::filesystem::path RuleSetFile() const { return folder_ / "regles.reg"; }

 private:
  std::filesystem::path folder_;
};

/// The number that a command prints.
double NumberFrom(const std::string& command, benchmark::State& state) {
  double number = 0;
  std::FILE* output = popen(command.c_str(), "r");
  const bool read = output != nullptr && std::fscanf(output, "%lf", &number) == 1;
  if (output == nullptr || pclose(output) != 0 || !read) state.SkipWithError(command.c_str());
  return number;
}

/// The yardstick: iconv turns the same file into UTF-8.
void Iconv(benchmark::State& state, const std::filesystem::path& file) {
  const auto command = "iconv -f UTF-16LE -t UTF-8 '" + file.string() + "' > /dev/null";
  for ([[maybe_unused]] auto step : state) {
    if (std::system(command.c_str()) != 0) state.SkipWithError("iconv failed");
  }
}

void Load(benchmark::State& state, const std::filesystem::path& file) {
  for ([[maybe_unused]] auto step : state) {
    const auto start = Clock::now();
    const LoadedRules loaded(file);
    // Letting go of the rule set is no part of loading it.
    state.SetIterationTime(SecondsSince(start));
  }
}

/// One word more in one rule: the file written and the rule set read again, as the window does.
void SaveOneRule(benchmark::State& state, const std::filesystem::path& file,
                 const std::shared_ptr<int>& saved) {
  LoadedRules loaded(file);
  auto& form = loaded.Form();
  for ([[maybe_unused]] auto step : state) {
    form.RuleMenu("mnuMod").Choose(kRules / 2);
    const auto word = ToUtf16("mot " + std::to_string(++*saved));
    form.txtBox[0].Type(word);
    form.txtBox[0].KeyDown(kKeyReturn);
    const auto start = Clock::now();
    form.cmdRecord[0].Click();
    state.SetIterationTime(SecondsSince(start));
    if (loaded.State().editing.bContentChanged) state.SkipWithError("not saved");
  }
}

/// Chooses an entry of the menus, the file dialog answered with that file; gives the seconds.
double TimeOfMenu(LoadedRules& loaded, const char* menu, const std::filesystem::path& chosen) {
  loaded.Desktop().agrees = true;
  loaded.Desktop().chosenFile = chosen;
  const auto start = Clock::now();
  loaded.Form().Menu(menu).Choose();
  return SecondsSince(start);
}

void ExportAll(benchmark::State& state, const std::filesystem::path& file) {
  LoadedRules loaded(file);
  const auto exported = file.parent_path() / "tout.moe";
  for ([[maybe_unused]] auto step : state) {
    state.SetIterationTime(TimeOfMenu(loaded, "mnuExpAllRules", exported));
  }
}

/// Into an identity with one rule, of the same name as the first of the file: the rest are taken.
void ImportAll(benchmark::State& state, const std::filesystem::path& whole) {
  const auto exported = whole.parent_path() / "a-importer.moe";
  const auto file = whole.parent_path() / "une.reg";
  LoadedRules all(whole);
  TimeOfMenu(all, "mnuExpAllRules", exported);
  for ([[maybe_unused]] auto step : state) {
    WriteRuleSet(file, 1);
    LoadedRules loaded(file);
    state.SetIterationTime(TimeOfMenu(loaded, "mnuImpAllRules", exported));
    if (loaded.State().tables.RuleCount != kRules) state.SkipWithError("not all are imported");
  }
}

/// The most memory that loading takes, in bytes, asked of a fresh process.
void Memory(benchmark::State& state, const std::string& program,
            const std::filesystem::path& file) {
  for ([[maybe_unused]] auto step : state) {
    const double bytes = NumberFrom(program + " --memory '" + file.string() + "'", state);
    state.SetIterationTime(bytes / static_cast<double>(std::filesystem::file_size(file)));
  }
}

int PrintMemory(const std::filesystem::path& file) {
  const double before = MemoryField("VmRSS");
  const LoadedRules loaded(file);
  std::printf("%.0f\n", MemoryField("VmHWM") - before);
  return EXIT_SUCCESS;
}

/// From the start of the program to the window's first idle moment with everything drawn.
void Window(benchmark::State& state, const std::string& program,
            const std::filesystem::path& file) {
  for ([[maybe_unused]] auto step : state) {
    state.SetIterationTime(NumberFrom(program + " '" + file.string() + "' 2> /dev/null", state));
  }
}

/// Keeps the time of each benchmark beside printing it: of repetitions the one in the middle, which
/// a disk or another program that is busy for a moment does not move.
class Keeper final : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs) {
      const bool counts =
          run.run_type == Run::RT_Iteration ? run.repetitions <= 1 : run.aggregate_name == "median";
      if (run.error_occurred || !counts) continue;
      const auto name = run.run_name.function_name;
      seconds_[name] = run.real_accumulated_time / static_cast<double>(run.iterations);
    }
    ConsoleReporter::ReportRuns(runs);
  }
  void PrintRatio(const char* what, const char* left, const char* right, double bound) const {
    if (Known(left) && Known(right)) Print(what, Seconds(left) / Seconds(right), bound);
  }
  void PrintDifference(const char* what, const char* left, const char* right, double bound) const {
    if (Known(left) && Known(right)) Print(what, Seconds(left) - Seconds(right), bound);
  }
  void PrintFigure(const char* what, const char* name, double bound) const {
    if (Known(name)) Print(what, Seconds(name), bound);
  }

 private:
  [[nodiscard]] bool Known(const char* name) const { return seconds_.count(name) != 0; }
  [[nodiscard]] double Seconds(const char* name) const { return seconds_.at(name); }
  static void Print(const char* what, double figure, double bound) {
    std::printf("%-66s %6.2f  (at most %.2f)\n", what, figure, bound);
  }

  std::map<std::string, double> seconds_;
};

void RegisterAll(const std::string& program, const std::filesystem::path& file) {
  using benchmark::kMillisecond;
  benchmark::RegisterBenchmark("Iconv", Iconv, file)->Unit(kMillisecond)->UseRealTime();
  benchmark::RegisterBenchmark("Load", Load, file)->Unit(kMillisecond)->UseManualTime();
  benchmark::RegisterBenchmark("Memory", Memory, program, file)->Iterations(1)->UseManualTime();
  const auto probe = std::filesystem::path(program).parent_path() / "window_probe";
  if (std::getenv("DISPLAY") != nullptr && std::filesystem::exists(probe)) {
    const std::filesystem::path sample = MORVELLE_SAMPLE_FILE;
    benchmark::RegisterBenchmark("WindowOnSample", Window, probe.string(), sample)
        ->Unit(kMillisecond)
        ->Iterations(1)
        ->UseManualTime();
    benchmark::RegisterBenchmark("WindowOnRuleSet", Window, probe.string(), file)
        ->Unit(kMillisecond)
        ->Iterations(1)
        ->UseManualTime();
  }
  RegisterWhitelist(file.parent_path());
  benchmark::RegisterBenchmark("ExportAll", ExportAll, file)->Unit(kMillisecond)->UseManualTime();
  benchmark::RegisterBenchmark("ImportAll", ImportAll, file)->Unit(kMillisecond)->UseManualTime();
  // Last, for these change the file.
  RegisterCommands(file, kRules);
  benchmark::RegisterBenchmark("SaveOneRule", SaveOneRule, file, std::make_shared<int>(0))
      ->Unit(kMillisecond)
      ->UseManualTime();
}

}  // namespace

int Main(int argc, char** argv) {
  if (argc == 3 && std::string(argv[1]) == "--memory") return PrintMemory(argv[2]);
  const Workplace workplace;
  RegisterAll(std::filesystem::absolute(argv[0]).string(), workplace.RuleSetFile());
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
  Keeper keeper;
  benchmark::RunSpecifiedBenchmarks(&keeper);
  std::printf("\n");
  keeper.PrintRatio("loading / iconv on the same file", "Load", "Iconv", 2);
  keeper.PrintFigure("memory taken by loading / size of the file", "Memory", 4);
  keeper.PrintRatio("saving one rule / loading", "SaveOneRule", "Load", 1);
  keeper.PrintRatio("exporting all rules / loading", "ExportAll", "Load", 1);
  keeper.PrintRatio("importing all rules / loading", "ImportAll", "Load", 1);
  keeper.PrintRatio("merging a whitelist / sort -f -u on the same lines", "MergeWhitelist",
                    "SortLines", 3);
  for (const auto& [name, what] : kCommands) {
    keeper.PrintRatio((std::string(what) + " / loading from memory").c_str(), name, kLoadFromMemory,
                      1);
  }
  for (const auto& [name, what] : kCommands) {
    keeper.PrintRatio((std::string(what) + ", file written / loading the file").c_str(),
                      (std::string(name) + kInFile).c_str(), "Load", 1);
  }
  keeper.PrintDifference("window on the rule set, seconds later than on the sample",
                         "WindowOnRuleSet", "WindowOnSample", 0.5);
  return EXIT_SUCCESS;
}

}  // namespace morvelle::bench

int main(int argc, char** argv) { return morvelle::bench::Main(argc, argv); }
