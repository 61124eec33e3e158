#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "ports/dialogs.h"

namespace morvelle {

/// The application's title, shown by every box that has no title of its own.
inline constexpr std::string_view kAppTitle = "Morvelle";

/// The message helpers that every procedure shares.
class Messages {
 public:
  explicit Messages(Dialogs& dialogs) : dialogs_(dialogs) {}

  /// Shows a box; an empty title becomes the application's title.
  // NOLINTNEXTLINE(google-runtime-references): callers see the title that was shown.
  Button Msg(std::string_view prompt, int buttons, std::string& title) const;
  Button Msg(std::string_view prompt, int buttons = kBoxOk) const;

  /// An exclamation followed by names in quotes, a line each; beyond a few, how many there are.
  /// Nothing without a name.
  void MsgNamed(std::string_view prompt, const std::vector<std::string>& names) const;

  /// A question with Oui and Non, Non being the default; true only for Oui.
  [[nodiscard]] bool TestOui(std::string_view prompt) const;

  /// Says that a file is missing or damaged; the path is shown as the code page can hold it.
  void FileDoesNotExist(const std::filesystem::path& path) const;

  /// False when the file is not there. An empty file counts as there but, with `report`, is
  /// reported as damaged.
  [[nodiscard]] bool FileExists(const std::filesystem::path& path, bool report = false) const;

  /// True when the path names a folder, hidden ones included.
  [[nodiscard]] static bool FolderExists(const std::filesystem::path& path);

  [[nodiscard]] Dialogs& Boxes() const { return dialogs_; }

 private:
  Dialogs& dialogs_;
};

/// Boxes of which one command may have very many to show: the first five are shown as they come,
/// what else there is to say as one list.
class BoxSeries {
 public:
  explicit BoxSeries(const Messages& messages) : messages_(messages) {}

  /// A box of its own, or a line of the list: `item` is then what the line says.
  void Say(std::string_view prompt, std::string_view item);
  /// Shows the list where there is one, under a line of its own: the first 20 of the rest and how
  /// many more there are.
  void Finish(std::string_view heading);

 private:
  const Messages& messages_;
  int shown_ = 0;
  std::vector<std::string> rest_;
};

}  // namespace morvelle
