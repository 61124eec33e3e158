#include "platform/subkey_renames.h"

#include <gtest/gtest.h>

#include "platform/tree_store.h"

namespace morvelle {

namespace {

constexpr std::array<std::string_view, 1> kKnown = {"Value"};

/// A registry without renaming, some of whose writes fail: from one on, or those of a text.
class FailingRegistry : public TreeStore {
 public:
  FailingRegistry() { UseRoot(); }
  RegistryStatus SetValue(KeyHandle key, std::string_view name, ValueKind kind,
                          std::string_view data) override {
    if (writesLeft == 0 || data == failing) return kStatusAccessDenied;
    --writesLeft;
    return TreeStore::SetValue(key, name, kind, data);
  }
  /// Every rule that is whole, wherever it stands: a value at the top and one below.
  std::string Contents() {
    KeyHandle parent = 0;
    OpenKey("Rules", KeyAccess::ReadWrite, parent);
    std::string all;
    std::string name;
    for (std::uint32_t i = 0; EnumKey(parent, i, name) == kStatusSuccess; ++i) {
      all += name + "=" + Value(name) + Value(name + "\\Below") + " ";
    }
    CloseKey(parent);
    return all;
  }
  std::string Value(const std::string& name) {
    KeyHandle key = 0;
    std::string data = "none";
    if (OpenKey("Rules\\" + name, KeyAccess::ReadWrite, key) == kStatusSuccess) {
      ReadValue(key, "Value", data);
      CloseKey(key);
    }
    return data;
  }

  int writesLeft = 1000;
  std::string failing;
};

class SubkeyRenamesTest : public testing::Test {
 protected:
  SubkeyRenamesTest() {
    for (const auto* name : {"000", "001", "002"}) {
      for (const auto* below : {"", "\\Below"}) {
        KeyHandle key = 0;
        store_.CreateKey(std::string("Rules\\") + name + below, key);
        store_.SetValue(key, "Value", ValueKind::Binary, name);
        store_.CloseKey(key);
      }
    }
  }
  RegistryStatus Run(const std::vector<KeyRename>& renames) {
    return SubkeyRenames(store_, "Rules", kKnown).Run(renames);
  }

  FailingRegistry store_;
};

TEST_F(SubkeyRenamesTest, MovesRingsChainsAndNewNamesAtOnce) {
  EXPECT_EQ(Run({{"000", "001"}, {"001", "000"}, {"002", "00F"}}), kStatusSuccess);
  EXPECT_EQ(store_.Contents(), "000=001001 001=000000 00F=002002 ");
  EXPECT_EQ(Run({{"000", "001"}, {"001", "00f"}}), kStatusSuccess);
  EXPECT_EQ(store_.Contents(), "001=001001 00f=000000 ");
  EXPECT_EQ(Run({{"00F", "00F"}, {"001", "001"}}), kStatusSuccess);
  EXPECT_EQ(Run({{"001", "002"}, {"00A", "00B"}}), kStatusNotFound);
  EXPECT_EQ(store_.Contents(), "001=001001 00f=000000 ");
}

TEST_F(SubkeyRenamesTest, LosesNothingWhereverAWriteFails) {
  store_.BeginBatch();
  for (int writes = 0; writes < 6; ++writes) {
    store_.writesLeft = writes;
    ASSERT_NE(Run({{"000", "001"}, {"001", "000"}}), kStatusSuccess) << writes;
    const auto contents = store_.Contents();
    for (const auto* whole : {"=000000 ", "=001001 ", "=002002 "}) {
      EXPECT_NE(contents.find(whole), std::string::npos) << writes << " writes: " << contents;
    }
    // Another attempt starts from the rules as they were.
    store_.AbandonBatch();
    store_.BeginBatch();
  }
}

TEST_F(SubkeyRenamesTest, GoesBackWhenTheStoreLetsIt) {
  store_.failing = "001";
  EXPECT_EQ(Run({{"000", "001"}, {"001", "000"}}), kStatusAccessDenied);
  EXPECT_EQ(store_.Contents(), "000=000000 001=001001 002=002002 ");
}

}  // namespace

}  // namespace morvelle
