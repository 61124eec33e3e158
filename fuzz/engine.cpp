#include "fuzz/fuzzer.h"

/// The entry point that libFuzzer calls with each input.
// NOLINTNEXTLINE(readability-identifier-naming): the engine's name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // The engine's bytes are text to us; a null pointer comes with size 0.
  std::string input(size, '\0');
  for (std::size_t i = 0; i < size; ++i) input[i] = static_cast<char>(data[i]);
  morvelle::TryInput(input);
  return 0;
}
