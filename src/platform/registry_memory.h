#pragma once

#include "platform/tree_store.h"

namespace morvelle {

/// A registry that lasts as long as the program: for tests and trials.
class MemoryRegistry final : public TreeStore {
 public:
  MemoryRegistry();
};

}  // namespace morvelle
