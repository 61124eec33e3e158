#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <new>
#include <utility>

#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/host_files.h"
#include "platform/address_book_file.h"
#include "platform/desktop.h"
#include "platform/environment_posix.h"
#include "platform/memory_guard.h"
#include "platform/registry_hive.h"
#include "platform/registry_regfile.h"
#include "platform/sample_identity.h"
#include "platform/system_processes.h"

namespace morvelle {

namespace {

/// Shipped beside the program: `bin/morvelle` and `share/morvelle/`.
std::filesystem::path ShippedSample(const PosixEnvironment& environment) {
  return environment.ProgramFile().parent_path().parent_path() / "share" / "morvelle" / "identite";
}

}  // namespace

void PrepareProcess() {
  // Where a standard stream is closed, the first file that is opened gets its number, and every
  // warning of the toolkit is written into it.
  int opened = 0;
  do {
    opened = ::open("/dev/null", O_RDWR);
  } while (opened >= 0 && opened <= STDERR_FILENO);
  if (opened >= 0) ::close(opened);
}

OpenedDesktop OpenThisDesktop(const CommandLine& line, const std::string& version) {
  OpenedDesktop desktop;
  auto environment =
      std::make_unique<PosixEnvironment>(WindowsFolders{line.drives, line.profile, {}}, version);
  std::filesystem::path file;
  try {
    file = line.file ? *line.file
                     : OwnSampleIdentity(ShippedSample(*environment), environment->UserFolder());
    environment->SetRegistryFolder(file.parent_path());
    // An NTUSER.DAT lies in the profile's own folder.
    const bool isHive = IsHive(file);
    if (isHive && !line.profile) environment->SetProfile(file.parent_path());
    const MemoryGuard guard;
    const auto open = isHive ? OpenHive : OpenRegFile;
    auto opened = open(file, MakeHostFiles(), [] { return std::chrono::system_clock::now(); });
    desktop.store = std::move(opened.store);
    desktop.error = std::move(opened.error);
  } catch (const std::bad_alloc&) {
    desktop.error = FileFailure(file, "ne peut être ouvert"_cp, kNoMemory);
  } catch (const std::filesystem::filesystem_error& failure) {
    desktop.error = PathText(failure.path1()) + std::string(" : ne peut être ouvert ("_cp) +
                    FromUtf8(failure.code().message()).value_or("") + ")";
  }
  desktop.addressBook = std::make_unique<FileAddressBook>();
  desktop.processes = MakeProcesses();
  desktop.environment = std::move(environment);
  return desktop;
}

std::vector<std::string> Arguments(int count, char** values) {
  return {values + 1, values + count};
}

void Say(Saying kind, const std::string& text) {
  std::fputs(text.c_str(), kind == Saying::Answer ? stdout : stderr);
}

}  // namespace morvelle
