#include "platform/registry_memory.h"

namespace morvelle {

MemoryRegistry::MemoryRegistry() { UseRoot(); }

}  // namespace morvelle
