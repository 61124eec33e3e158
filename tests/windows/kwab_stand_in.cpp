#include <windows.h>

#include <cstdint>
#include <cstring>

/// Stands in for the library that reads the Windows Address Book: the same six functions, on a book
/// that the variable MORVELLE_TEST_BOOK gives, its addresses separated by "|" (an entry without one
/// is empty). Without the variable no book opens. What is called against the rules fails.
namespace {

constexpr std::int32_t kHandle = 4711;
constexpr std::int32_t kFirstEntry = 100;
constexpr std::int32_t kEmailAddress = 0x3003001E;

char book[4096];
std::int32_t given;

std::int32_t Count() {
  if (book[0] == '\0') return 0;
  std::int32_t count = 1;
  for (const char* at = book; *at != '\0'; ++at) count += *at == '|' ? 1 : 0;
  return count;
}

bool IsOpen(const std::int32_t* handle) { return handle != nullptr && *handle == kHandle; }

}  // namespace

// NOLINTBEGIN(readability-identifier-naming): the library's names.
#define MORVELLE_EXPORT extern "C" __declspec(dllexport) std::int32_t __stdcall

MORVELLE_EXPORT kWabOpen(std::int32_t* handle) {
  book[0] = '\0';
  if (::GetEnvironmentVariableA("MORVELLE_TEST_BOOK", book, sizeof book) == 0 &&
      ::GetLastError() == ERROR_ENVVAR_NOT_FOUND) {
    return 0;
  }
  *handle = kHandle;
  return 1;
}

MORVELLE_EXPORT kWabGetNumEntries(std::int32_t* handle) { return IsOpen(handle) ? Count() : 0; }

MORVELLE_EXPORT kWabGetEntries(std::int32_t* handle, std::int32_t* ids, std::int32_t count) {
  if (!IsOpen(handle) || count != Count()) return 0;
  for (std::int32_t i = 0; i < count; ++i) ids[i] = kFirstEntry + i;
  given = count;
  return 1;
}

MORVELLE_EXPORT kWabGetProp_String(std::int32_t* handle, std::int32_t entry, std::int32_t property,
                                   char* buffer, std::int32_t length, std::int32_t zero) {
  if (!IsOpen(handle) || property != kEmailAddress || length != 256 || zero != 0) return 0;
  const char* address = book;
  for (std::int32_t i = kFirstEntry; i < entry; ++i) {
    address = std::strchr(address, '|');
    if (address == nullptr) return 0;
    ++address;
  }
  std::size_t size = 0;
  while (address[size] != '\0' && address[size] != '|') ++size;
  if (size == 0 || size >= static_cast<std::size_t>(length)) return 0;
  std::memcpy(buffer, address, size);
  buffer[size] = '\0';
  return 1;
}

MORVELLE_EXPORT kWabFreeEntries(std::int32_t* handle, std::int32_t* /*ids*/, std::int32_t count) {
  if (!IsOpen(handle) || count != given) return 0;
  given = 0;
  return 1;
}

MORVELLE_EXPORT kWabClose(std::int32_t* handle) {
  if (!IsOpen(handle)) return 0;
  *handle = 0;
  return 1;
}
// NOLINTEND(readability-identifier-naming)
