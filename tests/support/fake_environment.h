#pragma once

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "app/messages/text.h"
#include "ports/environment.h"

namespace morvelle {

/// A machine that a test sets up: its members are what the program sees of it. The old Windows
/// drives lie below one folder of the host: C:\a\b is `drives`/drive_c/a/b, letter case counting.
class FakeEnvironment : public Environment {
 public:
  explicit FakeEnvironment(std::filesystem::path folder)
      : programFile(folder / "programme" / "Morvelle.exe"),
        userFolder(folder / "programme"),
        drives(std::move(folder)) {}

  std::filesystem::path programFile;
  std::filesystem::path userFolder;
  std::filesystem::path drives;
  /// Names in lower case.
  std::map<std::string, std::string> variables;
  std::map<std::filesystem::path, std::string> fileVersions;
  /// 15 November 2026, 10:20:30 UTC, until the test says otherwise.
  std::chrono::system_clock::time_point now{std::chrono::seconds(1794738030)};
  std::filesystem::path currentFolder;
  /// Finds the paths instead, where a test is about that.
  std::function<std::filesystem::path(const std::string&)> finder;

  [[nodiscard]] std::filesystem::path ProgramFile() const override { return programFile; }
  [[nodiscard]] std::filesystem::path UserFolder() const override { return userFolder; }
  [[nodiscard]] std::optional<std::string> Variable(const std::string& name) const override {
    const auto found = variables.find(LowerCase(name));
    if (found == variables.end()) return std::nullopt;
    return found->second;
  }
  [[nodiscard]] std::string GetFileVersion(const std::filesystem::path& file) const override {
    const auto found = fileVersions.find(file);
    return found == fileVersions.end() ? std::string() : found->second;
  }
  [[nodiscard]] std::filesystem::path HostPath(const std::string& windowsPath) const override {
    if (finder) return finder(windowsPath);
    auto path = windowsPath;
    std::filesystem::path host = drives;
    if (path.size() >= 2 && path[1] == ':') {
      host /= std::string("drive_") + LowerCase(path[0]);
      path.erase(0, 2);
    }
    std::size_t from = 0;
    while (from < path.size()) {
      const auto to = std::min(path.find('\\', from), path.size());
      if (to > from) host /= std::filesystem::path(ToUtf16(path.substr(from, to - from)));
      from = to + 1;
    }
    return host;
  }
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override { return now; }
  void SetCurrentFolder(const std::filesystem::path& folder) override { currentFolder = folder; }
};

}  // namespace morvelle
