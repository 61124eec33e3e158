#include "platform/address_book_win32.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <vector>

#include "platform/environment_win32.h"

namespace morvelle {

namespace {

/// The stand-in of kWab.dll, which tests.cmake builds beside this program.
TEST(WindowsAddressBook, IsReadThroughItsLibrary) {
  ::SetEnvironmentVariableA("MORVELLE_TEST_BOOK", "zoe@b.fr||a@b.fr");
  const auto book = MakeWindowsAddressBook();
  BookHandle handle = 0;
  ASSERT_TRUE(book->Open({}, handle));
  ASSERT_EQ(book->NumEntries(handle), 3);
  std::vector<EntryId> ids(3);
  book->GetEntries(handle, ids);
  std::vector<std::string> addresses;
  for (const auto id : ids) {
    std::array<char, 256> buffer{};
    EXPECT_FALSE(book->GetString(handle, id, kPropertyDisplayName, buffer));
    const bool read = book->GetString(handle, id, kPropertyEmailAddress, buffer);
    addresses.emplace_back(read ? buffer.data() : "-");
  }
  EXPECT_EQ(addresses, (std::vector<std::string>{"zoe@b.fr", "-", "a@b.fr"}));
  book->FreeEntries(handle, ids);
  book->Close(handle);
  EXPECT_EQ(handle, 0) << "the library closed its own handle";
  EXPECT_EQ(book->NumEntries(handle), 0);
}

TEST(WindowsAddressBook, WithoutBookOrLibraryNoneOpens) {
  ::SetEnvironmentVariableA("MORVELLE_TEST_BOOK", nullptr);
  BookHandle handle = 0;
  EXPECT_FALSE(MakeWindowsAddressBook()->Open({}, handle));
  ::SetEnvironmentVariableA("MORVELLE_TEST_BOOK", "a@b.fr");
  const auto library = Win32Environment(std::nullopt).ProgramFile().parent_path() / "kWab.dll";
  auto away = library;
  away += ".away";
  std::filesystem::rename(library, away);
  const auto book = MakeWindowsAddressBook();
  // One that lies where Windows would look too is not the user's.
  const auto elsewhere = library.parent_path() / "ailleurs";
  std::filesystem::create_directory(elsewhere);
  std::filesystem::copy_file(away, elsewhere / "kWab.dll");
  ::SetEnvironmentVariableW(L"PATH", elsewhere.c_str());
  EXPECT_FALSE(book->Open({}, handle));
  std::filesystem::remove_all(elsewhere);
  book->Close(handle);
  std::filesystem::rename(away, library);
  EXPECT_TRUE(book->Open({}, handle)) << "it is looked for again";
  book->Close(handle);
}

}  // namespace

}  // namespace morvelle
