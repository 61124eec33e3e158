#include "platform/environment_win32.h"

#include <windows.h>

#include <system_error>
#include <vector>

#include "app/messages/text.h"

namespace morvelle {

namespace {

/// A variable's value; nothing when there is none of that name.
std::optional<std::wstring> WideVariable(const std::wstring& name) {
  // With the zero; 0 when there is none.
  DWORD size = ::GetEnvironmentVariableW(name.c_str(), nullptr, 0);
  while (size != 0) {
    std::wstring value(size, L'\0');
    const DWORD length = ::GetEnvironmentVariableW(name.c_str(), value.data(), size);
    if (length < size) {
      value.resize(length);
      return value;
    }
    size = length;
  }
  return std::nullopt;
}

/// The path with the variable at its head replaced; as it stands where it has none that is known.
std::wstring Expanded(const std::wstring& path) {
  const auto end = path.find(L'%', 1);
  if (end == std::wstring::npos || path.front() != L'%') return path;
  const auto value = WideVariable(path.substr(1, end - 1));
  return value ? *value + path.substr(end + 1) : path;
}

/// Registry and environment give text in the system's code page, whichever that is.
std::wstring WideOf(const std::string& text) {
  const auto size = static_cast<int>(text.size());
  const int length = ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), length);
  return wide;
}

/// Nothing when a character of the path is not of the system's code page.
std::optional<std::string> NarrowOf(const std::wstring& text) {
  BOOL lossy = FALSE;
  const auto size = static_cast<int>(text.size());
  const int length = ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), size, nullptr,
                                           0, nullptr, &lossy);
  if (lossy != FALSE) return std::nullopt;
  std::string narrow(static_cast<std::size_t>(length), '\0');
  ::WideCharToMultiByte(CP_ACP, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
  return narrow;
}

/// The path for a function that takes single-byte text: one with other letters goes by its short
/// name.
std::string NarrowPath(const std::filesystem::path& file) {
  if (auto narrow = NarrowOf(file.native())) return *narrow;
  std::wstring shortName(MAX_PATH, L'\0');
  const auto length = ::GetShortPathNameW(file.c_str(), shortName.data(), MAX_PATH);
  shortName.resize(length < MAX_PATH ? length : 0);
  return NarrowOf(shortName).value_or("");
}

}  // namespace

std::filesystem::path Win32Environment::ProgramFile() const {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const auto length = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length < name.size()) return name.substr(0, length);
    name.resize(name.size() * 2);
  }
}

std::filesystem::path Win32Environment::UserFolder() const { return ProgramFile().parent_path(); }

std::optional<std::string> Win32Environment::Variable(const std::string& name) const {
  if (folders_) return std::nullopt;
  // A folder's name may have letters that the code page lacks: the sign stays, for HostPath.
  const auto value = WideVariable(WideOf(name));
  return value ? NarrowOf(*value) : std::nullopt;
}

std::string Win32Environment::GetFileVersion(const std::filesystem::path& file) const {
  const auto name = NarrowPath(file);
  DWORD unused = 0;
  const DWORD size = ::GetFileVersionInfoSizeA(name.c_str(), &unused);
  if (size == 0) return {};
  std::vector<char> resource(size);
  void* found = nullptr;
  UINT length = 0;
  if (::GetFileVersionInfoA(name.c_str(), 0, size, resource.data()) == FALSE ||
      ::VerQueryValueA(resource.data(), "\\", &found, &length) == FALSE ||
      length < sizeof(VS_FIXEDFILEINFO)) {
    return {};
  }
  const auto* version = static_cast<const VS_FIXEDFILEINFO*>(found);
  std::string text;
  for (const DWORD pair : {version->dwFileVersionMS, version->dwFileVersionLS}) {
    if (!text.empty()) text += '.';
    text += std::to_string(HIWORD(pair)) + '.' + std::to_string(LOWORD(pair));
  }
  return text;
}

std::filesystem::path Win32Environment::HostPath(const std::string& windowsPath) const {
  if (folders_) return FindWindowsPath(*folders_, windowsPath);
  return Expanded(WideOf(windowsPath));
}

std::chrono::system_clock::time_point Win32Environment::Now() const {
  return std::chrono::system_clock::now();
}

void Win32Environment::SetCurrentFolder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::current_path(folder, error);
}

}  // namespace morvelle
