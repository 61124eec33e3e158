#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace morvelle {

/// A program by its name, from the folders of PATH; empty when none of them has it. Only entries
/// that are full paths count: any other would mean whatever folder is the working one.
std::filesystem::path FindProgram(const std::string& name);

/// Starts a program, named by its full path as the first word, and does not wait for it. It gets no
/// descriptor of ours, and goes on when we end. False when it cannot be started.
bool StartProgram(std::vector<std::string> words);

}  // namespace morvelle
