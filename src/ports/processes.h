#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace morvelle {

/// A process number; 0 is none that a program could stop.
using ProcessId = std::uint32_t;

struct RunningProcess {
  ProcessId id = 0;
  /// File name of its executable, without folder.
  std::string exeName;
};

/// The programs that run on this machine.
class Processes {
 public:
  Processes() = default;
  Processes(const Processes&) = delete;
  Processes& operator=(const Processes&) = delete;
  virtual ~Processes() = default;

  /// All of them now, in the system's order.
  [[nodiscard]] virtual std::vector<RunningProcess> Snapshot() = 0;
  /// The executable of a process; empty when the system does not tell.
  [[nodiscard]] virtual std::filesystem::path ProcessPath(ProcessId process) = 0;
  /// Ends a process and waits, a few seconds at the most, until it is gone. False when it goes on.
  virtual bool KillProcess(ProcessId process) = 0;
  /// Starts a program and does not wait for it. False when it cannot be started.
  virtual bool StartProcess(const std::filesystem::path& program) = 0;
};

}  // namespace morvelle
