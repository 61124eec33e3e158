#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, on which it leans.
#include <aclapi.h>
#include <shlwapi.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/registry_win32.h"

namespace morvelle {

/// Stands for HKEY_CURRENT_USER while it lives, so that nothing of the user's is touched.
class PrivateRegistry {
 public:
  PrivateRegistry() {
    ::SHDeleteKeyA(HKEY_CURRENT_USER, kTestKey);
    EXPECT_EQ(::RegCreateKeyA(HKEY_CURRENT_USER, kTestKey, &key_), ERROR_SUCCESS);
    EXPECT_EQ(::RegOverridePredefKey(HKEY_CURRENT_USER, key_), ERROR_SUCCESS);
    store = OpenWindowsRegistry();
  }
  PrivateRegistry(const PrivateRegistry&) = delete;
  PrivateRegistry& operator=(const PrivateRegistry&) = delete;
  ~PrivateRegistry() {
    store.reset();
    ::RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    ::RegCloseKey(key_);
    ::SHDeleteKeyA(HKEY_CURRENT_USER, kTestKey);
  }

  std::unique_ptr<RegistryStore> store;

 private:
  static constexpr const char* kTestKey = "Software\\Morvelle tests";
  HKEY key_ = nullptr;
};

/// A key as the rest of Windows sees it.
class DirectKey {
 public:
  explicit DirectKey(const std::string& path, REGSAM access = KEY_ALL_ACCESS) {
    EXPECT_EQ(::RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, access, &key_), ERROR_SUCCESS)
        << path;
  }
  DirectKey(const DirectKey&) = delete;
  DirectKey& operator=(const DirectKey&) = delete;
  ~DirectKey() { ::RegCloseKey(key_); }
  [[nodiscard]] HKEY Handle() const { return key_; }

  /// Stores these very bytes. Windows counts in a zero that it finds behind those of a string.
  void Set(const wchar_t* name, DWORD kind, std::string bytes) const {
    const auto size = static_cast<DWORD>(bytes.size());
    bytes += "xx";
    const auto* data = reinterpret_cast<const BYTE*>(bytes.data());
    EXPECT_EQ(::RegSetValueExW(key_, name, 0, kind, data, size), ERROR_SUCCESS);
  }

  /// Everything in the key and below it, in the order in which Windows lists it: names, types and
  /// the stored bytes.
  [[nodiscard]] std::vector<std::wstring> Contents(const std::wstring& below = {}) const {
    std::vector<std::wstring> all{below + L"\\"};
    std::wstring name(256, L'\0');
    for (DWORD i = 0;; ++i) {
      auto length = static_cast<DWORD>(name.size());
      DWORD kind = 0;
      DWORD size = 0;
      if (::RegEnumValueW(key_, i, name.data(), &length, nullptr, &kind, nullptr, &size) != 0)
        break;
      std::string data(size, '\0');
      ::RegQueryValueExW(key_, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(data.data()),
                         &size);
      all.push_back(below + L"\\" + name.substr(0, length) + L" " + std::to_wstring(kind) + L" " +
                    std::wstring(data.begin(), data.end()));
    }
    for (DWORD i = 0;; ++i) {
      auto length = static_cast<DWORD>(name.size());
      if (::RegEnumKeyExW(key_, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != 0) {
        break;
      }
      const DirectKey subkey(key_, name.substr(0, length));
      const auto more = subkey.Contents(below + L"\\" + name.substr(0, length));
      all.insert(all.end(), more.begin(), more.end());
    }
    return all;
  }

 private:
  DirectKey(HKEY parent, const std::wstring& name) {
    EXPECT_EQ(::RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &key_), ERROR_SUCCESS);
  }

  HKEY key_ = nullptr;
};

/// A key that everybody may read and nobody may write, while it lives.
class ReadOnlyKey {
 public:
  explicit ReadOnlyKey(const std::string& path) : key_(path) { Allow(KEY_READ | WRITE_DAC); }
  ReadOnlyKey(const ReadOnlyKey&) = delete;
  ReadOnlyKey& operator=(const ReadOnlyKey&) = delete;
  ~ReadOnlyKey() { Allow(KEY_ALL_ACCESS); }

 private:
  void Allow(DWORD rights) const {
    SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
    PSID everybody = nullptr;
    ASSERT_NE(
        ::AllocateAndInitializeSid(&world, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0, &everybody),
        FALSE);
    std::vector<char> memory(sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + ::GetLengthSid(everybody));
    auto* list = reinterpret_cast<ACL*>(memory.data());
    ::InitializeAcl(list, static_cast<DWORD>(memory.size()), ACL_REVISION);
    ::AddAccessAllowedAce(list, ACL_REVISION, rights, everybody);
    SECURITY_DESCRIPTOR descriptor;
    ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    ::SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
    EXPECT_EQ(::RegSetKeySecurity(key_.Handle(), DACL_SECURITY_INFORMATION, &descriptor),
              ERROR_SUCCESS);
    ::FreeSid(everybody);
  }

  DirectKey key_;
};

}  // namespace morvelle
