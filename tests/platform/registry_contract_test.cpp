#include "tests/platform/registry_contract.h"

#include <utility>

#include "app/messages/text.h"
#include "platform/registry_memory.h"
#include "platform/registry_regfile.h"
#include "tests/support/temp_folder.h"

namespace morvelle {

namespace {

std::shared_ptr<RegistryStore> EmptyRegFile() {
  struct Place {
    TempFolder folder;
    std::unique_ptr<RegistryStore> store;
  };
  auto place = std::make_shared<Place>();
  const auto file = place->folder / "vide.reg";
  WriteFile(file, "REGEDIT4\r\n");
  place->store = OpenRegFile(file, MakeHostFiles(), std::chrono::system_clock::now).store;
  return {place, place->store.get()};
}

INSTANTIATE_TEST_SUITE_P(
    Stores, RegistryContract,
    testing::Values(StoreKind{"Memory", [] { return std::make_shared<MemoryRegistry>(); }},
                    StoreKind{"RegFile", EmptyRegFile}),
    StoreKindName);

TEST_P(RegistryContract, KeepsValuesOfEveryTypeAsWritten) {
  const auto key = Created("Identities\\A");
  const std::array<std::pair<ValueKind, std::string>, 7> values = {{
      {ValueKind::String, std::string("abc\0", 4)},
      {ValueKind::String, std::string("été €"_cp) + '\0'},
      {ValueKind::String, ""},
      {ValueKind::ExpandString, "without its zero"},
      {ValueKind::MultiString, std::string("a\0b\0\0", 5)},
      {ValueKind::Binary, std::string("\0\xFF\0x", 4)},
      {ValueKind::Dword, std::string("\x01\0\0\0", 4)},
  }};
  for (const auto& [kind, data] : values) {
    ASSERT_EQ(store_->SetValue(key, "Value", kind, data), kStatusSuccess);
    ValueKind readKind{};
    std::uint32_t size = 0;
    EXPECT_EQ(store_->DescribeValue(key, "vaLUE", readKind, size), kStatusSuccess);
    EXPECT_EQ(readKind, kind);
    EXPECT_EQ(size, data.size());
    EXPECT_EQ(Read(key, "VALUE"), data);
  }
  EXPECT_EQ(store_->SetValue(key, "", ValueKind::String, "default"), kStatusSuccess);
  EXPECT_EQ(Read(key, ""), "default");
}

TEST_P(RegistryContract, SaysWhatIsNotThere) {
  const auto key = Created("A");
  std::string name;
  EXPECT_EQ(Opening("A\\B"), kStatusNotFound);
  EXPECT_EQ(Opening("AB"), kStatusNotFound);
  EXPECT_EQ(Read(key, "none"), "status 2");
  EXPECT_EQ(store_->DeleteValue(key, "none"), kStatusNotFound);
  EXPECT_EQ(store_->DeleteKey("B"), kStatusNotFound);
  EXPECT_EQ(store_->EnumKey(key, 0, name), kStatusNoMoreItems);
  EXPECT_EQ(store_->CloseKey(key), kStatusSuccess);
  EXPECT_EQ(store_->CloseKey(key), kStatusInvalidHandle);
  EXPECT_EQ(store_->CloseKey(0), kStatusInvalidHandle);
  EXPECT_EQ(Read(key, "none"), "status 6");
}

TEST_P(RegistryContract, ListsSubkeysByNameWithoutRegardToCase) {
  const auto key = Created("Rules");
  for (const auto* name : {"00b", "_x", "00A", "009", "00C"}) {
    Created(std::string("Rules\\") + name);
  }
  EXPECT_EQ(Names(key), "009 00A 00b 00C _x");
  Created("RULES\\00B\\Sub\\");
  EXPECT_EQ(Names(key), "009 00A 00b 00C _x");
  EXPECT_EQ(Opening("rules\\00B\\sub"), kStatusSuccess);
  Created(std::string("Rules\\é"_cp));
  EXPECT_EQ(Opening(std::string("Rules\\É"_cp)), kStatusSuccess);
}

TEST_P(RegistryContract, DeletesOnlyKeysWithoutSubkeys) {
  const auto action = Created("Mail\\000\\Actions");
  EXPECT_EQ(store_->DeleteKey("Mail\\000"), kStatusAccessDenied);
  EXPECT_EQ(store_->DeleteKey(""), kStatusAccessDenied);
  EXPECT_EQ(store_->DeleteKey("mail\\000\\ACTIONS\\"), kStatusSuccess);
  EXPECT_EQ(Opening("Mail\\000\\Actions"), kStatusNotFound);
  EXPECT_EQ(store_->SetValue(action, "Type", ValueKind::Binary, "x"), 1018);
  EXPECT_EQ(store_->CloseKey(action), kStatusSuccess);
  EXPECT_EQ(store_->DeleteKey("Mail\\000"), kStatusSuccess);
  EXPECT_EQ(Opening("Mail"), kStatusSuccess);
}

TEST_P(RegistryContract, AKeyOpenedForEnumerationGivesNoValues) {
  KeyHandle key = Created("A\\B");
  ASSERT_EQ(store_->OpenKey("A", KeyAccess::EnumerateSubkeys, key), kStatusSuccess);
  EXPECT_EQ(Names(key), "B");
  EXPECT_EQ(Read(key, "x"), "status 5");
  EXPECT_EQ(store_->SetValue(key, "x", ValueKind::Binary, ""), kStatusAccessDenied);
}

TEST_P(RegistryContract, RenamesSubkeysAtOnce) {
  constexpr std::array<std::string_view, 1> kKnown = {"Value"};
  for (const auto* name : {"000", "001", "002", "00A"}) {
    const auto key = Created(std::string("Criteria\\") + name);
    store_->SetValue(key, "Value", static_cast<ValueKind>(0x12), name);
  }
  Created("Criteria\\002\\Below");
  // 001 and 002 exchange places, 00A takes the place of 000, which is not renamed itself.
  const std::vector<KeyRename> renames = {{"001", "002"}, {"002", "001"}, {"00a", "000"}};
  store_->BeginBatch();
  ASSERT_EQ(store_->RenameSubkeys("Criteria", renames, kKnown), kStatusSuccess);
  const auto shown = [&] {
    std::string text = Names(Created("Criteria"));
    for (const auto* name : {"000", "001", "002"}) {
      text += " " + Read(Created(std::string("Criteria\\") + name), "Value");
    }
    return text;
  };
  EXPECT_EQ(shown(), "000 001 002 00A 002 001");
  EXPECT_EQ(Names(Created("Criteria\\001")), "Below");
  if (!GetParam().undoes) return;
  store_->AbandonBatch();
  EXPECT_EQ(shown(), "000 001 002 00A 000 001 002");
  EXPECT_EQ(store_->RenameSubkeys("Criteria", {{{"00F", "000"}}}, kKnown), kStatusNotFound);
}

TEST_P(RegistryContract, MakesNewKeysAtOnceOrNotAtAll) {
  const std::array<NewValue, 2> values = {
      {{"Name", ValueKind::String, {"été\0", 6}}, {"Enabled", ValueKind::Dword, {"\1\0\0\0", 4}}}};
  const std::array<NewKey, 4> keys = {
      {{"", values}, {"Actions", {}}, {"Actions\\001", values}, {"Actions\\000", values}}};
  Created("Mail\\000");
  EXPECT_FALSE(store_->WriteNewKeys("Other\\000", keys)) << "no batch";
  EXPECT_EQ(Opening("Other\\000"), kStatusNotFound);
  store_->BeginBatch();
  if (!store_->WriteNewKeys("Mail\\00A", keys)) {
    EXPECT_EQ(Opening("Mail\\00A"), kStatusNotFound);
    store_->AbandonBatch();
    return;
  }
  EXPECT_EQ(Names(Created("Mail")), "000 00A");
  EXPECT_EQ(Names(Created("Mail\\00a\\Actions")), "000 001");
  for (const auto* path : {"Mail\\00A", "Mail\\00A\\Actions\\000"}) {
    EXPECT_EQ(Read(Created(path), "NAME"), std::string("été\0", 6)) << path;
    EXPECT_EQ(Read(Created(path), "Enabled"), std::string("\1\0\0\0", 4)) << path;
  }
  EXPECT_FALSE(store_->WriteNewKeys("Mail\\00a", keys)) << "it is there";
  EXPECT_FALSE(store_->WriteNewKeys(std::string(300, 'k'), keys)) << "no name of a key";
  store_->AbandonBatch();
  EXPECT_EQ(Opening("Mail\\00A"), kStatusNotFound);
  EXPECT_EQ(Names(Created("Mail")), "000");
}

}  // namespace

}  // namespace morvelle
