#pragma once

#include <filesystem>
#include <string>

namespace morvelle {

/// The desktop's own programs. What one of them cannot do it tells the user itself.
class Shell {
 public:
  Shell() = default;
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;
  virtual ~Shell() = default;

  /// Shows a folder in the file manager, which does not take the focus.
  virtual void OpenFolder(const std::filesystem::path& folder) = 0;
  /// Opens a web address in the browser.
  virtual void OpenLink(const std::string& address) = 0;
  /// Opens the manual at a page, named by its file ("regles.html"); at its first one when empty.
  /// `helpFile` is the manual as one file; a system that ships its pages finds them itself.
  virtual void ShowHelp(const std::filesystem::path& helpFile, const std::string& page) = 0;
};

}  // namespace morvelle
