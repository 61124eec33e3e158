#include "platform/registry_win32.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "app/messages/text.h"
#include "platform/subkey_renames.h"

namespace morvelle {

namespace {

constexpr RegistryStatus kStatusMoreData = ERROR_MORE_DATA;
constexpr RegistryStatus kStatusInvalidParameter = ERROR_INVALID_PARAMETER;
static_assert(kStatusNotFound == ERROR_FILE_NOT_FOUND && kStatusNoMoreItems == ERROR_NO_MORE_ITEMS);

/// A key's name has at most 255 characters (winreg.h's documented limit); one more for the zero.
constexpr std::size_t kNameBuffer = 256;

/// A name ends at its first zero byte for Windows: with one inside it would stand for another key,
/// a rule's for the parent of all the rules.
bool HasZero(std::string_view text) { return text.find('\0') != std::string_view::npos; }

/// Windows takes a path without a "\" at its end everywhere, one with it not in every version.
std::string Trimmed(std::string_view path) {
  while (!path.empty() && path.back() == '\\') path.remove_suffix(1);
  return std::string(path);
}

BYTE* BytesOf(std::string& data) { return reinterpret_cast<BYTE*>(data.data()); }

class WindowsRegistry final : public RegistryStore {
 public:
  WindowsRegistry() = default;
  WindowsRegistry(const WindowsRegistry&) = delete;
  WindowsRegistry& operator=(const WindowsRegistry&) = delete;
  ~WindowsRegistry() override {
    for (HKEY key : keys_) {
      if (key != nullptr) ::RegCloseKey(key);
    }
  }

  RegistryStatus OpenKey(std::string_view path, KeyAccess access, KeyHandle& handle) override {
    if (HasZero(path)) return kStatusInvalidParameter;
    HKEY key = nullptr;
    const auto status = ::RegOpenKeyExA(HKEY_CURRENT_USER, Trimmed(path).c_str(), 0,
                                        static_cast<REGSAM>(access), &key);
    return Given(status, key, handle);
  }

  RegistryStatus CreateKey(std::string_view path, KeyHandle& handle) override {
    if (HasZero(path)) return kStatusInvalidParameter;
    HKEY key = nullptr;
    const auto status = ::RegCreateKeyExA(
        HKEY_CURRENT_USER, Trimmed(path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
        static_cast<REGSAM>(KeyAccess::ReadWrite), nullptr, &key, nullptr);
    return Given(status, key, handle);
  }

  RegistryStatus CloseKey(KeyHandle handle) override {
    HKEY key = KeyOf(handle);
    if (key == nullptr) return kStatusInvalidHandle;
    keys_[handle - 1] = nullptr;
    return ::RegCloseKey(key);
  }

  RegistryStatus DescribeValue(KeyHandle key, std::string_view name, ValueKind& kind,
                               std::uint32_t& size) override {
    if (HasZero(name)) return kStatusNotFound;
    DWORD type = 0;
    DWORD bytes = 0;
    const auto status =
        ::RegQueryValueExA(KeyOf(key), std::string(name).c_str(), nullptr, &type, nullptr, &bytes);
    if (status != ERROR_SUCCESS) return status;
    kind = static_cast<ValueKind>(type);
    size = bytes;
    return kStatusSuccess;
  }

  RegistryStatus ReadValue(KeyHandle key, std::string_view name, std::string& data) override {
    ValueKind kind{};
    return Read(key, name, kind, data);
  }

  RegistryStatus SetValue(KeyHandle key, std::string_view name, ValueKind kind,
                          std::string_view data) override {
    if (HasZero(name)) return kStatusInvalidParameter;
    ValueKind presentKind{};
    std::string present;
    // The stored string may hold characters that the code page lacks: writing its view would lose
    // them.
    if (Read(key, name, presentKind, present) == kStatusSuccess && presentKind == kind &&
        present == data) {
      return kStatusSuccess;
    }
    // Windows counts in a zero that it finds behind the bytes of a string that has none.
    std::string guarded(data);
    guarded += 'x';
    return ::RegSetValueExA(KeyOf(key), std::string(name).c_str(), 0, static_cast<DWORD>(kind),
                            BytesOf(guarded), static_cast<DWORD>(data.size()));
  }

  RegistryStatus DeleteValue(KeyHandle key, std::string_view name) override {
    if (HasZero(name)) return kStatusNotFound;
    return ::RegDeleteValueA(KeyOf(key), std::string(name).c_str());
  }

  RegistryStatus EnumKey(KeyHandle key, std::uint32_t index, std::string& name) override {
    std::array<char, kNameBuffer> buffer{};
    DWORD length = buffer.size();
    const auto status = ::RegEnumKeyExA(KeyOf(key), index, buffer.data(), &length, nullptr, nullptr,
                                        nullptr, nullptr);
    if (status == ERROR_SUCCESS) name.assign(buffer.data(), length);
    return status;
  }

  RegistryStatus DeleteKey(std::string_view path) override {
    if (HasZero(path)) return kStatusInvalidParameter;
    const auto trimmed = Trimmed(path);
    // The root of the user's registry.
    if (trimmed.empty()) return kStatusAccessDenied;
    return ::RegDeleteKeyA(HKEY_CURRENT_USER, trimmed.c_str());
  }

  RegistryStatus RenameSubkeys(std::string_view path, std::span<const KeyRename> renames,
                               std::span<const std::string_view> known) override {
    return SubkeyRenames(*this, Trimmed(path), known).Run(renames);
  }

 private:
  /// Null for a handle that is not open: the functions of Windows answer it with status 6.
  [[nodiscard]] HKEY KeyOf(KeyHandle handle) const {
    return handle == 0 || handle > keys_.size() ? nullptr : keys_[handle - 1];
  }

  RegistryStatus Given(LONG status, HKEY key, KeyHandle& handle) {
    if (status != ERROR_SUCCESS) return status;
    const auto free = std::find(keys_.begin(), keys_.end(), nullptr);
    handle = static_cast<KeyHandle>(free - keys_.begin() + 1);
    if (free == keys_.end()) {
      keys_.push_back(key);
    } else {
      *free = key;
    }
    return kStatusSuccess;
  }

  RegistryStatus Read(KeyHandle key, std::string_view name, ValueKind& kind, std::string& data) {
    std::uint32_t size = 0;
    auto status = DescribeValue(key, name, kind, size);
    // Another program may write a longer one between the two calls.
    while (status == kStatusSuccess) {
      std::string bytes(std::size_t{size} + 1, '\0');
      DWORD type = 0;
      DWORD count = size;
      status = ::RegQueryValueExA(KeyOf(key), std::string(name).c_str(), nullptr, &type,
                                  BytesOf(bytes), &count);
      if (status == kStatusMoreData && count > size) {
        size = count;
        status = kStatusSuccess;
        continue;
      }
      if (status != kStatusSuccess) break;
      bytes.resize(count);
      kind = static_cast<ValueKind>(type);
      data = std::move(bytes);
      break;
    }
    return status;
  }

  /// Windows' own handles, 64 bits wide in a 64-bit program, by ours less one.
  std::vector<HKEY> keys_;
};

}  // namespace

std::unique_ptr<RegistryStore> OpenWindowsRegistry() { return std::make_unique<WindowsRegistry>(); }

}  // namespace morvelle
