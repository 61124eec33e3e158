#include "platform/programs_win32.h"

namespace morvelle {

namespace {

using FolderFunction = UINT(WINAPI*)(LPWSTR buffer, UINT size);

std::filesystem::path FolderFrom(FolderFunction function) {
  std::wstring name(MAX_PATH, L'\0');
  // Too small a buffer is answered with the size that is needed.
  auto length = function(name.data(), static_cast<UINT>(name.size()));
  if (length > name.size()) {
    name.resize(length);
    length = function(name.data(), length);
  }
  name.resize(length);
  return name;
}

}  // namespace

std::filesystem::path SystemFolder() { return FolderFrom(::GetSystemDirectoryW); }

std::filesystem::path WindowsFolder() { return FolderFrom(::GetSystemWindowsDirectoryW); }

HMODULE LoadLibraryAt(const std::filesystem::path& file) {
  if (!file.is_absolute()) return nullptr;
  return ::LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

bool StartProgramAt(const std::filesystem::path& program, std::wstring line, WORD show) {
  if (!program.is_absolute()) return false;
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = show;
  PROCESS_INFORMATION started{};
  if (::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS,
                       nullptr, nullptr, &start, &started) == FALSE) {
    return false;
  }
  ::CloseHandle(started.hProcess);
  ::CloseHandle(started.hThread);
  return true;
}

void LeaveOutWorkingFolder() {
  using SetFolderFunction = BOOL(WINAPI*)(LPCWSTR folder);
  // Windows XP has it from its first service pack on.
  const auto setFolder = reinterpret_cast<SetFolderFunction>(reinterpret_cast<void*>(
      ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "SetDllDirectoryW")));
  // What is set takes the working folder's place. An empty name would do so too, but Wine takes it
  // for none.
  if (setFolder != nullptr) setFolder(SystemFolder().c_str());
}

}  // namespace morvelle
