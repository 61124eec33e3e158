#pragma once

#include <optional>
#include <string>

namespace morvelle {

/// Message-box styles (winuser.h, MB_*): a sum of one button set, one icon and one default button.
inline constexpr int kBoxOk = 0;
inline constexpr int kBoxOkCancel = 1;
inline constexpr int kBoxYesNo = 4;
inline constexpr int kBoxStop = 16;
inline constexpr int kBoxQuestion = 32;
inline constexpr int kBoxExclamation = 48;
inline constexpr int kBoxInformation = 64;
inline constexpr int kBoxSecondDefault = 256;

/// The button that closed a message box (winuser.h, IDOK and its kin).
enum class Button { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

/// The two boxes with which the program speaks to its user. Texts are Windows-1252, a line break
/// is a carriage return, a line feed or both.
class Dialogs {
 public:
  Dialogs() = default;
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;
  virtual ~Dialogs() = default;

  /// Shows a message box and waits. Closing it without a choice counts as Cancel where it has that
  /// button, as No where it has Oui and Non, else as Ok.
  virtual Button ShowMessage(const std::string& prompt, int style, const std::string& title) = 0;

  /// Asks for one line of text. Nothing when the user cancels. A text that Windows-1252 cannot hold
  /// is refused inside the box.
  virtual std::optional<std::string> AskText(const std::string& prompt, const std::string& title,
                                             const std::string& proposal) = 0;
};

}  // namespace morvelle
