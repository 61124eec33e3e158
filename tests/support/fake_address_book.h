#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "ports/address_book.h"

namespace morvelle {

/// An address book that a test fills. Calls on a book that is not open, or with what was not given
/// out, fail the test.
class FakeAddressBook : public AddressBook {
 public:
  ~FakeAddressBook() override { EXPECT_FALSE(open_) << "the book was left open"; }

  /// The e-mail address of each entry, as it is copied into the buffer; nothing where it has none.
  std::vector<std::optional<std::string>> addresses;
  bool readable = true;
  std::filesystem::path openedFile;
  int reads = 0;

  bool Open(const std::filesystem::path& file, BookHandle& book) override {
    openedFile = file;
    if (!readable) return false;
    EXPECT_FALSE(open_) << "the book is opened twice";
    open_ = true;
    book = kHandle;
    return true;
  }
  std::int32_t NumEntries(BookHandle& book) override {
    ExpectOpen(book);
    return static_cast<std::int32_t>(addresses.size());
  }
  void GetEntries(BookHandle& book, std::span<EntryId> ids) override {
    ExpectOpen(book);
    ASSERT_EQ(ids.size(), addresses.size());
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = kFirstId + static_cast<EntryId>(i);
    given_ = ids.size();
    ++reads;
  }
  bool GetString(BookHandle& book, EntryId entry, std::uint32_t property,
                 std::span<char> buffer) override {
    ExpectOpen(book);
    if (property != kPropertyEmailAddress) return false;
    const auto& address = addresses.at(static_cast<std::size_t>(entry - kFirstId));
    if (!address || address->size() > buffer.size()) return false;
    std::copy(address->begin(), address->end(), buffer.begin());
    return true;
  }
  void FreeEntries(BookHandle& book, std::span<EntryId> ids) override {
    ExpectOpen(book);
    EXPECT_EQ(ids.size(), given_);
    given_ = 0;
  }
  void Close(BookHandle& book) override {
    if (!open_) return;
    EXPECT_EQ(book, kHandle);
    EXPECT_EQ(given_, 0U) << "the entries were not freed";
    open_ = false;
  }

 private:
  static constexpr BookHandle kHandle = 77;
  static constexpr EntryId kFirstId = 1000;
  void ExpectOpen(BookHandle book) const {
    EXPECT_TRUE(open_);
    EXPECT_EQ(book, kHandle);
  }

  bool open_ = false;
  std::size_t given_ = 0;
};

}  // namespace morvelle
