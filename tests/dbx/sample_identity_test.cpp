#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/messages/text.h"
#include "dbx/folder_store.h"
#include "tests/support/fake_environment.h"
#include "tests/support/scripted_dialogs.h"

namespace morvelle {
namespace {

using namespace std::string_literals;

TEST(SampleIdentity, ReadsWithoutABox) {
  ScriptedDialogs dialogs;
  const FakeEnvironment environment{std::filesystem::path(MORVELLE_SAMPLE_IDENTITY)};
  const std::string storeRoot =
      "C:\\Documents and Settings\\Utilisateur\\Local Settings\\Application Data\\Identities\\"
      "{5B0D1C7E-3A42-4F96-8E21-7C94A0D36B18}\\Microsoft\\Outlook Express";
  FolderStore store(dialogs, environment, storeRoot);
  const auto value = store.ReadFolders();
  ASSERT_TRUE(FolderStore::IsGood(value));
  EXPECT_EQ(value.substr(8), "\x05\0\0"s);
  std::vector<std::string> names;
  for (const auto& folder : store.Folders) names.push_back(folder.Id + ToUtf8(folder.Name));
  EXPECT_THAT(
      names, testing::IsSupersetOf({"020000Boîte de réception"s, "070000Famille"s, "0F0000Potager"s,
                                    "100000À lire"s, "120000Archives 2006\0"s}));
}

}  // namespace
}  // namespace morvelle
