#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "fuzz/fuzzer.h"

/// Runs every file of the folders and every file given through one fuzz program's TryInput: the
/// kept inputs, crashes of old among them, as a test that needs no fuzzing engine.
int main(int argc, char** argv) {
  std::vector<std::filesystem::path> files;
  for (const std::filesystem::path given : std::vector<std::string>(argv + 1, argv + argc)) {
    if (!std::filesystem::is_directory(given)) {
      files.push_back(given);
      continue;
    }
    for (const auto& entry : std::filesystem::directory_iterator(given)) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  for (const auto& file : files) {
    std::cout << file.filename() << std::endl;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return 1;
    morvelle::TryInput(std::string{std::istreambuf_iterator<char>(stream), {}});
  }
  std::cout << files.size() << " inputs\n";
  return files.empty() ? 1 : 0;
}
