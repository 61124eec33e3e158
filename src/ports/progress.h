#pragma once

#include <string>

namespace morvelle {

/// Shows how far a long command has come. Nothing is seen of a command that takes less than half a
/// second.
class Progress {
 public:
  Progress() = default;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  virtual ~Progress() = default;

  /// A work of `steps` steps begins; `what` is Windows-1252. Works do not nest.
  virtual void Begin(const std::string& what, int steps) = 0;
  /// So many steps are done. Cheap enough to be called for each.
  virtual void Done(int steps) = 0;
  virtual void End() = 0;
};

/// One work: it ends where its scope does.
class ProgressOf {
 public:
  ProgressOf(Progress& progress, const std::string& what, int steps) : progress_(progress) {
    progress_.Begin(what, steps);
  }
  ProgressOf(const ProgressOf&) = delete;
  ProgressOf& operator=(const ProgressOf&) = delete;
  ~ProgressOf() { progress_.End(); }
  void Done(int steps) { progress_.Done(steps); }

 private:
  Progress& progress_;
};

}  // namespace morvelle
