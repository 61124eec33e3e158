#pragma once

#include "app/program.h"
#include "ui/controls.h"

namespace morvelle {

/// The about box as state and commands.
class frmVersion {
 public:
  frmVersion(Ports& ports, const ProgramState& state);
  frmVersion(const frmVersion&) = delete;
  frmVersion& operator=(const frmVersion&) = delete;

  Frame form;
  /// A picture, and the program's icon.
  Frame Picture1;
  Frame picIcon;
  Label lblDescription;
  Label lblVersion;
  /// The address of the updates, which opens in the browser; hidden, with the line before it, where
  /// none is known.
  Label lblUpDateLine;
  PushButton lblUpDate;
  Label lblDisclaimer;
  PushButton cmdOK;

  /// Load event: fills the texts.
  void Form_Load();
  /// Told by the view: closes the box.
  Handler onClose;

 private:
  void lblUpDate_Click();

  Ports& ports_;
  const ProgramState& state_;
};

}  // namespace morvelle
