#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/messages/messages.h"
#include "ports/environment.h"

namespace morvelle {

/// A text file that a signature names, as an export finds it.
struct NamedText {
  std::filesystem::path place;
  /// Nothing when it is not there or is left out.
  std::optional<std::string> bytes;
  /// It is not one to be copied, or cannot be read.
  bool isLeftOut = false;
};

/// The text files that signatures name, by full Windows paths. Whoever wrote such a path may want a
/// file read that is nobody else's business, or written where a program will run it: what is no
/// text, or has no place here, is left alone, and nothing is written without a question.
class SignatureTexts {
 public:
  SignatureTexts(const Environment& environment, const Messages& messages)
      : environment_(environment), messages_(messages) {}

  [[nodiscard]] NamedText Read(const std::string& file) const;
  /// Puts the bytes of `kept` in the place that `file` names, once the user agrees; a file with
  /// other bytes leaves a dated copy. Says so when that is not done. False where something else
  /// lies there, or may: the mail client would add it to every message.
  [[nodiscard]] bool PutBack(const std::string& file, const std::filesystem::path& kept) const;

 private:
  struct Place;
  [[nodiscard]] Place Find(const std::string& file) const;
  /// Why it was not done, in a few words; empty when it was, or nothing was left to do.
  [[nodiscard]] std::string Write(const std::string& file, const std::filesystem::path& place,
                                  const std::filesystem::path& kept) const;
  [[nodiscard]] bool Agrees(const std::string& file, const std::filesystem::path& place,
                            bool isReplaced, bool isDoubtful) const;

  const Environment& environment_;
  const Messages& messages_;
};

/// A path that somebody else wrote, for a box: on one line.
std::string ShownPath(std::string path);

}  // namespace morvelle
