#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace morvelle {

/// An open book, given by AddressBook::Open and passed by reference to every call after it.
using BookHandle = std::int32_t;
/// An entry of an open book, until FreeEntries.
using EntryId = std::int32_t;

/// Tags of the string properties of an entry (mapitags.h, PR_DISPLAY_NAME and PR_EMAIL_ADDRESS).
inline constexpr std::uint32_t kPropertyDisplayName = 0x3001001E;
inline constexpr std::uint32_t kPropertyEmailAddress = 0x3003001E;

/// The user's address book: the six operations of the library that reads it on Windows. Texts are
/// of the system code page.
class AddressBook {
 public:
  AddressBook() = default;
  AddressBook(const AddressBook&) = delete;
  AddressBook& operator=(const AddressBook&) = delete;
  virtual ~AddressBook() = default;

  /// Opens the user's book. `file` is where the registry says that it lies; what finds the book by
  /// itself needs no path. False when there is none or it cannot be read.
  virtual bool Open(const std::filesystem::path& file, BookHandle& book) = 0;
  virtual std::int32_t NumEntries(BookHandle& book) = 0;
  /// Fills `ids`, of which there are as many as NumEntries said.
  virtual void GetEntries(BookHandle& book, std::span<EntryId> ids) = 0;
  /// Reads a string property into the buffer, ended by a zero; what stood after it stays. False
  /// when the entry has none, or when the buffer is too small for it.
  virtual bool GetString(BookHandle& book, EntryId entry, std::uint32_t property,
                         std::span<char> buffer) = 0;
  virtual void FreeEntries(BookHandle& book, std::span<EntryId> ids) = 0;
  /// How many addresses of an open book no entry has, because the code page lacks characters of
  /// theirs; 0 where the reader of the book cannot tell.
  virtual std::int32_t LeftOut(BookHandle& /*book*/) { return 0; }
  /// Harmless for a book that did not open.
  virtual void Close(BookHandle& book) = 0;
};

}  // namespace morvelle
