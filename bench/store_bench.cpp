#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "bench/rule_set.h"
#include "platform/registry_regfile.h"

namespace morvelle {

namespace {

constexpr int kRules = 4096;

/// The rule set in a folder of its own.
class Workplace {
 public:
  Workplace() : folder_(std::filesystem::temp_directory_path() / "morvelle-store-bench") {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    bench::WriteRuleSet(File(), kRules);
  }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace() { std::filesystem::remove_all(folder_); }

  [[nodiscard]] std::filesystem::path File() const { return folder_ / "regles.reg"; }
  [[nodiscard]] std::unique_ptr<RegistryStore> Open(benchmark::State& state) const {
    auto opened = OpenRegFile(File(), MakeHostFiles(), std::chrono::system_clock::now);
    if (opened.store == nullptr) state.SkipWithError("the rule set cannot be opened");
    return std::move(opened.store);
  }

 private:
  std::filesystem::path folder_;
};

/// The yardstick: iconv turns the same file into UTF-8.
void Iconv(benchmark::State& state) {
  const Workplace workplace;
  const std::string command =
      "iconv -f UTF-16 -t UTF-8 '" + workplace.File().string() + "' > /dev/null";
  for ([[maybe_unused]] auto step : state) {
    if (std::system(command.c_str()) != 0) state.SkipWithError("iconv failed");
  }
}

void Open(benchmark::State& state) {
  const Workplace workplace;
  for ([[maybe_unused]] auto step : state) {
    const auto start = std::chrono::steady_clock::now();
    const auto store = workplace.Open(state);
    // Letting go of the store is no part of opening it.
    state.SetIterationTime(
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
}

/// Reads the values of one key as the rule loader does: description first, then the bytes.
class Walk {
 public:
  explicit Walk(RegistryStore& store) : store_(store) {}

  void Rule(const std::string& id) {
    constexpr std::array<std::string_view, 3> kRule = {"Name", "Enabled", "Version"};
    constexpr std::array<std::string_view, 2> kAction = {"Type", "Flags"};
    constexpr std::array<std::string_view, 5> kCriterion = {"Type", "Flags", "Logic", "Value",
                                                            "ValueType"};
    constexpr std::array<std::string_view, 1> kOrder = {"Order"};
    Key(id, kRule);
    Key(id + "\\Actions", kOrder);
    Key(id + "\\Actions\\000", kAction);
    Key(id + "\\Criteria", kOrder);
    for (int i = 0; i < bench::kCriteria; ++i) {
      Key(id + "\\Criteria\\00" + std::to_string(i), kCriterion);
    }
  }
  [[nodiscard]] int Values() const { return values_; }

 private:
  template <std::size_t Count>
  void Key(const std::string& path, const std::array<std::string_view, Count>& names) {
    KeyHandle key = 0;
    if (store_.OpenKey(std::string(bench::kMailKey) + path, KeyAccess::ReadWrite, key) != 0) {
      return;
    }
    for (const auto name : names) {
      ValueKind kind{};
      std::uint32_t size = 0;
      if (store_.DescribeValue(key, name, kind, size) != 0) continue;
      if (store_.ReadValue(key, name, data_) == 0) ++values_;
    }
    store_.CloseKey(key);
  }

  RegistryStore& store_;
  std::string data_;
  int values_ = 0;
};

std::string RuleId(int rule) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto number = static_cast<std::size_t>(rule);
  return {kDigits[number >> 8U], kDigits[(number >> 4U) & 0xFU], kDigits[number & 0xFU]};
}

void ReadEveryValue(benchmark::State& state) {
  const Workplace workplace;
  const auto store = workplace.Open(state);
  for ([[maybe_unused]] auto step : state) {
    Walk walk(*store);
    for (int rule = 0; rule < kRules; ++rule) walk.Rule(RuleId(rule));
    if (walk.Values() != kRules * 27) state.SkipWithError("values are missing");
  }
}

/// Changes one rule and writes the file, as saving a rule does.
void SaveOneRule(benchmark::State& state) {
  const Workplace workplace;
  const auto store = workplace.Open(state);
  store->GiveKey(bench::kMailKey, Import::Replaces);
  int number = 0;
  for ([[maybe_unused]] auto step : state) {
    KeyHandle key = 0;
    store->BeginBatch();
    store->OpenKey(std::string(bench::kMailKey) + "7FF", KeyAccess::ReadWrite, key);
    store->SetValue(key, "Name", ValueKind::String, "Nom " + std::to_string(++number) + '\0');
    store->CloseKey(key);
    if (store->CommitBatch(false) != CommitOutcome::Done) state.SkipWithError("not written");
  }
}

}  // namespace

BENCHMARK(Open)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(Iconv)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ReadEveryValue)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SaveOneRule)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace morvelle
