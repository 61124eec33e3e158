#include "wab/address_reader.h"

#include "tests/wab/book_machine.h"

namespace morvelle {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::IsEmpty;

using AddressReaderTest = BookMachine;

TEST_F(AddressReaderTest, TheBookLiesWhereTheRegistrySays) {
  Book({"a@b.fr"});
  reader.ReadWab();
  EXPECT_EQ(addressBook.openedFile, folder / "drive_c" / "Carnets" / "moi.wab")
      << "a start that ended early has not looked for it";
  EXPECT_TRUE(reader.FindWab());
  EXPECT_EQ(place.WabFolder, "C:\\Carnets");
  rules.PutText(std::string(kTestBookKey), "", "moi.wab");
  EXPECT_FALSE(reader.FindWab()) << "a path without folder";
  rules.Remove(std::string(kTestBookKey), "");
  EXPECT_FALSE(reader.FindWab()) << "a key without its value is no message";
  EXPECT_EQ(place.WabFolder, "");
}

TEST_F(AddressReaderTest, WithoutItsKeyThereIsNoBook) {
  reader.FindWab();
  store.DeleteKey(kTestBookKey);
  dialogs.Expect("Il n'existe pas de carnet d'adresses Windows.", kBoxInformation, "FindWab");
  EXPECT_FALSE(reader.FindWab());
  EXPECT_EQ(place.WabFolder, "");
}

TEST_F(AddressReaderTest, AddressesAreCutAtTheirFirstZeroAndKeepTheLibrarysOrder) {
  addressBook.addresses = {
      "zoé@b.fr\0\0"s, " a@b.fr "s, std::nullopt,      "",
      "  \0"s,         "\0f@b.fr"s, "c d@b.fr  \0  "s, "e@b.fr\0@reste de la mémoire"s,
      "zoé@b.fr"s};
  EXPECT_THAT(reader.ReadWab(),
              ElementsAre("zoé@b.fr", "a@b.fr", "c d@b.fr", "e@b.fr", "zoé@b.fr"));
  EXPECT_THAT(reader.ReadWords(), ElementsAre("a@b.fr", "c d@b.fr", "e@b.fr", "zoé@b.fr"));
}

TEST_F(AddressReaderTest, HowManyAddressesAreLeftOutIsSaid) {
  Book({"", "a@b.fr"});
  addressBook.leftOut = 1;
  dialogs.Expect(
      "1 adresse contient des caractères que la messagerie ne connaît pas\u00A0: "
      "elle est laissée de côté."_cp,
      kBoxExclamation, kAppTitle);
  EXPECT_THAT(reader.ReadWab(), ElementsAre("a@b.fr"));
  addressBook.leftOut = 2;
  dialogs.Expect(
      "2 adresses contiennent des caractères que la messagerie ne connaît pas\u00A0: "
      "elles sont laissées de côté."_cp);
  reader.ReadWords();
}

TEST_F(AddressReaderTest, ARuleHoldsNoMoreThanItsCountDoes) {
  std::vector<std::string> addresses;
  for (int i = 0; i < 32767; ++i) addresses.push_back(std::to_string(i) + "@b.fr");
  addresses.push_back("0@b.fr");
  Book(addresses);
  EXPECT_EQ(reader.ReadWords().size(), 32767U) << "repeats do not count";
  addressBook.addresses.back() = "un@b.fr";
  dialogs.Expect(
      "Le carnet d'adresses compte plus de 32 767 adresses : une règle ne peut les contenir"_cp);
  EXPECT_THAT(reader.ReadWords(), IsEmpty());
  EXPECT_EQ(reader.ReadWab().size(), 32768U);
}

}  // namespace
}  // namespace morvelle
