#pragma once

#include <filesystem>
#include <string>

namespace morvelle {

/// The command line that shows a folder in Windows' file manager, `explorer`, which takes no other
/// form of it: the name, and then words that commas part. A folder's name may hold commas and
/// blanks, never a quote.
std::wstring FolderCommand(const std::filesystem::path& explorer, std::filesystem::path folder);

}  // namespace morvelle
