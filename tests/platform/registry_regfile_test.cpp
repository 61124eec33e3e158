#include "platform/registry_regfile.h"

#include "app/messages/text.h"
#include "tests/support/temp_folder.h"

namespace morvelle {

namespace {

constexpr std::string_view kHead = "Windows Registry Editor Version 5.00\r\n\r\n";

class RegFileStoreTest : public testing::Test {
 protected:
  std::unique_ptr<RegistryStore> Open(std::string_view body) {
    WriteFile(file_, std::string(kHead).append(body));
    auto opened =
        OpenRegFile(file_, MakeHostFiles(), [] { return std::chrono::system_clock::time_point{}; });
    EXPECT_EQ(opened.error, "");
    return std::move(opened.store);
  }
  static KeyHandle Key(RegistryStore& store, std::string_view path) {
    KeyHandle key = 0;
    EXPECT_EQ(store.OpenKey(path, KeyAccess::ReadWrite, key), kStatusSuccess) << path;
    return key;
  }
  [[nodiscard]] std::string Body() const {
    const auto text = ReadFile(file_);
    return text.starts_with(kHead) ? text.substr(kHead.size()) : text;
  }

  TempFolder folder_;
  std::filesystem::path file_ = folder_ / "a.reg";
};

TEST_F(RegFileStoreTest, LeavesWhatItDidNotChange) {
  const std::string before =
      "[HKEY_LOCAL_MACHINE\\X]\r\n\"k\"=hex(b):01\r\n\r\n"
      "[HKEY_CURRENT_USER\\A]\r\n\"n\"=hex(1):16,04,3f,00,00,00\r\n\"o\"=hex(1):61,00,62\r\n\r\n";
  auto store = Open(before);
  const auto key = Key(*store, "A");
  std::string data;
  store->ReadValue(key, "n", data);
  EXPECT_EQ(data, std::string("??\0", 3));
  // The stored bytes are not what the view would give: they must not be written over.
  store->SetValue(key, "n", ValueKind::String, data);
  store->SetValue(key, "o", ValueKind::String, "a");
  EXPECT_EQ(Body(), before);
  using Entries = std::filesystem::directory_iterator;
  EXPECT_EQ(std::distance(Entries(folder_.Path()), Entries()), 2) << "the file and its lock";
  store->SetValue(key, "p", ValueKind::Dword, std::string("\2\0\0\0", 4));
  EXPECT_EQ(Body(),
            "[HKEY_LOCAL_MACHINE\\X]\r\n\"k\"=hex(b):01\r\n\r\n"
            "[HKEY_CURRENT_USER\\A]\r\n\"n\"=hex(1):16,04,3f,00,00,00\r\n\"o\"=hex(1):61,00,62\r\n"
            "\"p\"=dword:00000002\r\n\r\n");
}

TEST_F(RegFileStoreTest, NewAndRenamedKeysStandBehindTheSiblingBefore) {
  auto store = Open(
      "[HKEY_CURRENT_USER\\A\\001\\X]\r\n\r\n[HKEY_CURRENT_USER\\A\\005]\r\n\"n\"=\"\xD0\x96\"\r\n"
      "\"odd\"=hex(b):01\r\n\r\n[HKEY_CURRENT_USER\\A\\005\\x]\r\n\r\n");
  const std::vector<KeyRename> renames = {{"005", "003"}};
  EXPECT_EQ(store->RenameSubkeys("A", renames, {}), kStatusSuccess);
  KeyHandle key = 0;
  store->CreateKey("A\\004\\Y", key);
  store->DeleteKey("A\\001\\X");
  EXPECT_EQ(Body(),
            "[HKEY_CURRENT_USER\\A\\001]\r\n\r\n[HKEY_CURRENT_USER\\A\\003]\r\n"
            "\"n\"=\"\xD0\x96\"\r\n\"odd\"=hex(b):01\r\n\r\n"
            "[HKEY_CURRENT_USER\\A\\003\\x]\r\n\r\n[HKEY_CURRENT_USER\\A\\004]\r\n\r\n"
            "[HKEY_CURRENT_USER\\A\\004\\Y]\r\n\r\n");
}

TEST_F(RegFileStoreTest, GivesTheRulesKeyWhole) {
  auto store = Open(
      "[HKEY_CURRENT_USER\\A]\r\n\r\n[HKEY_CURRENT_USER\\A\\Mail\\001]\r\n\r\n"
      "[HKEY_CURRENT_USER\\A\\Mail]\r\n\r\n[HKEY_CURRENT_USER\\Z]\r\n\r\n");
  const auto before = Body();
  store->GiveKey("a\\mail\\", Import::Replaces);
  store->BeginBatch();
  KeyHandle key = 0;
  store->CreateKey("A\\Mail\\000", key);
  store->DeleteKey("A\\Mail\\000");
  store->AbandonBatch();
  store->BeginBatch();
  EXPECT_EQ(store->CommitBatch(false), CommitOutcome::Done);
  EXPECT_EQ(Body(), before);
  store->CreateKey("A\\Mail\\002", key);
  store->DeleteKey("A\\Mail\\001");
  const std::string after =
      "[HKEY_CURRENT_USER\\A]\r\n\r\n[-HKEY_CURRENT_USER\\A\\Mail]\r\n\r\n"
      "[HKEY_CURRENT_USER\\A\\Mail\\002]\r\n\r\n[HKEY_CURRENT_USER\\A\\Mail]\r\n\r\n"
      "[HKEY_CURRENT_USER\\Z]\r\n\r\n";
  EXPECT_EQ(Body(), after);
}

TEST_F(RegFileStoreTest, DeletionsOfTheFileHoldAfterEdits) {
  const std::string restOfFile =
      "[HKEY_CURRENT_USER\\A\\C]\r\n\r\n[-HKEY_CURRENT_USER\\D]\r\n\r\n"
      "[HKEY_CURRENT_USER\\D\\E]\r\n\r\n";
  const std::string head = "[HKEY_CURRENT_USER\\A]\r\n\"v\"=";
  const std::string deleted = "\r\n\r\n[-HKEY_CURRENT_USER\\A\\B]\r\n\r\n";
  auto store = Open(head + "-" + deleted + restOfFile);
  const auto before = Body();
  KeyHandle key = 0;
  const auto edit = [&] {
    store->BeginBatch();
    store->CreateKey("A\\B\\Sub", key);
    store->SetValue(Key(*store, "A"), "v", ValueKind::Binary, "1");
  };
  edit();
  for (const auto* const gone : {"D\\E", "D", "A\\C"}) store->DeleteKey(gone);
  store->AbandonBatch();
  // A write and its reversal bring the whole file out again.
  store->CreateKey("Z", key);
  store->DeleteKey("Z");
  EXPECT_EQ(Body(), before);
  edit();
  EXPECT_EQ(store->CommitBatch(false), CommitOutcome::Done);
  EXPECT_EQ(Body(), head + "hex:31" + deleted +
                        "[HKEY_CURRENT_USER\\A\\B]\r\n\r\n"
                        "[HKEY_CURRENT_USER\\A\\B\\Sub]\r\n\r\n" +
                        restOfFile);
  store->DeleteKey("A\\B\\Sub");
  store->DeleteKey("A\\B");
  EXPECT_EQ(Body(), head + "hex:31" + deleted + restOfFile);
}

}  // namespace

}  // namespace morvelle
