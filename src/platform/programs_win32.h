#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

/// What is loaded or started beside this program comes from one place each, never from wherever a
/// search would find a file of that name first.
namespace morvelle {

/// Where Windows keeps its libraries.
std::filesystem::path SystemFolder();
/// Where Windows keeps its file manager; of a server with many users, the folder of all of them.
std::filesystem::path WindowsFolder();

/// Loads this very file, what it needs in turn from its own folder and Windows' ones. Null where
/// that fails.
HMODULE LoadLibraryAt(const std::filesystem::path& file);

/// Starts this very program and does not wait for it; it gets no handle of ours. `line` is its
/// command line, the program's quoted name first; `show` is how its window is to appear. False when
/// it cannot be started.
bool StartProgramAt(const std::filesystem::path& program, std::wstring line, WORD show);

/// From now on no library is looked for in the working folder, which may be one that others fill.
void LeaveOutWorkingFolder();

}  // namespace morvelle
