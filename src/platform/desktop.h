#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/command_line.h"
#include "ports/address_book.h"
#include "ports/environment.h"
#include "ports/processes.h"
#include "ports/registry_store.h"

/// What main.cpp asks of the system that it was built for: each system has its own file of these.
namespace morvelle {

/// Before anything else: what is wrong in how this process was started must not reach the user's
/// files.
void PrepareProcess();

struct OpenedDesktop {
  std::unique_ptr<Environment> environment;
  /// Null when it cannot be opened; `error` is then the message, Windows-1252.
  std::unique_ptr<RegistryStore> store;
  std::string error;
  std::unique_ptr<AddressBook> addressBook;
  std::unique_ptr<Processes> processes;
};

/// The environment, and the registry that the command line asks for. `version` is the program's
/// own, for a system whose program files do not carry it.
OpenedDesktop OpenThisDesktop(const CommandLine& line, const std::string& version);

/// The arguments of `main` without the program's own name, in the encoding in which a string
/// becomes a std::filesystem::path: UTF-8 on Windows, bytes elsewhere.
std::vector<std::string> Arguments(int count, char** values);

enum class Saying { Answer, Complaint };
/// Says something to who started the program, where there is no window yet. UTF-8.
void Say(Saying kind, const std::string& text);

}  // namespace morvelle
