#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "ports/processes.h"

namespace morvelle {

/// Programs that a test says to be running.
class FakeProcesses : public Processes {
 public:
  std::vector<RunningProcess> running;
  std::filesystem::path path;
  bool canBeStopped = true;
  /// Whatever is told to end has just done so.
  bool endsByItself = false;
  bool canBeStarted = true;
  std::vector<ProcessId> killed;
  std::vector<std::filesystem::path> started;

  std::vector<RunningProcess> Snapshot() override { return running; }
  std::filesystem::path ProcessPath(ProcessId process) override {
    const auto isIt = [&](const RunningProcess& one) { return one.id == process; };
    return std::any_of(running.begin(), running.end(), isIt) ? path : std::filesystem::path{};
  }
  bool KillProcess(ProcessId process) override {
    if (!canBeStopped) return false;
    std::erase_if(running, [&](const RunningProcess& one) { return one.id == process; });
    if (endsByItself) return false;
    killed.push_back(process);
    return true;
  }
  bool StartProcess(const std::filesystem::path& program) override {
    if (!canBeStarted) return false;
    started.push_back(program);
    return true;
  }
};

}  // namespace morvelle
