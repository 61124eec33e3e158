#pragma once

#include <gmock/gmock.h>

#include "tests/core/rule_model.h"
#include "tests/support/fake_machine.h"
#include "wab/address_reader.h"

namespace morvelle {

/// A machine with an address book, and a reader of it.
struct BookMachine : FakeMachine, RuleModel {
  BookMachine() { rules.PutText(std::string(kTestBookKey), "", "C:\\Carnets\\moi.wab"); }
  /// The book's addresses, all of them good.
  void Book(const std::vector<std::string>& addresses) {
    addressBook.addresses.assign(addresses.begin(), addresses.end());
  }

  RuleSet& rules = set;
  BookPlace place;
  AddressReader reader{registry, environment, addressBook, place};
};

}  // namespace morvelle
