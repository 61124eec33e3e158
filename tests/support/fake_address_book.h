#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "ports/address_book.h"

namespace morvelle {

/// An address book that a test fills. It is to be closed, its entries freed.
class FakeAddressBook : public AddressBook {
 public:
  ~FakeAddressBook() override { EXPECT_EQ(open_ + given_, 0U) << "the book was left open"; }

  /// The e-mail address of each entry, as it is copied into the buffer; nothing where it has none.
  std::vector<std::optional<std::string>> addresses;
  bool readable = true;
  std::filesystem::path openedFile;

  bool Open(const std::filesystem::path& file, BookHandle& /*book*/) override {
    openedFile = file;
    open_ += readable ? 1 : 0;
    return readable;
  }
  std::int32_t NumEntries(BookHandle& /*book*/) override {
    return static_cast<std::int32_t>(addresses.size());
  }
  void GetEntries(BookHandle& /*book*/, std::span<EntryId> ids) override {
    for (std::size_t i = 0; i < ids.size(); ++i) ids[i] = kFirstId + static_cast<EntryId>(i);
    given_ += ids.size();
  }
  bool GetString(BookHandle& /*book*/, EntryId entry, std::uint32_t property,
                 std::span<char> buffer) override {
    if (property != kPropertyEmailAddress) return false;
    const auto& address = addresses.at(static_cast<std::size_t>(entry - kFirstId));
    if (!address || address->size() > buffer.size()) return false;
    std::copy(address->begin(), address->end(), buffer.begin());
    return true;
  }
  void FreeEntries(BookHandle& /*book*/, std::span<EntryId> ids) override { given_ -= ids.size(); }
  void Close(BookHandle& /*book*/) override { open_ -= open_ > 0 ? 1 : 0; }

 private:
  static constexpr EntryId kFirstId = 1000;
  std::size_t open_ = 0;
  std::size_t given_ = 0;
};

}  // namespace morvelle
