#include "wab/processes.h"

#include "app/messages/text.h"

namespace morvelle {

ProcessId FindProcess(Processes& processes, std::string_view exeName) {
  for (const auto& process : processes.Snapshot()) {
    const std::string_view name = process.exeName;
    if (name.size() < exeName.size()) continue;
    if (EqualIgnoringCase(name.substr(name.size() - exeName.size()), exeName)) return process.id;
  }
  return 0;
}

}  // namespace morvelle
