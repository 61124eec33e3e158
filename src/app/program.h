#pragma once

#include <filesystem>

#include "app/deleted_items_reader.h"
#include "app/settings.h"
#include "core/damage_report.h"
#include "core/editing_state.h"
#include "core/identity.h"
#include "core/registry_access.h"
#include "core/rule_tables.h"
#include "ports/address_book.h"
#include "ports/dialogs.h"
#include "ports/environment.h"
#include "ports/file_dialogs.h"
#include "ports/printer.h"
#include "ports/processes.h"
#include "ports/progress.h"
#include "ports/registry_store.h"
#include "ports/shell.h"
#include "wab/address_reader.h"
#include "wab/k9_whitelist.h"

namespace morvelle {

/// What the desktop offers, chosen by the main program.
struct Ports {
  RegistryStore& store;
  Dialogs& dialogs;
  Environment& environment;
  // Files and paper.
  FileDialogs& fileDialogs;
  Printer& printer;
  Progress& progress;
  AddressBook& addressBook;
  Processes& processes;
  Shell& shell;
};

/// What the whole program shares: one object, made once and handed down.
struct ProgramState {
  Identity identity;
  RuleTables tables;
  EditingState editing;
  Settings settings;
  BookPlace book;
  /// K9's whitelist; empty when K9 is not there.
  std::filesystem::path EmailsFile;
};

/// The services that stand on the ports and work on the state.
class Program {
 public:
  Program(Ports& ports, ProgramState& state)
      : messages(ports.dialogs),
        damage(messages, state.tables.RuleLabel),
        registry(ports.store, messages, damage),
        settingsFile(messages, state.settings),
        deletedItems(ports.dialogs, ports.environment, state.identity.StoreRoot),
        addressReader(registry, ports.environment, ports.addressBook, state.book),
        k9(registry, ports.environment, ports.processes, addressReader) {}
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  Messages messages;
  DamageReport damage;
  RegistryAccess registry;
  SettingsFile settingsFile;
  DeletedItemsReader deletedItems;
  AddressReader addressReader;
  K9Whitelist k9;
};

}  // namespace morvelle
