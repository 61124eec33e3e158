#include "bench/command_bench.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <string>

#include "bench/loaded_rules.h"

namespace morvelle::bench {

namespace {

using Clock = std::chrono::steady_clock;

/// What the commands work on.
struct Bench {
  std::filesystem::path file;
  int rules;
  Kept kept;
};

/// The window on the rule set; each command is timed from the gesture to its return.
class Commands {
 public:
  explicit Commands(const Bench& bench) : rules_(bench.rules), loaded_(bench.file, bench.kept) {
    loaded_.Desktop().agrees = true;
  }

  void Add() {
    loaded_.Desktop().typed = "Neuve " + OtherName();
    Form().Menu("mnuAdd").Choose();
  }
  void SaveNew() { Form().cmdRecord[0].Click(); }
  void Delete() { Form().RuleMenu("mnuDel").Choose(rules_ / 2); }
  void Rename() {
    loaded_.Desktop().typed = "Nom " + OtherName();
    Form().RuleMenu("mnuRen").Choose(rules_ / 2);
  }
  void StartOrdering() {
    Form().Menu("mnuChangeOrder").Choose();
    Form().lstRules.ClickItem(rules_ / 2);
  }
  void Move() { (++number_ % 2 == 0 ? Form().picUp : Form().picDown).Click(); }
  void SaveOrder() { Form().Menu("mnuRegOrder").Choose(); }
  void ExpectRules(int less, benchmark::State& state) const {
    if (loaded_.State().tables.RuleCount != rules_ - less) state.SkipWithError("other rules");
  }
  void ExpectPending(bool pending, benchmark::State& state) const {
    if (loaded_.State().editing.bOrderChanged != pending)
      state.SkipWithError("order not as it was");
  }

 private:
  /// The file keeps the names of earlier benchmarks.
  static std::string OtherName() { return std::to_string(Clock::now().time_since_epoch().count()); }
  frmMorvelle& Form() { return loaded_.Form(); }

  int rules_;
  LoadedRules loaded_;
  int number_ = 0;
};

void Time(benchmark::State& state, const std::function<void()>& command) {
  const auto start = Clock::now();
  command();
  state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
}

void LoadFromMemory(benchmark::State& state, const std::filesystem::path& file) {
  LoadedRules loaded(file, Kept::InMemory);
  for ([[maybe_unused]] auto step : state) {
    ProgramState fresh;
    frmMorvelle form(loaded.AllPorts(), fresh);
    Time(state, [&] { form.Form_Load(); });
  }
}

void AddRule(benchmark::State& state, const Bench& bench) {
  Commands commands(bench);
  for ([[maybe_unused]] auto step : state) {
    commands.Delete();
    Time(state, [&] { commands.Add(); });
    commands.SaveNew();
    commands.ExpectRules(0, state);
  }
}

void SaveNewRule(benchmark::State& state, const Bench& bench) {
  Commands commands(bench);
  for ([[maybe_unused]] auto step : state) {
    commands.Delete();
    commands.Add();
    Time(state, [&] { commands.SaveNew(); });
    commands.ExpectPending(false, state);
  }
}

void DeleteRule(benchmark::State& state, const Bench& bench) {
  Commands commands(bench);
  for ([[maybe_unused]] auto step : state) {
    Time(state, [&] { commands.Delete(); });
    commands.ExpectRules(1, state);
    commands.Add();
    commands.SaveNew();
  }
}

void RenameRule(benchmark::State& state, const Bench& bench) {
  Commands commands(bench);
  for ([[maybe_unused]] auto step : state) Time(state, [&] { commands.Rename(); });
}

void MoveRule(benchmark::State& state, const Bench& bench) {
  Commands commands(bench);
  commands.StartOrdering();
  for ([[maybe_unused]] auto step : state) {
    Time(state, [&] { commands.Move(); });
    commands.ExpectPending(true, state);
  }
}

void SaveOrder(benchmark::State& state, const Bench& bench) {
  Commands commands(bench);
  commands.StartOrdering();
  for ([[maybe_unused]] auto step : state) {
    commands.Move();
    Time(state, [&] { commands.SaveOrder(); });
    commands.ExpectPending(false, state);
  }
}

}  // namespace

void RegisterCommands(const std::filesystem::path& file, int rules) {
  const auto add = [](const std::string& name, auto&& body, const auto& on) {
    benchmark::RegisterBenchmark(name.c_str(), body, on)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
  };
  add(kLoadFromMemory, LoadFromMemory, file);
  for (const auto kept : {Kept::InMemory, Kept::InFile}) {
    const Bench bench{file, rules, kept};
    const std::string where = kept == Kept::InFile ? kInFile : "";
    // A move is short: letting the measure choose its number of repeats would take minutes.
    benchmark::RegisterBenchmark(("MoveRule" + where).c_str(), MoveRule, bench)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1000);
    add("SaveOrder" + where, SaveOrder, bench);
    add("RenameRule" + where, RenameRule, bench);
    add("DeleteRule" + where, DeleteRule, bench);
    add("AddRule" + where, AddRule, bench);
    add("SaveNewRule" + where, SaveNewRule, bench);
  }
}

}  // namespace morvelle::bench
