#pragma once

#include <algorithm>
#include <memory>
#include <string_view>

#include "ports/dialogs.h"
#include "ports/environment.h"
#include "ports/shell.h"

namespace morvelle {

/// Whether a text is the address of a web page and nothing else: the desktop opens what it is given
/// by its kind, a program too, and a quote or a blank would end it within the browser's command
/// line.
inline bool IsWebAddress(std::string_view text) {
  const auto endsAWord = [](char c) { return (c >= 0 && c <= ' ') || c == '"' || c == '\x7F'; };
  return (text.starts_with("http://") || text.starts_with("https://")) &&
         std::none_of(text.begin(), text.end(), endsAWord);
}

/// The desktop's file manager, browser and help viewer. What they cannot open is told in a box.
std::unique_ptr<Shell> MakeShell(Dialogs& dialogs, const Environment& environment);

}  // namespace morvelle
