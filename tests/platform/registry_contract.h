#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "ports/registry_store.h"

namespace morvelle {

/// A kind of store that the contract tests run on.
struct StoreKind {
  std::string name;
  /// An empty store; what it stands on is let go of with the pointer.
  std::function<std::shared_ptr<RegistryStore>()> make;
  /// Whether AbandonBatch undoes.
  bool undoes = true;
};

/// Run on a store with INSTANTIATE_TEST_SUITE_P(Name, RegistryContract, testing::Values(kind),
/// StoreKindName): whoever adds a kind of store adds that line and nothing else.
class RegistryContract : public testing::TestWithParam<StoreKind> {
 protected:
  RegistryContract() : store_(GetParam().make()) {}

  KeyHandle Created(std::string_view path) {
    KeyHandle key = 0;
    EXPECT_EQ(store_->CreateKey(path, key), kStatusSuccess) << path;
    return key;
  }
  RegistryStatus Opening(std::string_view path) {
    KeyHandle key = 0;
    const auto status = store_->OpenKey(path, KeyAccess::ReadWrite, key);
    if (status == kStatusSuccess) {
      EXPECT_EQ(store_->CloseKey(key), kStatusSuccess);
    }
    return status;
  }
  std::string Read(KeyHandle key, std::string_view name) {
    std::string data;
    const auto status = store_->ReadValue(key, name, data);
    return status == kStatusSuccess ? data : "status " + std::to_string(status);
  }
  std::string Names(KeyHandle key) {
    std::string all;
    std::string name;
    for (std::uint32_t i = 0; store_->EnumKey(key, i, name) == kStatusSuccess; ++i) {
      all += (all.empty() ? "" : " ");
      all += name;
    }
    return all;
  }

  std::shared_ptr<RegistryStore> store_;
};

inline std::string StoreKindName(const testing::TestParamInfo<StoreKind>& info) {
  return info.param.name;
}

}  // namespace morvelle
