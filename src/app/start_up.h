#pragma once

#include "app/program.h"

namespace morvelle {

/// What the start of the program shows in the window.
class StartUpWindow {
 public:
  virtual ~StartUpWindow() = default;
  virtual StatusPanels& Panels() = 0;
  virtual void LoadRules() = 0;
  virtual void TickAutoUpdateBook(bool ticked) = 0;
  /// Whether the address book's folder is known.
  virtual void EnableWab(bool known) = 0;
  virtual void ShowWhiteListK9(bool shown) = 0;
  /// The start has come to its end: imports are possible, what only some machines have is hidden.
  virtual void FinishStart() = 0;
};

/// Brings the program up: its places and settings, the identity, its rules and its folders.
class StartUp {
 public:
  StartUp(Ports& ports, ProgramState& state, Program& program)
      : ports_(ports), state_(state), program_(program) {}

  /// Stops after the identity when its rules key had to be made: there is nothing to load.
  void InitVLX(StartUpWindow& window);

 private:
  void FindOwnPlaces();
  void OpenBook(StartUpWindow& window);
  void UpdateBookRule(StartUpWindow& window);

  Ports& ports_;
  ProgramState& state_;
  Program& program_;
};

}  // namespace morvelle
