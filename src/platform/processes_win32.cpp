#include <windows.h>
// After windows.h, on which they lean.
#include <psapi.h>
#include <tlhelp32.h>

#include <array>
#include <string>

#include "platform/programs_win32.h"
#include "platform/system_processes.h"

namespace morvelle {

namespace {

/// How long a process that was told to end is waited for, in milliseconds.
constexpr DWORD kPatience = 5000;
/// Processes of the system itself, which have no file (Windows XP's numbers).
constexpr ProcessId kIdleProcess = 0;
constexpr ProcessId kSystemProcess = 4;

class HandleOwner {
 public:
  explicit HandleOwner(HANDLE handle) : handle_(handle) {}
  HandleOwner(const HandleOwner&) = delete;
  HandleOwner& operator=(const HandleOwner&) = delete;
  ~HandleOwner() {
    if (IsOpen()) ::CloseHandle(handle_);
  }
  [[nodiscard]] bool IsOpen() const {
    return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE;
  }
  [[nodiscard]] HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

class Win32Processes final : public Processes {
 public:
  std::vector<RunningProcess> Snapshot() override {
    std::vector<RunningProcess> processes;
    const HandleOwner snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!snapshot.IsOpen()) return processes;
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32First(snapshot.Get(), &entry); more != FALSE;
         more = ::Process32Next(snapshot.Get(), &entry)) {
      processes.push_back({entry.th32ProcessID, entry.szExeFile});
    }
    return processes;
  }

  std::filesystem::path ProcessPath(ProcessId process) override {
    if (process == kIdleProcess) return "[System Process]";
    if (process == kSystemProcess) return "System";
    const HandleOwner opened(
        ::OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process));
    HMODULE first = nullptr;
    DWORD needed = 0;
    if (!opened.IsOpen() ||
        ::EnumProcessModules(opened.Get(), &first, sizeof(HMODULE), &needed) == FALSE) {
      return {};
    }
    // Wide: a folder may have letters that the code page lacks, and K9 must be found again there.
    std::array<wchar_t, MAX_PATH + 1> path{};
    ::GetModuleFileNameExW(opened.Get(), first, path.data(), MAX_PATH);
    return path.data();
  }

  bool KillProcess(ProcessId process) override {
    // To be waited for it must be opened for that too: its files are free only once it is gone.
    const HandleOwner opened(::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process));
    return opened.IsOpen() && ::TerminateProcess(opened.Get(), 0) != FALSE &&
           ::WaitForSingleObject(opened.Get(), kPatience) == WAIT_OBJECT_0;
  }

  bool StartProcess(const std::filesystem::path& program) override {
    return StartProgramAt(program, L"\"" + program.native() + L"\"", SW_SHOWNORMAL);
  }
};

}  // namespace

std::unique_ptr<Processes> MakeProcesses() { return std::make_unique<Win32Processes>(); }

}  // namespace morvelle
