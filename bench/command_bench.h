#pragma once

#include <array>
#include <filesystem>
#include <utility>

namespace morvelle::bench {

/// The tables filled from a store that is in memory already, the window's state included.
inline constexpr const char* kLoadFromMemory = "LoadFromMemory";

/// Ends the name of a benchmark whose writes go to the file.
inline constexpr const char* kInFile = "InFile";

/// The benchmarks of the commands on rules, and what each does.
inline constexpr std::array<std::pair<const char*, const char*>, 6> kCommands = {{
    {"AddRule", "adding a rule"},
    {"SaveNewRule", "saving the new rule with the order"},
    {"DeleteRule", "deleting a rule"},
    {"RenameRule", "renaming a rule"},
    {"MoveRule", "moving a rule by one place"},
    {"SaveOrder", "saving the order"},
}};

/// Each command on a store in memory and on the file, which is left changed, with as many rules as
/// before.
void RegisterCommands(const std::filesystem::path& file, int rules);

}  // namespace morvelle::bench
