#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "ports/shell.h"

namespace morvelle {

/// Notes what the desktop was asked to open.
class FakeShell : public Shell {
 public:
  std::vector<std::filesystem::path> folders;
  std::vector<std::string> links;
  std::vector<std::string> helpPages;
  std::filesystem::path helpFile;

  void OpenFolder(const std::filesystem::path& folder) override { folders.push_back(folder); }
  void OpenLink(const std::string& address) override { links.push_back(address); }
  void ShowHelp(const std::filesystem::path& file, const std::string& page) override {
    helpFile = file;
    helpPages.push_back(page);
  }
};

}  // namespace morvelle
