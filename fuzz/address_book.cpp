#include "fuzz/fuzzer.h"
#include "platform/book_formats.h"

namespace morvelle {

void TryInput(std::string_view input) {
  const auto book = ReadBook(input);
  if (!book) return;
  std::size_t length = 0;
  for (const auto& address : book->entries) length += address.size();
  Demand(length <= 8 * input.size(), "a book holds no more addresses than its text");
}

}  // namespace morvelle
