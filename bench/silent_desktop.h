#pragma once

#include <filesystem>
#include <stdexcept>

#include "ports/dialogs.h"
#include "ports/environment.h"

namespace morvelle::bench {

/// A desktop on which nothing is asked, until `agrees` says yes to everything: any other box but
/// the missing folder store's is a failure of the benchmark.
class SilentDesktop final : public Dialogs, public Environment {
 public:
  explicit SilentDesktop(std::filesystem::path folder) : folder_(std::move(folder)) {}

  bool agrees = false;
  /// Answer of every input box.
  std::string typed;

  Button ShowMessage(const std::string& prompt, int /*style*/, const std::string& title) override {
    if (agrees) return Button::Yes;
    if (title != "Folders") throw std::runtime_error(title + ": " + prompt);
    return Button::Ok;
  }
  std::optional<std::string> AskText(const std::string& prompt, const std::string& /*title*/,
                                     const std::string& /*proposal*/) override {
    if (!agrees) throw std::runtime_error(prompt);
    return typed;
  }
  [[nodiscard]] std::filesystem::path ProgramFile() const override { return folder_ / "morvelle"; }
  [[nodiscard]] std::filesystem::path UserFolder() const override { return folder_; }
  [[nodiscard]] std::optional<std::string> Variable(const std::string& /*name*/) const override {
    return std::nullopt;
  }
  [[nodiscard]] std::string GetFileVersion(const std::filesystem::path& /*file*/) const override {
    return "0.0.0.0";
  }
  [[nodiscard]] std::filesystem::path HostPath(const std::string& /*windowsPath*/) const override {
    return folder_ / "Folders.dbx";
  }
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override {
    return std::chrono::system_clock::now();
  }
  void SetCurrentFolder(const std::filesystem::path& /*folder*/) override {}

 private:
  std::filesystem::path folder_;
};

}  // namespace morvelle::bench
