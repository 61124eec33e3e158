#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <optional>
#include <vector>

#include "ports/file_dialogs.h"

namespace morvelle {

/// File dialogs that a test plays by a script: each takes the next answer, in order; one without an
/// answer, or an answer never asked for, fails the test.
class ScriptedFileDialogs final : public FileDialogs {
 public:
  ~ScriptedFileDialogs() override {
    EXPECT_TRUE(answers_.empty()) << "a file dialog was never shown";
  }
  /// The file chosen in the next dialog; nothing cancels it.
  void Choose(std::optional<std::filesystem::path> file) { answers_.push_back(std::move(file)); }

  /// Every question so far.
  std::vector<FileQuestion> asked;

  std::optional<std::filesystem::path> AskFileToOpen(const FileQuestion& question) override {
    asked.push_back(question);
    if (answers_.empty()) {
      ADD_FAILURE() << "unexpected file dialog: " << question.title;
      return std::nullopt;
    }
    auto answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
  }
  std::optional<std::filesystem::path> AskFileToSave(const FileQuestion& question) override {
    auto file = AskFileToOpen(question);
    if (file) file = WithExtensionOf(question.pattern, std::move(*file));
    return file;
  }

 private:
  std::deque<std::optional<std::filesystem::path>> answers_;
};

}  // namespace morvelle
