#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ports/progress.h"

namespace morvelle {

/// Keeps the works that were shown; one that nests or goes beyond its end fails the test.
class FakeProgress final : public Progress {
 public:
  std::vector<std::string> works;

  void Begin(const std::string& what, int steps) override {
    EXPECT_FALSE(running_) << "works nest";
    running_ = true;
    steps_ = steps;
    works.push_back(what);
  }
  void Done(int steps) override {
    EXPECT_TRUE(running_);
    EXPECT_LE(steps, steps_);
  }
  void End() override { running_ = false; }

 private:
  bool running_ = false;
  int steps_ = 0;
};

}  // namespace morvelle
