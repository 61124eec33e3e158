// The first steps of a start, on files of a machine that are not what they should be.

#include "app/start_up.h"

#include "tests/core/rule_model.h"
#include "tests/support/fake_machine.h"

namespace morvelle {
namespace {

struct StartUpTest : ScriptedMachine, StartUpWindow {
  StartUpTest() { RuleSet(store).Order("000"); }
  StatusPanels& Panels() override { return display; }
  void LoadRules() override { ++loads; }
  void TickAutoUpdateBook(bool) override {}
  void EnableWab(bool) override {}
  void ShowWhiteListK9(bool) override {}
  void FinishStart() override {}

  FakeRegistry store;
  RecordedDisplay display;
  Ports ports = On(store);
  ProgramState state;
  Program program{ports, state};
  StartUp start{ports, state, program};
  int loads = 0;
};

TEST_F(StartUpTest, WhatCannotBeMadeInItsFolderIsSaidAndTheStartGoesOn) {
  const auto own = environment.userFolder;
  std::filesystem::create_directories(own / "Morvelle.ini");
  WriteFile(own / "Fichiers VLX", "");
  dialogs.Expect("Permission refusée"_cp, kBoxOk, "WriteSettings");
  dialogs.Expect("Ce fichier existe déjà"_cp, kBoxOk, "InitVLX");
  dialogs.AllowAnyBox();
  start.InitVLX(*this);
  EXPECT_EQ(loads, 1);
  EXPECT_EQ(ReadFile(own / "Fichiers VLX"), "");
}

}  // namespace
}  // namespace morvelle
