#include "files/signatures.h"

#include "app/messages/text.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

void frmMorvelle::mnuExpSign_Click() {
  bool anySignature = true;
  auto files = Files();
  Continuing("ImpSign", [&] {
    anySignature = Signatures(program_.registry, state_.identity, ports_.environment, files,
                              state_.settings.UserFilesFolder)
                       .ExpSign();
  });
  if (!anySignature) messages_.Msg("Il n'y a pas de signature à exporter !"_cp);
}

void frmMorvelle::mnuImpSign_Click() {
  bool anyFile = true;
  auto files = Files();
  Continuing("ImpSign", [&] {
    anyFile = Signatures(program_.registry, state_.identity, ports_.environment, files,
                         state_.settings.UserFilesFolder)
                  .ImpSign();
  });
  if (!anyFile) messages_.Msg("Il n'y a pas de signature à importer !"_cp);
}

}  // namespace morvelle
