#include "core/identity.h"

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/rule_tables.h"
#include "core/whole_rules.h"

namespace morvelle {

namespace {

bool IsOpenedAllTheSame(const RegistryStore& store, const Messages& messages) {
  const auto file = store.Exchange();
  if (!file || !file->incomplete) return true;
  return messages.TestOui(
      "Ce fichier semble incomplet\u00A0: sa fin manque peut-être.\r"
      "L'ouvrir quand même\u00A0?"_cp);
}

}  // namespace

bool MayOpen(const RegistryStore& store, const Messages& messages) {
  if (!IsOpenedAllTheSame(store, messages)) return false;
  if (const auto reason = store.ReadOnlyReason(); !reason.empty()) {
    messages.Msg(reason + std::string(".\rVous pouvez lire les règles, mais vos modifications ne "
                                      "pourront être gardées dans ce fichier."_cp),
                 kBoxExclamation);
  }
  return true;
}

void IdentityFinder::NoIdentity() {
  if (registry_.Store().Exchange()) {
    registry_.Boxes().Msg(
        "Ce fichier ne contient pas l'identité à laquelle appartiennent les règles.\r"
        "Dans l'éditeur du registre, exportez la clef HKEY_CURRENT_USER\\Identities tout "
        "entière."_cp,
        kBoxExclamation);
  }
  registry_.Boxes().Boxes().ShowMessage(
      std::string("Il n'existe aucune identité ou le registre est endommagé.\r\r"
                  "Le programme va être interrompu !"_cp),
      kBoxStop, "FindID");
  throw ProgramEnd{};
}

void IdentityFinder::RequireKey(const std::string& path, KeyHandle& handle) {
  identity_.MailKey = path;
  if (registry_.OpenKey(path, handle, false) != kStatusSuccess) NoIdentity();
}

void IdentityFinder::ExpandStoreRoot() {
  auto& root = identity_.StoreRoot;
  if (!root.empty() && root.back() == '\\') root.pop_back();
  if (root.empty() || root.front() != '%') return;
  const auto end = root.find('%', 1);
  if (end == std::string::npos) return;
  if (const auto value = environment_.Variable(root.substr(1, end - 1))) {
    root = *value + root.substr(end + 1);
  }
}

void IdentityFinder::ShowIdentity() {
  // Digit groups of "{8-4-4-4-12}": first character and length.
  constexpr std::pair<std::size_t, std::size_t> kGroups[] = {
      {1, 8}, {10, 4}, {15, 4}, {20, 4}, {25, 12}};
  panels_.ShowPanel(1, "Identité"_cp);
  int panel = 2;
  for (const auto& [first, length] : kGroups) {
    const auto& id = identity_.IdentityId;
    panels_.ShowPanel(panel++, first < id.size() ? id.substr(first, length) : std::string{});
  }
}

bool IdentityFinder::MakeRulesKey() {
  registry_.Boxes().Msg("La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp,
                        kBoxInformation);
  auto& store = registry_.Store();
  store.BeginBatch();
  registry_.CreateKey(identity_.MailKey);
  KeyHandle handle = 0;
  if (registry_.OpenKey(identity_.MailKey, handle, false) != kStatusSuccess) NoIdentity();
  registry_.SetKeyValue(handle, "Version", ValueKind::Dword, kRuleStoreVersion);
  registry_.CloseKey(handle);
  const auto outcome = store.CommitBatch(false);
  if (outcome == CommitOutcome::Done) return true;
  if (outcome == CommitOutcome::ChangedMeanwhile) {
    ReadAgain();
    return false;
  }
  const auto reason = store.LastError();
  if (!reason.empty()) registry_.Boxes().Msg(reason, kBoxStop);
  registry_.Boxes().Boxes().ShowMessage(std::string("Impossible de créer la clef"_cp), kBoxOk,
                                        "CreateKey");
  throw ProgramEnd{};
}

void IdentityFinder::ReadAgain() {
  auto& store = registry_.Store();
  if (!store.ReadAgain()) {
    registry_.Boxes().Msg(store.LastError(), kBoxStop);
    throw ProgramEnd{};
  }
  if (!IsOpenedAllTheSame(store, registry_.Boxes())) throw ProgramEnd{};
}

std::optional<bool> IdentityFinder::FindOnce() {
  KeyHandle handle = 0;
  RequireKey("Identities\\", handle);
  const auto status =
      registry_.QueryField("Identity", handle, "Last User ID", identity_.IdentityId);
  registry_.CloseKey(handle);
  if (status != kStatusSuccess) NoIdentity();
  RequireKey("Identities\\" + identity_.IdentityId + "\\", handle);
  registry_.CloseKey(handle);
  RequireKey(identity_.MailKey + "Software\\Microsoft\\Outlook Express\\5.0\\", handle);
  registry_.QueryField("", handle, "Store Root", identity_.StoreRoot);
  registry_.CloseKey(handle);
  ExpandStoreRoot();
  ShowIdentity();

  identity_.MailKey += "Rules\\Mail\\";
  const bool existed = registry_.OpenKey(identity_.MailKey, handle, false) == kStatusSuccess;
  if (existed) registry_.CloseKey(handle);
  const bool whole = existed && HoldsAllRules(registry_, identity_.MailKey);
  registry_.Store().GiveKey(identity_.MailKey, whole ? Import::Replaces : Import::Adds);
  if (!existed && !MakeRulesKey()) return std::nullopt;
  return existed;
}

bool IdentityFinder::FindID() {
  return Trap(registry_.Boxes().Boxes(), "FindID", [&] {
    while (true) {
      if (const auto existed = FindOnce()) return *existed;
    }
  });
}

}  // namespace morvelle
