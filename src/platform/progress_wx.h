#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "ports/progress.h"

class wxProgressDialog;

namespace morvelle {

/// A progress box of wxWidgets, made only once the work has lasted half a second.
class WxProgress final : public Progress {
 public:
  WxProgress();
  ~WxProgress() override;

  void Begin(const std::string& what, int steps) override;
  void Done(int steps) override;
  void End() override;

 private:
  using Clock = std::chrono::steady_clock;

  std::string what_;
  int steps_ = 0;
  /// When the box is to be made or brought up to date.
  Clock::time_point next_;
  std::unique_ptr<wxProgressDialog> box_;
};

}  // namespace morvelle
