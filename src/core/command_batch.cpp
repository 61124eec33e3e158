#include "core/command_batch.h"

#include <string>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr std::string_view kNotStored = "Les modifications n'ont pas pu être enregistrées."_cp;
constexpr std::string_view kRegistryStatus = "Erreur du registre n° "_cp;
constexpr std::string_view kReplaceChanged =
    "Un autre programme a modifié le fichier des règles depuis son ouverture.\r"
    "Voulez-vous le remplacer par ce que montre Morvelle ?"_cp;

/// Registry statuses are numbered otherwise than run-time errors.
std::string ReasonOf(RegistryStatus status) {
  if (status == kStatusAccessDenied) {
    return ErrorDescription(static_cast<int>(ErrorNumber::PermissionDenied));
  }
  return std::string(kRegistryStatus) + std::to_string(status);
}

}  // namespace

CommandBatch::CommandBatch(RegistryStore& store, const Messages& messages)
    : store_(store), messages_(messages) {
  store_.BeginBatch();
}

CommandBatch::~CommandBatch() {
  if (open_) store_.AbandonBatch();
}

bool CommandBatch::Commit(RegistryStatus status) {
  auto outcome = CommitOutcome::Failed;
  std::string reason;
  if (status == kStatusSuccess) {
    outcome = store_.CommitBatch(false);
    if (outcome == CommitOutcome::ChangedMeanwhile) {
      if (!messages_.TestOui(kReplaceChanged)) return false;
      outcome = store_.CommitBatch(true);
    }
    if (outcome == CommitOutcome::Failed) open_ = false;
    reason = store_.LastError();
  } else {
    reason = store_.LastError();
    if (reason.empty()) reason = ReasonOf(status);
  }
  if (outcome == CommitOutcome::Done) {
    open_ = false;
    return true;
  }
  std::string text(kNotStored);
  if (!reason.empty()) text += "\r" + reason;
  messages_.Msg(text, kBoxStop);
  return false;
}

}  // namespace morvelle
