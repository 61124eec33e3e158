#include "dbx/folder_store.h"

#include <gmock/gmock.h>

#include "core/deleted_items.h"
#include "samples/dbx_builder.h"
#include "tests/support/fake_environment.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

using namespace std::string_literals;

constexpr std::string_view kBin = "Éléments supprimés"_cp;
constexpr std::string_view kBadFile = "Erreur de lecture du fichier Folders.dbx";
constexpr int kStop = kBoxStop + kBoxOk;
const std::string kMark = "\x00\x8A\x11\xD0\x2C\xAD\xC3\x01"s;

DbxFolder Folder(std::uint32_t id, std::string_view name) {
  return {id, 1, std::string(name), std::string(name) + ".dbx", 0, 0};
}

class FolderStoreTest : public testing::Test {
 protected:
  std::string Read(const DbxImage& image) { return Read(image.bytes); }
  std::string Read(const std::string& bytes) {
    WriteFile(folder_ / "drive_c" / "Courrier" / "Folders.dbx", bytes);
    return store_.ReadFolders();
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& folder : store_.Folders) names.push_back(folder.Name);
    return names;
  }
  void ExpectBadFile() { dialogs_.Expect(kBadFile, kStop, "Folders"); }
  /// A file that is no list of folders, which is said after its bad node.
  void ExpectRefused(const std::string& bytes, std::optional<std::int64_t> badNode = {}) {
    if (badNode) {
      dialogs_.Expect(
          std::string("Incohérence Lecture de l'arbre : "_cp) + std::to_string(*badNode), kStop,
          "Lecture de Folders.dbx");
    }
    ExpectBadFile();
    EXPECT_EQ(Read(bytes), "False");
    dialogs_.ExpectAllShown();
  }
  void ExpectBadRecord(std::int64_t offset) {
    dialogs_.Expect(std::string("Incohérence Lecture de l'index : "_cp) + std::to_string(offset),
                    kStop, "Lecture de Folders.dbx");
  }
  /// Reads a store whose only record is this one; gives its folder.
  FolderRec ReadRecord(const std::vector<DbxAttribute>& attributes, const std::string& data,
                       bool isGood = true) {
    const auto image = DbxBuilder(kMark).AddRaw(attributes, data).Build();
    if (!isGood) ExpectBadRecord(image.recordOffsets[0]);
    EXPECT_EQ(Read(image), kMark);
    dialogs_.ExpectAllShown();
    return store_.Folders.at(0);
  }

  TempFolder folder_;
  ScriptedDialogs dialogs_;
  FakeEnvironment environment_{folder_.Path()};
  std::string storeRoot_ = "C:\\Courrier";
  FolderStore store_{dialogs_, environment_, storeRoot_};
};

TEST_F(FolderStoreTest, GivesTheStoreAndTheIdOfTheBin) {
  const auto image = DbxBuilder(kMark)
                         .Add({0, kNoParent, "Outlook Express", "", 0, 0})
                         .Add(Folder(2, "Boîte de réception"_cp))
                         .Add(Folder(0x030201, kBin))
                         .Add(Folder(9, kBin))
                         .Build();
  const auto value = Read(image);
  EXPECT_EQ(value, kMark + "\x01\x02\x03") << "the first of two folders of that name";
  EXPECT_TRUE(IsDeletedItems(value));
  EXPECT_EQ(store_.FolderCount, 4);
  EXPECT_EQ(store_.Folders[2].Id, "010203");
  EXPECT_EQ(store_.Folders[1].Name, "Boîte de réception"_cp);
  EXPECT_EQ(store_.Folders[0].Name, "Outlook Express\0"s) << "never used: nothing ends the name";
}

TEST_F(FolderStoreTest, GivesTheStoreAloneWithoutTheBin) {
  EXPECT_EQ(Read(DbxBuilder(kMark).Build()), kMark) << "no folder at all";
  EXPECT_TRUE(store_.Folders.empty());
  EXPECT_EQ(Read(DbxBuilder(kMark).Add(Folder(5, "éléments supprimés"_cp)).Build()), kMark)
      << "letter case counts";
  EXPECT_EQ(Read(DbxBuilder(kMark).Add({5, 1, std::string(kBin), "", 0, 0}).Build()), kMark)
      << "the name of an unused folder holds its zero";
  EXPECT_FALSE(IsDeletedItems(kMark));
}

TEST_F(FolderStoreTest, RefusesAFileThatIsNotAFolderList) {
  const auto good = DbxBuilder(kMark).Add(Folder(5, kBin)).Build().bytes;
  for (const std::size_t offset : {0U, 3U, 4U, 7U}) {
    auto bad = good;
    bad[offset] = static_cast<char>(bad[offset] - 1);
    ExpectRefused(bad);
  }
  EXPECT_FALSE(IsDeletedItems("False"));
  EXPECT_EQ(Read(good), kMark + "\x05\0\0"s) << "read again after a failure";
  for (const std::size_t size : {0U, 7U, 27U, 239U}) ExpectRefused(good.substr(0, size));
}

TEST_F(FolderStoreTest, ReportsAFileThatCannotBeOpened) {
  ExpectBadFile();
  EXPECT_EQ(store_.ReadFolders(), "False");
  std::filesystem::create_directories(folder_ / "drive_c" / "Courrier" / "Folders.dbx");
  ExpectBadFile();
  EXPECT_EQ(store_.ReadFolders(), "False") << "a folder in the file's place";
}

TEST_F(FolderStoreTest, ReportsABadNodeTwice) {
  const auto good = DbxBuilder(kMark).Add(Folder(5, kBin)).Build();
  // Nothing there, an empty store, past the end, before the beginning, cut after its own pointer.
  auto elsewhere = good;
  elsewhere.PutLong(good.nodeOffset, good.nodeOffset + 4);
  ExpectRefused(elsewhere.bytes, good.nodeOffset);
  for (const auto& [stored, shown] : std::vector<std::pair<std::uint32_t, std::int64_t>>{
           {0, 0}, {0x7FFFFFFF, 0x7FFFFFFF}, {0xFFFFFFFE, -2113929218}, {0x81FFFFFF, -1}}) {
    auto bad = good;
    bad.PutLong(0xEC, stored);
    ExpectRefused(bad.bytes, shown);
  }
  ExpectRefused(good.bytes.substr(0, good.nodeOffset + 17), good.nodeOffset);
  ExpectRefused(good.bytes.substr(0, good.nodeOffset + 24 + 3));  // Cut in its entries.
}

TEST_F(FolderStoreTest, GoesOnAfterABadRecord) {
  auto image = DbxBuilder(kMark)
                   .Add(Folder(2, "un"))
                   .Add(Folder(3, "deux"))
                   .Add(Folder(4, "trois"))
                   .Add(Folder(5, kBin))
                   .Build();
  image.PutLong(image.recordOffsets[0], 1);
  const auto entry = image.nodeOffset + 24;
  image.PutLong(entry + 12, 0x7FFFFFF0);
  image.PutLong(entry + 24, 0x81FFFFFF);
  ExpectBadRecord(image.recordOffsets[0]);
  ExpectBadRecord(0x7FFFFFF0);
  ExpectBadRecord(-1);
  EXPECT_EQ(Read(image), kMark + "\x05\0\0"s);
  EXPECT_THAT(Names(), testing::ElementsAre("", "", "", kBin));
}

TEST_F(FolderStoreTest, ReadsUpTo255Folders) {
  DbxBuilder builder(kMark);
  for (std::uint32_t i = 1; i < 255; ++i) builder.Add(Folder(i + 16, "dossier"));
  builder.Add(Folder(5, kBin));
  EXPECT_EQ(Read(builder.Build()), kMark + "\x05\0\0"s);
  EXPECT_EQ(store_.FolderCount, 255);
}

TEST_F(FolderStoreTest, TakesTheNameUpToTheNextValue) {
  const auto name = [this](const std::vector<DbxAttribute>& attributes, const std::string& data) {
    return ReadRecord(attributes, data).Name;
  };
  EXPECT_EQ(name({{2, 0}, {3, 3}}, "ab\0cd\0"s), "ab");
  EXPECT_EQ(name({{2, 0}, {0x90, 7}, {25, 1}, {3, 3}}, "ab\0cd\0"s), "ab")
      << "others between do not count";
  EXPECT_EQ(name({{3, 0}, {2, 3}}, "ab\0cd\0"s), "cd\0"s) << "the last one runs to the end";
  EXPECT_EQ(name({{2, 3}, {3, 0}}, "ab\0cd\0"s), "c") << "never less than one character";
  EXPECT_EQ(name({{2, 0}, {0, 3}}, "ab\0cd\0"s), "ab\0cd\0"s) << "attributes 0 and 1 end nothing";
  EXPECT_EQ(name({{2, 0}, {3, 100}}, "ab\0cd\0"s), "ab\0cd\0"s) << "no more than there is";
  EXPECT_EQ(name({{2, 6}, {3, 100}}, "ab\0cd\0"s), "") << "beyond the data";
  EXPECT_EQ(name({{2, 32767}}, "ab"), "");
  EXPECT_EQ(name({{2, 0}}, ""), "");
  EXPECT_EQ(name({{3, 0}}, "ab"), "") << "no name at all";
}

TEST_F(FolderStoreTest, ReportsARecordBeyondTheLimits) {
  const auto id = DbxAttribute{0x80, 5};
  const std::vector<std::vector<DbxAttribute>> tables = {
      {id, {2, 32768}},             // An offset that 16 bits cannot hold,
      {id, {2, 0}, {7, 0x810000}},  // below their range too,
      {id, {2, 0x81FFFF}},          // a name that starts before the data,
      {id, {2, 0}, {3, 0x818000}},  // an end below the range,
      {id, {3, 0}, {2, 0x818001}},  // a length above it.
  };
  for (const auto& table : tables) {
    EXPECT_EQ(ReadRecord(table, "abc", false).Id, "") << "the whole record is left out";
  }
  EXPECT_EQ(ReadRecord({id, {2, 32766}, {3, 0}}, std::string(32767, 'x')).Name, "x");
  EXPECT_EQ(ReadRecord({id}, std::string(32768, 'x'), false).Id, "");
}

TEST_F(FolderStoreTest, ReportsALengthThatCannotBe) {
  const auto good = DbxBuilder(kMark).Add(Folder(5, kBin)).Build();
  // Negative, shorter than the table, longer than the file, longer than 16 bits can say.
  for (const std::uint32_t length : {0x81FFFFFFU, 0xFFFFFFFFU, 3U, 30000U, 0x7FFFFFFFU}) {
    auto bad = good;
    bad.PutLong(good.recordOffsets[0] + 4, length);
    ExpectBadRecord(good.recordOffsets[0]);
    EXPECT_EQ(Read(bad), kMark) << length;
  }
}

TEST_F(FolderStoreTest, TellsWhetherTheLastAttributeCounts) {
  const auto image =
      DbxBuilder(kMark).AddRaw({{0x80, 7}, {0, 0}}, "x").AddRaw({{0, 0}, {0x80, 8}}, "x").Build();
  EXPECT_EQ(Read(image), kMark);
  EXPECT_EQ(store_.Folders[0].Id, "070000") << "read all the same";
  store_.Open();
  const auto record = [&](int index, std::size_t at) {
    return store_.ReadFolderRecord(static_cast<std::int16_t>(index),
                                   static_cast<std::int32_t>(image.recordOffsets[at]));
  };
  EXPECT_FALSE(record(1, 0));
  EXPECT_TRUE(record(1, 1));
  for (const int index : {0, 3, 1}) {  // No such folder, then the file is closed.
    if (index == 1) store_.Close();
    ExpectBadRecord(image.recordOffsets[0]);
    EXPECT_FALSE(record(index, 0)) << index;
  }
  EXPECT_EQ(store_.Folders[0].Id, "080000") << "left as it was";
}

}  // namespace
}  // namespace morvelle
