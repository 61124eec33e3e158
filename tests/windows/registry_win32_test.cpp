#include "platform/registry_win32.h"

#include <array>

#include "tests/platform/registry_contract.h"
#include "tests/windows/private_registry.h"

namespace morvelle {

namespace {

std::shared_ptr<RegistryStore> EmptyWindowsRegistry() {
  auto registry = std::make_shared<PrivateRegistry>();
  return {registry, registry->store.get()};
}

INSTANTIATE_TEST_SUITE_P(Windows, RegistryContract,
                         testing::Values(StoreKind{"Registry", EmptyWindowsRegistry, false}),
                         StoreKindName);

class WindowsRegistryTest : public testing::Test {
 protected:
  KeyHandle Created(const char* path) {
    KeyHandle key = 0;
    EXPECT_EQ(registry_.store->CreateKey(path, key), kStatusSuccess);
    return key;
  }
  /// A key as the rest of Windows sees it.
  static HKEY Opened(const char* path) {
    HKEY key = nullptr;
    EXPECT_EQ(::RegOpenKeyA(HKEY_CURRENT_USER, path, &key), ERROR_SUCCESS);
    return key;
  }

  PrivateRegistry registry_;
};

TEST_F(WindowsRegistryTest, LeavesAStringAloneThatReadsAsWhatIsWritten) {
  const auto key = Created("A");
  const std::wstring stored = L"Ω Ωmega";
  const auto size = static_cast<DWORD>((stored.size() + 1) * sizeof(wchar_t));
  HKEY direct = Opened("A");
  const auto* bytes = reinterpret_cast<const BYTE*>(stored.c_str());
  ASSERT_EQ(::RegSetValueExW(direct, L"Name", 0, REG_SZ, bytes, size), ERROR_SUCCESS);
  const auto present = [direct] {
    std::array<wchar_t, 32> buffer{};
    DWORD count = sizeof buffer;
    ::RegQueryValueExW(direct, L"Name", nullptr, nullptr, reinterpret_cast<BYTE*>(buffer.data()),
                       &count);
    return std::wstring(buffer.data());
  };
  std::string view;
  ASSERT_EQ(registry_.store->ReadValue(key, "Name", view), kStatusSuccess);
  EXPECT_EQ(registry_.store->SetValue(key, "Name", ValueKind::String, view), kStatusSuccess);
  EXPECT_EQ(present(), stored);
  // Another type or another text is written.
  EXPECT_EQ(registry_.store->SetValue(key, "Name", ValueKind::ExpandString, view), kStatusSuccess);
  EXPECT_NE(present(), stored);
  ::RegCloseKey(direct);
}

TEST_F(WindowsRegistryTest, TextIsOfTheFrenchCodePage) {
  const auto key = Created("A");
  registry_.store->SetValue(key, "Name", ValueKind::String, std::string("\xE9t\xE9 \x80\0", 6));
  HKEY direct = Opened("A");
  std::array<wchar_t, 8> buffer{};
  DWORD size = sizeof buffer;
  ::RegQueryValueExW(direct, L"Name", nullptr, nullptr, reinterpret_cast<BYTE*>(buffer.data()),
                     &size);
  EXPECT_EQ(std::wstring(buffer.data()), L"été €");
  ::RegCloseKey(direct);
}

TEST_F(WindowsRegistryTest, AZeroInAPathDoesNotShortenIt) {
  Created("Mail\\000");
  auto& store = *registry_.store;
  KeyHandle key = 0;
  const std::string path("Mail\\000\0x", 10);
  EXPECT_NE(store.OpenKey(path, KeyAccess::ReadWrite, key), kStatusSuccess);
  EXPECT_NE(store.CreateKey(path, key), kStatusSuccess);
  EXPECT_NE(store.DeleteKey(path), kStatusSuccess);
  EXPECT_EQ(store.OpenKey("Mail\\000", KeyAccess::ReadWrite, key), kStatusSuccess);
  const std::string name("Na\0me", 5);
  EXPECT_NE(store.SetValue(key, name, ValueKind::Binary, "x"), kStatusSuccess);
  EXPECT_EQ(store.DeleteValue(key, "Na"), kStatusNotFound);
}

TEST_F(WindowsRegistryTest, AKeyDeletedByAnotherProgramIsSaidToBeSo) {
  const auto key = Created("Mail\\000");
  ASSERT_EQ(::RegDeleteKeyA(HKEY_CURRENT_USER, "Mail\\000"), ERROR_SUCCESS);
  constexpr RegistryStatus kStatusKeyDeleted = 1018;
  std::string data;
  EXPECT_EQ(registry_.store->ReadValue(key, "x", data), kStatusKeyDeleted);
  EXPECT_EQ(registry_.store->SetValue(key, "x", ValueKind::Binary, "x"), kStatusKeyDeleted);
  EXPECT_EQ(registry_.store->EnumKey(key, 0, data), kStatusKeyDeleted);
}

}  // namespace

}  // namespace morvelle
