#include "platform/book_formats.h"

#include <gmock/gmock.h>

#include "app/messages/text.h"
#include "platform/address_book_file.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAreArray;

using Entries = std::vector<std::string>;

struct Case {
  const char* why;
  std::string text;
  Entries entries;
  int leftOut = 0;
};

void ExpectAll(std::initializer_list<Case> cases) {
  for (const auto& [why, text, entries, leftOut] : cases) {
    const auto read = ReadBook(text);
    ASSERT_TRUE(read) << why;
    EXPECT_THAT(read->entries, ElementsAreArray(entries)) << why;
    EXPECT_EQ(read->leftOut, leftOut) << why;
  }
}

TEST(BookFormats, CsvByItsHeadingsOrByItsCells) {
  ExpectAll({
      {"French", "Nom;Adresse de messagerie;Notes\r\nZoé;z@b.fr;x@y\r\nLéa;;\r\n", {"z@b.fr", ""}},
      {"English", "Name,E-mail Address\r\n\"B, A\",a@b.fr\r\n", {"a@b.fr"}},
      {"tabs, old line ends, blanks", "E-MAIL ADDRESS\tName\r a@b.fr \tA\r", {"a@b.fr"}},
      {"further addresses",
       "E-mail Address;E-mail 2 Address\na@b.fr;c@d.fr\n",
       {"a@b.fr", "c@d.fr"}},
      {"an unknown heading", "Nom;Kontakt\nA@;a@b.fr\nB;b@b.fr\n", {"a@b.fr", "b@b.fr"}},
      {"no heading", "A;a@b.fr\nB;b@b.fr", {"a@b.fr", "b@b.fr"}},
      {"one column", "a@b.fr\n\nb@b.fr\n", {"a@b.fr", "b@b.fr"}},
      {"no address at all", "Nom;Ville\nA;Lyon\n", {""}},
      {"nothing", "", {}},
      {"UTF-8 with its mark",
       "\xEF\xBB\xBF"
       "Courrier électronique;Nom\r\né@b.fr;É\r\n",
       {std::string("é@b.fr"_cp)}},
      {"Windows-1252",
       std::string("Adresse électronique;Nom\r\né@b.fr;\x80\r\n"_cp),
       {std::string("é@b.fr"_cp)}},
  });
}

TEST(BookFormats, AQuoteNeverSwallowsARow) {
  ExpectAll({
      {"quoted", "Nom;E-mail\n\"Dit \"\"Lolo\"\"\";\"a@b.fr\"\n", {"a@b.fr"}},
      {"separators and line breaks inside",
       "Nom;E-mail\n\"A;\r\nB\" ; a@b.fr\nC;c@b.fr",
       {"a@b.fr", "c@b.fr"}},
      {"never closed", "Nom;E-mail\n\"A;a@b.fr\nC;c@b.fr\n", {"a@b.fr", "c@b.fr"}},
      {"closed in the middle", "Nom;E-mail\n\"A\" B;a@b.fr\nC;c@b.fr\n", {"a@b.fr", "c@b.fr"}},
      {"closed rows later",
       "Nom;E-mail\n\"A;a@b.fr\nC;c@b.fr\n\";d@b.fr;\nE;e@b.fr",
       {"a@b.fr", "c@b.fr", "d@b.fr", "e@b.fr"}},
      {"in the address", "Nom;E-mail\nA;\"a\"@b.fr\nC;c@b.fr", {"\"a\"@b.fr", "c@b.fr"}},
  });
}

TEST(BookFormats, VCards) {
  ExpectAll({
      {"several, one without address",
       "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:A\r\nEMAIL;TYPE=INTERNET,PREF:a@b.fr\r\n"
       "item1.email:c@d.fr\r\nEND:VCARD\r\n\r\nbegin:vcard\r\nFN:B\r\nend:vcard\r\n",
       {"a@b.fr", "c@d.fr", ""}},
      {"folded, escaped, as a link",
       "BEGIN:VCARD\nEMAIL:jean.dup\n ont@b.fr\nEMAIL:a\\,b@c.fr\nEMAIL:mailto:m@b.fr\nEND:VCARD",
       {"jean.dupont@b.fr", "a,b@c.fr", "m@b.fr"}},
      {"quoted-printable",
       "BEGIN:VCARD\nEMAIL;INTERNET;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:=C3=A9=40b.fr=4\n"
       "END:VCARD\n",
       {std::string("é@b.fr=4"_cp)}},
  });
}

TEST(BookFormats, Ldif) {
  ExpectAll({
      {"plain, in base64, folded, second, missing",
       "version: 1\n# mail: no@b.fr\ndn: cn=A,mail=a@b.fr\nmail: a@b.fr\nmozillaSecondEmail: c@d.fr"
       "\n\ndn: cn=B\nmail:: w6lAYi5mcg==\n\ndn: cn=C\ncn: C\n\ndn: cn=D\nMAIL: long\n er@b.fr\n",
       {"a@b.fr", "c@d.fr", std::string("é@b.fr"_cp), "", "longer@b.fr"}},
      {"a row of a table that begins so", "dnom;mail\nA;a@b.fr", {"a@b.fr"}},
  });
}

TEST(BookFormats, AnAddressThatWindows1252LacksIsLeftOut) {
  ExpectAll({
      {"CSV",
       "Nom;E-mail\n\u0141;\u0142@b.fr\nA;a@b.fr\nB;\u65E5\U0001F600@b.fr\n",
       {"", "a@b.fr", ""},
       2},
      {"vCard",
       "BEGIN:VCARD\nEMAIL:\u03B1@b.fr\nEMAIL:a@b.fr\nEND:VCARD\n"
       "BEGIN:VCARD\nEMAIL;ENCODING=QUOTED-PRINTABLE:=CE=B1@b.fr\nEND:VCARD",
       {"", "a@b.fr", ""},
       2},
      {"LDIF", "dn: cn=A\nmail:: zrFAYi5mcg==\n\ndn: cn=B\nmail: a?@b.fr\n", {"", "a?@b.fr"}, 1},
  });
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
