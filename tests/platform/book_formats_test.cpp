#include "platform/book_formats.h"

#include <gtest/gtest.h>

#include "app/messages/text.h"
#include "disk/host_files.h"
#include "platform/address_book_file.h"
#include "tests/support/text_cases.h"

namespace morvelle {
namespace {

using std::string_literals::operator""s;
/// The entries, one a line, and how many addresses were left out.
std::string Shown(const std::optional<Book>& book) {
  if (!book) return "no book\n";
  std::string lines;
  for (const auto& entry : book->entries) lines += ToUtf8(entry) + "\n";
  return book->leftOut == 0 ? lines : lines + "(" + std::to_string(book->leftOut) + ")\n";
}

class BookText : public testing::TestWithParam<TextCase> {};

TEST_P(BookText, IsRead) { EXPECT_EQ(Shown(ReadBook(GetParam().in)), GetParam().out); }

INSTANTIATE_TEST_SUITE_P(Cases, BookText, testing::ValuesIn(TextCases(MORVELLE_BOOK_CASES)));

TEST(BookFormats, MayBeWindows1252) {
  EXPECT_EQ(Shown(ReadBook("Adresse électronique;Nom\r\né@b.fr;\x80\r\n"_cp)), "é@b.fr\n");
}

TEST(BookFormats, BytesThatAreNoTextAreNoBook) {
  EXPECT_FALSE(ReadBook("\x9C\xCB\xCB\x8D\x13\x75\xD2\x11\0\0a@b.fr"s));
}

TEST(FileAddressBook, GivesWhatItsFileHolds) {
  const FileFolder folder;
  FileAddressBook book;
  BookHandle handle = 0;
  EXPECT_FALSE(book.Open(folder / "absent.csv", handle));
  EXPECT_FALSE(book.Open(folder.Path(), handle));
  std::filesystem::resize_file(folder.Write("vaste.csv", "E-mail\r\na@b.fr\r\n"),
                               kTextFileLimit + 1);
  EXPECT_FALSE(book.Open(folder / "vaste.csv", handle));
  const std::string tooLong = std::string(251, 'x') + "@b.fr";
  ASSERT_TRUE(book.Open(folder.Write("b.csv", "Nom;E-mail\nA;a@b.fr\nB;\u03B1@b.fr\nC;" + tooLong),
                        handle));
  ASSERT_EQ(book.NumEntries(handle), 3);
  std::array<EntryId, 3> ids{};
  book.GetEntries(handle, ids);
  std::array<char, 256> buffer{};
  buffer.fill(' ');
  EXPECT_TRUE(book.GetString(handle, ids[0], kPropertyEmailAddress, buffer));
  EXPECT_EQ(std::string(buffer.data(), 8), "a@b.fr\0 "s);
  EXPECT_FALSE(book.GetString(handle, ids[0], kPropertyDisplayName, buffer));
  EXPECT_FALSE(book.GetString(handle, ids[1], kPropertyEmailAddress, buffer));
  EXPECT_FALSE(book.GetString(handle, ids[2], kPropertyEmailAddress, buffer))
      << "half an address is another one";
  EXPECT_EQ(book.LeftOut(handle), 1);
  book.Close(handle);
  EXPECT_EQ(book.NumEntries(handle) + book.LeftOut(handle), 0);
}

TEST(FileAddressBook, ALargeFileFullOfStrayQuotesIsRead) {
  std::string text = "Nom;E-mail\n";
  for (int i = 0; i < 100000; ++i) text += "\"A;" + std::to_string(i) + "@b.fr\n";
  const auto book = ReadBook(text);
  ASSERT_TRUE(book);
  EXPECT_EQ(book->entries.size(), 100000U);
}

}  // namespace
}  // namespace morvelle
