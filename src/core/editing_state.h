#pragma once

#include <cstdint>
#include <string>

namespace morvelle {

/// Which command the window is in. All are cleared together whenever an edit may be left.
struct ModeFlags {
  bool bMergeFile = false;  ///< A file to merge has been chosen.
  bool editingContent = false;
  bool adding = false;
  bool deleting = false;
  bool ordering = false;
  bool arranging = false;
  bool addressBook = false;
  bool reloading = false;
};

/// What the window's commands share about the edit in hand.
struct EditingState {
  /// Row of the rule open for editing, or shown last.
  std::int16_t nCurRule = 0;
  /// The open rule's content differs from what was last saved.
  bool bContentChanged = false;
  /// The order of the rules was changed and not saved.
  bool bOrderChanged = false;
  /// The text box of the list on show holds a word that may be added.
  bool bWordReady = false;
  ModeFlags modes;

  /// Id of the open rule; empty when none is open. Saving goes by it: rows move, ids do not.
  std::string openRuleId;
  /// The open rule was made in the window and is not in the store yet.
  bool openRuleIsNew = false;
  /// How the open rule's criteria combine was chosen in the menu, and so goes to all of them.
  bool logicChosen = false;
};

}  // namespace morvelle
