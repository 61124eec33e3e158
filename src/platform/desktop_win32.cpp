#include <windows.h>
// After windows.h, on which it leans.
#include <shellapi.h>

#include <chrono>
#include <new>
#include <utility>

#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/host_files.h"
#include "platform/address_book_file.h"
#include "platform/address_book_win32.h"
#include "platform/desktop.h"
#include "platform/environment_win32.h"
#include "platform/programs_win32.h"
#include "platform/registry_regfile.h"
#include "platform/registry_win32.h"
#include "platform/system_processes.h"
#include "platform/unicode.h"

namespace morvelle {

void PrepareProcess() { LeaveOutWorkingFolder(); }

OpenedDesktop OpenThisDesktop(const CommandLine& line, const std::string& /*version*/) {
  OpenedDesktop desktop;
  desktop.processes = MakeProcesses();
  if (!line.file) {
    desktop.addressBook = MakeWindowsAddressBook();
    desktop.environment = std::make_unique<Win32Environment>(std::nullopt);
    desktop.store = OpenWindowsRegistry();
    return desktop;
  }
  // The book that belongs to a registry file is a file too.
  desktop.addressBook = std::make_unique<FileAddressBook>();
  desktop.environment = std::make_unique<Win32Environment>(
      WindowsFolders{line.drives, line.profile, line.file->parent_path()});
  try {
    auto opened =
        OpenRegFile(*line.file, MakeHostFiles(), [] { return std::chrono::system_clock::now(); });
    desktop.store = std::move(opened.store);
    desktop.error = std::move(opened.error);
  } catch (const std::bad_alloc&) {
    desktop.error = FileFailure(*line.file, "ne peut être ouvert"_cp, kNoMemory);
  }
  return desktop;
}

std::vector<std::string> Arguments(int /*count*/, char** /*values*/) {
  // Those of `main` have lost the letters that the code page lacks.
  int count = 0;
  wchar_t** values = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) {
    const std::wstring_view value(values[i]);
    arguments.push_back(Utf8FromUtf16(std::u16string(value.begin(), value.end())));
  }
  ::LocalFree(values);
  return arguments;
}

void Say(Saying kind, const std::string& text) {
  // A program with a window has no console.
  const auto wide = Utf16FromUtf8(text).value_or(u"");
  const std::wstring shown(wide.begin(), wide.end());
  ::MessageBoxW(nullptr, shown.c_str(), L"Morvelle",
                kind == Saying::Answer ? MB_ICONINFORMATION : MB_ICONSTOP);
}

}  // namespace morvelle
