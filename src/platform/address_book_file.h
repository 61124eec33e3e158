#pragma once

#include "platform/book_formats.h"
#include "ports/address_book.h"

namespace morvelle {

/// An address book that is a text file: see ReadBook for what it may be.
class FileAddressBook final : public AddressBook {
 public:
  bool Open(const std::filesystem::path& file, BookHandle& book) override;
  std::int32_t NumEntries(BookHandle& book) override;
  void GetEntries(BookHandle& book, std::span<EntryId> ids) override;
  bool GetString(BookHandle& book, EntryId entry, std::uint32_t property,
                 std::span<char> buffer) override;
  void FreeEntries(BookHandle& book, std::span<EntryId> ids) override;
  std::int32_t LeftOut(BookHandle& book) override;
  void Close(BookHandle& book) override;

 private:
  Book book_;
};

}  // namespace morvelle
