#pragma once

#include <span>
#include <string_view>

namespace morvelle {

/// An entry of the menu tree, in the order in which the menus show it.
struct MenuEntry {
  std::string_view name;
  /// Windows-1252; "-" is a separator. Shown as it stands: no character of it is a mnemonic.
  std::string_view caption;
  /// Name of the menu or entry under which it hangs; empty for the menu bar.
  std::string_view parent;
  /// One entry for each rule, filled while the program runs.
  bool perRule = false;
  /// A tick can stand before it.
  bool checkable = false;
  /// Key, in wxWidgets' notation ("Ctrl+S"); empty for none.
  std::string_view accelerator = {};
};

std::span<const MenuEntry> MenuTable();

}  // namespace morvelle
