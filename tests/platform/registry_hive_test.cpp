// Registry hives: what an edit changes in them and what it must not, and which ones are refused.
// Hives are built by hivex and hivexregedit, and read by them again.

#include "platform/registry_hive.h"

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <hivex.h>

#include <cstdlib>
#include <map>
#include <random>
#include <utility>

#include "app/messages/text.h"
#include "platform/hive_cells.h"
#include "tests/platform/hive_sample.h"
#include "tests/platform/registry_contract.h"
#include "tests/support/temp_folder.h"

namespace morvelle {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

OpenedStore Open(const std::filesystem::path& file) {
  return OpenHive(file, MakeHostFiles(), [] { return std::chrono::system_clock::time_point{}; });
}

std::shared_ptr<RegistryStore> EmptyHiveStore() {
  struct Place {
    FileFolder folder;
    std::unique_ptr<RegistryStore> store;
  };
  auto place = std::make_shared<Place>();
  place->store = Open(place->folder.Write("NTUSER.DAT", EmptyHive())).store;
  return {place, place->store.get()};
}

INSTANTIATE_TEST_SUITE_P(Hives, RegistryContract,
                         testing::Values(StoreKind{"Hive", EmptyHiveStore}), StoreKindName);

/// Brings the header's checksum up to date.
void Seal(std::string& bytes) {
  const auto sum = HiveChecksum(bytes);
  for (std::size_t i = 0; i < 4; ++i)
    bytes[hive::kChecksum + i] = static_cast<char>(sum >> (8 * i));
}

void Put(std::string& bytes, std::uint32_t cell, std::size_t at, std::uint32_t number) {
  const std::size_t place = hive::kBlock + cell + 4 + at;
  for (std::size_t i = 0; i < 4; ++i) bytes[place + i] = static_cast<char>(number >> (8 * i));
}

class HiveStoreTest : public testing::Test {
 protected:
  /// What an old profile may hold: types and names that the program has no use for, a class and a
  /// security of its own on a key.
  void MakeProfile(std::uint32_t minor = 5) {
    file_ = folder_.Write("NTUSER.DAT", EmptyHive(minor));
    folder_.Write("in.reg", ReadFile(MORVELLE_PROFILE));
    ASSERT_EQ(Run("hivexregedit --merge NTUSER.DAT in.reg"), 0);
    auto bytes = folder_.Read("NTUSER.DAT");
    HiveCells cells(bytes);
    const auto key = Cell("Mail\\001");
    const auto keyClass = cells.Allocate(8);
    const auto security = cells.Allocate(40);
    const auto first = cells.Number(key, hive::kKeySecurity);
    cells.Put(keyClass, 0, std::string("C\0l\0", 4));
    cells.Put(key, hive::kKeyClass, keyClass);
    cells.Put(security, 0, std::string(cells.Content(first).substr(0, 40)));
    cells.Put(security, hive::kSecurityUses, 1);
    cells.Put(security, hive::kSecurityNext, first);
    cells.Put(security, hive::kSecurityPrevious, first);
    cells.Put(first, hive::kSecurityNext, security);
    cells.Put(first, hive::kSecurityPrevious, security);
    cells.Put(first, hive::kSecurityUses, cells.Number(first, hive::kSecurityUses) - 1U);
    cells.Put(key, hive::kKeySecurity, security);
    cells.Put(key, hive::kKeyTime, 0x1234567, 8);
    Rewrite(cells.Finish(0));
  }
  [[nodiscard]] int Run(const std::string& command) const {
    const auto line = "cd '" + folder_.Path().string() + "' && PERL_UNICODE=D " + command;
    return std::system(line.c_str());  // NOLINT
  }
  void Rewrite(const std::string& bytes) { file_ = folder_.Write("NTUSER.DAT", bytes); }
  std::string Export() {
    EXPECT_EQ(Run("hivexregedit --export NTUSER.DAT '\\' > out.reg"), 0);
    return folder_.Read("out.reg");
  }
  std::unique_ptr<RegistryStore> Store() {
    auto opened = Open(file_);
    EXPECT_EQ(opened.error, "");
    return std::move(opened.store);
  }
  static KeyHandle Key(RegistryStore& store, std::string_view path) {
    KeyHandle key = 0;
    EXPECT_EQ(store.CreateKey(path, key), kStatusSuccess) << path;
    return key;
  }
  /// The cell of a key, as hivex finds it.
  [[nodiscard]] std::uint32_t Cell(std::string_view path) const {
    hive_h* hive = hivex_open(file_.c_str(), 0);
    hive_node_h node = hivex_root(hive);
    while (!path.empty() && node != 0) {
      const auto end = std::min(path.find('\\'), path.size());
      node = hivex_node_get_child(hive, node, std::string(path.substr(0, end)).c_str());
      path.remove_prefix(std::min(end + 1, path.size()));
    }
    hivex_close(hive);
    EXPECT_NE(node, 0U);
    return static_cast<std::uint32_t>(node - hive::kBlock);
  }
  /// Cells in use whose content is not what it was, and those no longer in use.
  static std::map<std::string, int> ChangedCells(std::string_view before, std::string_view after) {
    std::map<std::string, int> changed;
    std::size_t at = hive::kBlock;
    const auto end = hive::kBlock + HiveNumber(before, hive::kBinsSize);
    while (at < end) {
      if (before.substr(at, 4) == "hbin") at += 0x20;
      const auto raw = static_cast<std::int32_t>(HiveNumber(before, at));
      const auto size = static_cast<std::size_t>(raw < 0 ? -raw : raw);
      const auto content = before.substr(at + 4, size - 4);
      const auto kind = std::string(content.substr(0, 2));
      const bool isNamed = kind == "nk" || kind == "sk";
      if (content != after.substr(at + 4, size - 4)) {
        ++changed["changed " + (isNamed ? kind : std::string("other"))];
      } else if (before.substr(at, 4) != after.substr(at, 4)) {
        ++changed["freed " + (isNamed || kind == "vk" ? kind : std::string("other"))];
      }
      at += size;
    }
    return changed;
  }
  void ExpectRefused(const std::string& bytes, const testing::Matcher<std::string>& message) {
    Rewrite(bytes);
    const auto opened = Open(file_);
    EXPECT_EQ(opened.store, nullptr);
    EXPECT_THAT(opened.error, AllOf(HasSubstr("NTUSER.DAT"), message));
    EXPECT_EQ(folder_.Read("NTUSER.DAT"), bytes);
    EXPECT_EQ(folder_.Names(), (std::set<std::string>{"NTUSER.DAT"}));
  }

  FileFolder folder_;
  std::filesystem::path file_;
};

TEST_F(HiveStoreTest, ChangesNothingButWhatIsEdited) {
  MakeProfile();
  const auto before = folder_.Read("NTUSER.DAT");
  auto wanted = Export();
  {
    auto store = Store();
    store->BeginBatch();
    const auto rule = Key(*store, "Mail\\000");
    store->SetValue(rule, "Name", ValueKind::String, std::string("abc\0", 4));  // As it was.
    store->SetValue(rule, "Value", ValueKind::Binary, "changed");
    store->SetValue(Key(*store, "Mail\\002"), "", ValueKind::Dword, std::string("\1\0\0\0", 4));
    store->DeleteValue(Key(*store, "Mail"), "order");
    ASSERT_EQ(store->CommitBatch(false), CommitOutcome::Done) << store->LastError();
  }
  wanted = Replaced(wanted, "\"Value\"=hex(3):01,02,03,04,05,06,07,08",
                    "\"Value\"=hex(3):63,68,61,6e,67,65,64");
  wanted = Replaced(wanted, "\"Order\"=hex(1):30,00,00,00\n", "");
  wanted =
      Replaced(wanted, "[\\Mail\\001]\n\n", "[\\Mail\\001]\n\n[\\Mail\\002]\n@=dword:00000001\n\n");
  EXPECT_EQ(Export(), wanted);
  const auto after = folder_.Read("NTUSER.DAT");
  // Two keys and the use count of their security; two values, the data of the one that is too large
  // to stand in its place, two value lists and the index of Mail go.
  EXPECT_EQ(ChangedCells(before, after),
            (std::map<std::string, int>{
                {"changed nk", 2}, {"changed sk", 1}, {"freed other", 4}, {"freed vk", 2}}));
  const HiveCells cells(after);
  EXPECT_EQ(cells.Number(Cell("Mail\\002"), hive::kKeySecurity),
            cells.Number(Cell("Mail"), hive::kKeySecurity));
  EXPECT_EQ(HiveNumber(after, hive::kSequence1), HiveNumber(before, hive::kSequence1) + 1);
  EXPECT_EQ(folder_.Read("NTUSER (copie du 1970-01-01 00-00-00).DAT"), before);
}

TEST_F(HiveStoreTest, ARenamedKeyKeepsClassSecurityAndTime) {
  MakeProfile();
  const auto first = Cell("Mail\\000");
  const auto second = Cell("Mail\\001");
  const std::string cellBefore(HiveCells(folder_.Read("NTUSER.DAT")).Content(second));
  auto store = Store();
  const std::vector<KeyRename> exchange = {{"000", "001"}, {"001", "000"}};
  ASSERT_EQ(store->RenameSubkeys("Mail", exchange, {}), kStatusSuccess);
  EXPECT_EQ(Cell("Mail\\001"), first);
  EXPECT_EQ(Cell("Mail\\000"), second);
  EXPECT_THAT(Export(),
              HasSubstr("[\\Mail\\001]\n\"Name\"=hex(1):61,00,62,00,63,00,00,00\n"
                        "\"Odd\"=hex(b0):01,02\n\"Value\"=hex(3):01,02,03,04,05,06,07,08\n\n"
                        "[\\Mail\\001\\Actions]\n\"Type\"=hex(3):01\n\n"));
  const std::string longName(100, 'n');
  ASSERT_EQ(store->RenameSubkeys("Mail", {{{"000", longName}, {"001", "A"}}}, {}), kStatusSuccess);
  EXPECT_EQ(Cell("Mail\\A"), first);
  const HiveCells cells(folder_.Read("NTUSER.DAT"));
  EXPECT_EQ(cells.Content(Cell("Mail\\" + longName)).substr(0, hive::kKeyNameSize),
            cellBefore.substr(0, hive::kKeyNameSize));
  EXPECT_EQ(cells.Number(Cell("Mail\\A\\Actions"), hive::kKeyParent), first);
}

TEST_F(HiveStoreTest, ADeletedKeyTakesItsOwnSecurityWithIt) {
  MakeProfile();
  const auto root = HiveCells(folder_.Read("NTUSER.DAT")).Number(Cell(""), hive::kKeySecurity);
  auto store = Store();
  EXPECT_EQ(store->DeleteKey("Mail\\001"), kStatusSuccess);
  const HiveCells cells(folder_.Read("NTUSER.DAT"));
  EXPECT_EQ(cells.Number(root, hive::kSecurityNext), root);
  EXPECT_EQ(cells.Number(root, hive::kSecurityPrevious), root);
  EXPECT_EQ(cells.Number(root, hive::kSecurityUses), 6U);  // One for each key that is left.
  // A key made in its place afterwards is a new one.
  Key(*store, "Mail\\001");
  const HiveCells again(folder_.Read("NTUSER.DAT"));
  EXPECT_EQ(again.Number(Cell("Mail\\001"), hive::kKeySecurity), root);
  EXPECT_EQ(again.Number(Cell("Mail\\001"), hive::kKeyClass), hive::kNone);
}

TEST_F(HiveStoreTest, WritesLargeValuesAsTheVersionAsksForThem) {
  for (const std::uint32_t minor : {3U, 5U}) {
    Rewrite(EmptyHive(minor));
    auto store = Store();
    const auto key = Key(*store, "A");
    for (const std::size_t size : {4U, 5U, 16344U, 16345U, 32688U, 32689U, 1048576U}) {
      std::string data(size, 'x');
      for (std::size_t i = 0; i < size; ++i) data[i] = static_cast<char>(i / 7);
      ASSERT_EQ(store->SetValue(key, "v", ValueKind::Binary, data), kStatusSuccess)
          << store->LastError();
      hive_h* hive = hivex_open(file_.c_str(), 0);
      const auto value =
          hivex_node_get_value(hive, hivex_node_get_child(hive, hivex_root(hive), "A"), "v");
      hive_type kind{};
      std::size_t found = 0;
      char* bytes = hivex_value_value(hive, value, &kind, &found);
      EXPECT_EQ(std::string(bytes, found), data);
      std::free(bytes);  // NOLINT
      hivex_close(hive);
      const HiveCells cells(folder_.Read("NTUSER.DAT"));
      const auto cell = static_cast<std::uint32_t>(value - hive::kBlock);
      if (size > 4) {
        const auto place = cells.Number(cell, hive::kValueData);
        EXPECT_EQ(cells.Is(place, "db"), minor == 5 && size > 16344) << minor << " " << size;
      }
    }
    // Written over by a later run, every piece of it is let go of.
    store.reset();
    store = Store();
    const auto before = folder_.Read("NTUSER.DAT");
    store->SetValue(Key(*store, "A"), "v", ValueKind::Binary, "12345");
    EXPECT_EQ(ChangedCells(before, folder_.Read("NTUSER.DAT")),
              (std::map<std::string, int>{
                  {"changed nk", 1}, {"freed other", minor == 5 ? 68 : 2}, {"freed vk", 1}}));
    const auto whole = folder_.Read("NTUSER.DAT");
    const auto status =
        store->SetValue(Key(*store, "A"), "w", ValueKind::Binary, std::string(1048577, 'x'));
    EXPECT_EQ(status == kStatusSuccess, minor == 5);
    if (minor == 3) {
      EXPECT_THAT(store->LastError(), HasSubstr(std::string("« w » dépasse un mégaoctet"_cp)));
      EXPECT_EQ(folder_.Read("NTUSER.DAT"), whole);
    }
  }
}

TEST_F(HiveStoreTest, HoldsThousandsOfSubkeysAndDoesNotGrowWithEverySave) {
  MakeProfile();
  const auto before = folder_.Read("NTUSER.DAT");
  auto store = Store();
  const auto name = [](int i) { return "Mail\\X" + std::to_string(10000 + i); };
  store->BeginBatch();
  for (int i = 0; i < 1200; ++i) store->CloseKey(Key(*store, name(i)));
  ASSERT_EQ(store->CommitBatch(false), CommitOutcome::Done) << store->LastError();
  store.reset();
  const auto large = folder_.Read("NTUSER.DAT");
  EXPECT_LT(large.size(), before.size() + 144'000);  // 96 bytes a key.
  EXPECT_NE(Cell(name(0)), 0U);
  EXPECT_NE(Cell(name(1199)), 0U);
  store = Store();
  const auto rule = Key(*store, "Mail\\000");
  for (const auto* value : {"1", "2", "3", "4", "5", "6", "7", "8"}) {
    store->SetValue(rule, "Value", ValueKind::Binary, std::string(1500, value[0]));
  }
  EXPECT_EQ(folder_.Read("NTUSER.DAT").size(), large.size() + hive::kBlock);
  // What is undone leaves the file as it was.
  store->SetValue(rule, "Value", ValueKind::Binary, "\1\2\3\4\5\6\7\10");
  EXPECT_EQ(folder_.Read("NTUSER.DAT"), large);
  store->BeginBatch();
  for (int i = 0; i < 1200; ++i) EXPECT_EQ(store->DeleteKey(name(i)), kStatusSuccess);
  store->CommitBatch(false);
  auto wanted = Export();
  Rewrite(before);
  EXPECT_EQ(Export(), wanted);
}

TEST_F(HiveStoreTest, RefusesWhatItCannotEditSafely) {
  MakeProfile();
  std::filesystem::remove(folder_.Path() / "in.reg");
  const auto whole = folder_.Read("NTUSER.DAT");
  const auto key = Cell("Other");
  const auto refused = [&](auto damage, std::string_view message) {
    auto bytes = whole;
    damage(bytes);
    Seal(bytes);
    ExpectRefused(bytes, HasSubstr(std::string(message)));
  };
  refused([](auto& bytes) { ++bytes[hive::kSequence1]; }, "NTUSER.DAT.LOG*");
  refused([](auto& bytes) { bytes.replace(0, 4, "CREG"); }, "Windows 95");
  refused([](auto& bytes) { bytes[hive::kMajor] = 2; }, "d'une version connue");
  // A journal may be shorter than any hive.
  for (const std::size_t size : {std::size_t{512}, whole.size()}) {
    refused([&](auto& bytes) { bytes.resize(size), bytes[hive::kFileType] = 6; }, "(.LOG)");
  }
  refused([&](auto& bytes) { Put(bytes, key, hive::kKeyValues, 0x7FFFFFF0); }, "endommag");
  // A key within itself.
  const HiveCells cells(whole);
  const auto list = cells.Number(Cell("Other"), hive::kKeySubkeys);
  refused([&](auto& bytes) { Put(bytes, list, 4, key); }, "clef Other");
  auto unsealed = whole;
  ++unsealed[hive::kWritten];
  ExpectRefused(unsealed, HasSubstr("somme"));
  for (std::size_t size = 0; size < whole.size(); size += size < 5000 ? 97 : 256) {
    ExpectRefused(whole.substr(0, size), Not(""));
  }
  ::mkfifo((folder_ / "tube").c_str(), 0600);
  EXPECT_FALSE(IsHive(folder_ / "tube")) << "and does not wait for it";
  EXPECT_FALSE(IsHive(folder_.Write("a.reg", "REGEDIT4\r\n")));
  EXPECT_FALSE(IsHive(folder_.Write("a.reg", "re")));
  EXPECT_TRUE(IsHive(folder_.Write("a.reg", "CREG")));
}

TEST_F(HiveStoreTest, RandomDamageNeitherCrashesNorReachesTheFile) {
  MakeProfile();
  const auto whole = folder_.Read("NTUSER.DAT");
  std::mt19937 random(1);  // NOLINT
  int opened = 0;
  int written = 0;
  for (int round = 0; round < 300; ++round) {
    auto bytes = whole;
    for (int i = 0; i <= round % 4; ++i) {
      const auto at = hive::kBlock + random() % (whole.size() - hive::kBlock);
      // Mostly small numbers and the ends of ranges: what lengths, counts and offsets are made of.
      bytes[at] = static_cast<char>(random() % 3 == 0 ? 0xFF : random() % 64);
    }
    Rewrite(bytes);
    auto store = Open(file_).store;
    if (store == nullptr) continue;
    ++opened;
    store->BeginBatch();
    KeyHandle key = 0;
    if (store->CreateKey("Mail\\003", key) == kStatusSuccess) {
      store->SetValue(key, "Name", ValueKind::String, "x");
    }
    store->RenameSubkeys("Mail", {{{"000", "001"}, {"001", "000"}}}, {});
    store->DeleteKey("Mail\\000");
    if (store->CommitBatch(false) == CommitOutcome::Done) {
      ++written;
      store.reset();
      EXPECT_NE(Open(file_).store, nullptr) << round;
    } else {
      EXPECT_EQ(folder_.Read("NTUSER.DAT"), bytes) << round;
    }
  }
  // Both outcomes were met.
  EXPECT_GT(opened, written);
  EXPECT_GT(written, 0);
}

TEST_F(HiveStoreTest, AFileOpenTwiceOrChangedMeanwhileIsNotWrittenOver) {
  MakeProfile();
  const auto before = folder_.Read("NTUSER.DAT");
  auto store = Store();
  EXPECT_THAT(Open(file_).error, HasSubstr(std::string("déjà ouvert"_cp)));
  Key(*store, "New");
  Rewrite(before);
  store->BeginBatch();
  Key(*store, "Newer");
  EXPECT_EQ(store->CommitBatch(false), CommitOutcome::ChangedMeanwhile);
  EXPECT_EQ(folder_.Read("NTUSER.DAT"), before);
  EXPECT_EQ(store->CommitBatch(true), CommitOutcome::Done);
  EXPECT_NE(Cell("New"), 0U);
  EXPECT_NE(Cell("Newer"), 0U);
}

}  // namespace

}  // namespace morvelle
