#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "app/messages/text.h"
#include "core/damage_report.h"
#include "core/rule_tables.h"
#include "tests/support/fake_address_book.h"
#include "tests/support/fake_environment.h"
#include "tests/support/fake_processes.h"
#include "tests/support/fake_registry.h"
#include "tests/support/rule_set.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/temp_folder.h"
#include "wab/address_reader.h"

namespace morvelle {

/// A machine with an address book, and a reader of it.
struct BookMachine : testing::Test {
  BookMachine() { rules.PutText(std::string(kTestBookKey), "", "C:\\Carnets\\moi.wab"); }
  /// The book's addresses, all of them good.
  void Book(const std::vector<std::string>& addresses) {
    addressBook.addresses.assign(addresses.begin(), addresses.end());
  }

  TempFolder folder;
  FakeEnvironment environment{folder.Path()};
  FakeRegistry store;
  ScriptedDialogs dialogs;
  FakeAddressBook addressBook;
  Messages messages{dialogs};
  RuleTables tables;
  DamageReport damage{messages, tables.RuleLabel};
  RegistryAccess registry{store, messages, damage};
  RuleSet rules{store};
  BookPlace place;
  AddressReader reader{registry, environment, addressBook, place};
};

inline constexpr std::string_view kUnreadableBook = "Impossible de lire le carnet d'adresses";
inline constexpr std::string_view kEmptyBook = "Le carnet d'adresses est vide";

}  // namespace morvelle
