#pragma once

#include "app/messages/messages.h"
#include "ports/registry_store.h"

namespace morvelle {

/// The writes of one command of the user's: they reach the store together, or not at all. Left
/// without Commit, by a refusal or an error, they are undone.
class CommandBatch {
 public:
  CommandBatch(RegistryStore& store, const Messages& messages);
  CommandBatch(const CommandBatch&) = delete;
  CommandBatch& operator=(const CommandBatch&) = delete;
  ~CommandBatch();

  /// True when all is stored. `status` is that of the writes; a failure, or a file that another
  /// program changed meanwhile, is told to the user, who may have that file replaced all the same.
  bool Commit(RegistryStatus status);

 private:
  RegistryStore& store_;
  const Messages& messages_;
  bool open_ = true;
};

}  // namespace morvelle
