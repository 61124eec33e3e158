#include "bench/whitelist_bench.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "disk/whole_file.h"
#include "wab/whitelist_file.h"

namespace morvelle::bench {

namespace {

constexpr int kInFile = 100000;
constexpr int kInBook = 50000;

/// Addresses of which some differ in letter case alone.
std::vector<std::string> Addresses(int count, std::mt19937& random) {
  std::vector<std::string> addresses;
  for (int i = 0; i < count; ++i) {
    std::string address;
    for (int length = 4 + static_cast<int>(random() % 10); length > 0; --length) {
      address += static_cast<char>((random() % 8 == 0 ? 'A' : 'a') + random() % 26);
    }
    addresses.push_back(address + "@exemple" + std::to_string(random() % 100) + ".org");
  }
  return addresses;
}

std::string Lines(const std::vector<std::string>& addresses) {
  std::string lines;
  for (const auto& address : addresses) lines += "From :" + address + "\r\n";
  return lines;
}

/// The file read, merged and replaced.
void MergeWhitelist(benchmark::State& state, const std::filesystem::path& file,
                    const std::string& before, const std::vector<std::string>& book) {
  for ([[maybe_unused]] auto step : state) {
    state.PauseTiming();
    std::ofstream(file, std::ios::binary) << before;
    state.ResumeTiming();
    WriteWholeFile(file, MergedWhitelist(*ReadWholeFile(file, kTextFileLimit), book));
  }
}

void SortLines(benchmark::State& state, const std::filesystem::path& file) {
  const auto command = "sort -f -u '" + file.string() + "' -o '" + file.string() + ".trié'";
  for ([[maybe_unused]] auto step : state) {
    if (std::system(command.c_str()) != 0) state.SkipWithError("sort failed");
  }
}

}  // namespace

void RegisterWhitelist(const std::filesystem::path& folder) {
  std::mt19937 random(20031);
  const auto inFile = Addresses(kInFile, random);
  auto book = Addresses(kInBook, random);
  // Half of the book is in the file already.
  for (std::size_t i = 0; i < book.size(); i += 2) book[i] = inFile[i];
  const auto lines = folder / "lignes.txt";
  std::ofstream(lines, std::ios::binary) << Lines(inFile) + Lines(book);
  using benchmark::kMillisecond;
  benchmark::RegisterBenchmark("SortLines", SortLines, lines)->Unit(kMillisecond)->UseRealTime();
  benchmark::RegisterBenchmark("MergeWhitelist", MergeWhitelist, folder / "whitelist.txt",
                               "# K9\r\n" + Lines(inFile), std::move(book))
      ->Unit(kMillisecond)
      ->UseRealTime();
}

}  // namespace morvelle::bench
