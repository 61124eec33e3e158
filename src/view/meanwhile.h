#pragma once

#include <utility>

namespace morvelle {

/// Gives a variable another value for as long as it lives, whatever way the block is left.
template <typename Value>
class Meanwhile {
 public:
  Meanwhile(Value& variable, Value value)
      : variable_(variable), before_(std::exchange(variable, value)) {}
  Meanwhile(const Meanwhile&) = delete;
  Meanwhile& operator=(const Meanwhile&) = delete;
  ~Meanwhile() { variable_ = before_; }

 private:
  Value& variable_;
  Value before_;
};

}  // namespace morvelle
