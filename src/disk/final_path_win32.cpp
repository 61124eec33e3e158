#include "disk/final_path_win32.h"

#include <windows.h>

#include <string>
#include <string_view>

namespace morvelle {

namespace {

/// "\\?\C:\a" as "C:\a" and "\\?\UNC\server\a" as "\\server\a": what the desktop's programs take.
std::wstring WithoutPrefix(const std::wstring& text) {
  constexpr std::wstring_view kPrefix = L"\\\\?\\";
  constexpr std::wstring_view kNetwork = L"\\\\?\\UNC\\";
  if (text.starts_with(kNetwork)) return L"\\\\" + text.substr(kNetwork.size());
  return text.starts_with(kPrefix) ? text.substr(kPrefix.size()) : text;
}

std::filesystem::path FinalPathOf(HANDLE file) {
  using Function = DWORD(WINAPI*)(HANDLE file, LPWSTR text, DWORD size, DWORD flags);
  const auto finalPath = reinterpret_cast<Function>(reinterpret_cast<void*>(
      ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "GetFinalPathNameByHandleW")));
  if (finalPath == nullptr) return {};
  // With the zero.
  const DWORD size = finalPath(file, nullptr, 0, 0);
  std::wstring text(size, L'\0');
  const DWORD length = size == 0 ? 0 : finalPath(file, text.data(), size, 0);
  text.resize(length < size ? length : 0);
  return WithoutPrefix(text);
}

}  // namespace

std::optional<std::filesystem::path> FinalPath(const std::filesystem::path& file) {
  const auto handle =
      ::CreateFileW(file.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return std::nullopt;
  auto real = FinalPathOf(handle);
  ::CloseHandle(handle);
  return real;
}

}  // namespace morvelle
