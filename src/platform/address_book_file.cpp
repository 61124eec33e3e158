#include "platform/address_book_file.h"

#include <algorithm>
#include <numeric>

#include "app/messages/errors.h"
#include "disk/whole_file.h"

namespace morvelle {

bool FileAddressBook::Open(const std::filesystem::path& file, BookHandle& book) {
  Close(book);
  const auto bytes = ReadWholeFile(file, kTextFileLimit);
  if (!bytes) return false;
  auto read = ReadBook(*bytes);
  if (!read) return false;
  book_ = std::move(*read);
  book = 1;
  return true;
}

std::int32_t FileAddressBook::NumEntries(BookHandle& /*book*/) {
  return Checked<std::int32_t>(book_.entries.size());
}

void FileAddressBook::GetEntries(BookHandle& /*book*/, std::span<EntryId> ids) {
  std::iota(ids.begin(), ids.end(), 0);
}

bool FileAddressBook::GetString(BookHandle& /*book*/, EntryId entry, std::uint32_t property,
                                std::span<char> buffer) {
  const auto index = static_cast<std::size_t>(entry);
  if (property != kPropertyEmailAddress || index >= book_.entries.size()) return false;
  const auto& address = book_.entries[index];
  if (address.empty() || address.size() >= buffer.size()) return false;
  *std::copy(address.begin(), address.end(), buffer.begin()) = '\0';
  return true;
}

void FileAddressBook::FreeEntries(BookHandle& /*book*/, std::span<EntryId> /*ids*/) {}

std::int32_t FileAddressBook::LeftOut(BookHandle& /*book*/) { return book_.leftOut; }

void FileAddressBook::Close(BookHandle& book) {
  book_ = {};
  book = 0;
}

}  // namespace morvelle
