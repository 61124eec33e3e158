#include "platform/address_book_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <numeric>
#include <system_error>

#include "app/messages/errors.h"
#include "platform/book_formats.h"

namespace morvelle {

bool FileAddressBook::Open(const std::filesystem::path& file, BookHandle& book) {
  addresses_.clear();
  book = 0;
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return false;
  std::ifstream input(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
  if (!input) return false;
  auto entries = ReadBook(bytes);
  if (!entries) return false;
  addresses_ = std::move(*entries);
  book = 1;
  return true;
}

std::int32_t FileAddressBook::NumEntries(BookHandle& /*book*/) {
  return Checked<std::int32_t>(addresses_.size());
}

void FileAddressBook::GetEntries(BookHandle& /*book*/, std::span<EntryId> ids) {
  std::iota(ids.begin(), ids.end(), 0);
}

bool FileAddressBook::GetString(BookHandle& /*book*/, EntryId entry, std::uint32_t property,
                                std::span<char> buffer) {
  const auto index = static_cast<std::size_t>(entry);
  if (property != kPropertyEmailAddress || index >= addresses_.size()) return false;
  const auto& address = addresses_[index];
  if (address.empty() || address.size() >= buffer.size()) return false;
  *std::copy(address.begin(), address.end(), buffer.begin()) = '\0';
  return true;
}

void FileAddressBook::FreeEntries(BookHandle& /*book*/, std::span<EntryId> /*ids*/) {}

void FileAddressBook::Close(BookHandle& book) {
  addresses_.clear();
  book = 0;
}

}  // namespace morvelle
