#include "samples/sample_identity.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <string_view>
#include <vector>

#include "app/messages/text.h"
#include "samples/dbx_builder.h"
#include "samples/reg_export.h"
#include "samples/sample_rules.h"

namespace morvelle {

namespace {

using namespace std::string_literals;
using Key = RegExport::Key;

constexpr std::string_view kGuid = "{5B0D1C7E-3A42-4F96-8E21-7C94A0D36B18}";
constexpr std::string_view kProfile = "C:\\Documents and Settings\\Utilisateur";
constexpr std::string_view kBookPath = "\\Application Data\\Microsoft\\Address Book\\carnet.csv";
/// The store's creation, 17 November 2003, in the 100 ns steps of a Windows file time.
const std::string kStoreMark = "\x00\x8A\x11\xD0\x2C\xAD\xC3\x01"s;

constexpr std::uint32_t kRuleStoreVersion = 0x50000;
// Variant types, which tell how a criterion's or an action's value is to be read.
constexpr std::uint32_t kNumberValue = 19;
constexpr std::uint32_t kTextValue = 30;
constexpr std::uint32_t kBytesValue = 65;

template <typename... Pieces>
std::string Joined(const Pieces&... pieces) {
  std::string text;
  (text.append(pieces), ...);
  return text;
}

std::string IdentityKey() { return Joined("Identities\\", kGuid, "\\"); }

std::string ClientKey() {
  return Joined(IdentityKey(), "Software\\Microsoft\\Outlook Express\\5.0\\");
}

std::string StoreFolder() {
  return Joined(kProfile, "\\Local Settings\\Application Data\\Identities\\", kGuid,
                "\\Microsoft\\Outlook Express\\");
}

/// Where a file of the old machine lies below the sample's folder.
std::string SamplePath(std::string_view windowsPath) {
  auto path = Joined("drive_c", windowsPath.substr(2));
  std::replace(path.begin(), path.end(), '\\', '/');
  return ToUtf8(path);
}

std::string FolderStoreFile() {
  struct Row {
    SampleFolder folder;
    SampleFolder parent;
    std::string_view name;
    std::uint32_t messages;
    std::uint32_t unread;
  };
  using enum SampleFolder;
  static constexpr Row kRows[] = {
      {Inbox, Local, "Boîte de réception"_cp, 42, 3},
      {Outbox, Local, "Boîte d'envoi"_cp, 0, 0},
      {Sent, Local, "Éléments envoyés"_cp, 118, 0},
      {Bin, Local, "Éléments supprimés"_cp, 27, 5},
      {Drafts, Local, "Brouillons", 2, 0},
      {Family, Inbox, "Famille", 64, 1},
      {Lists, Inbox, "Listes", 203, 12},
      {Garden, Lists, "Potager", 31, 0},
      {Associations, Inbox, "Associations", 19, 0},
      {Orders, Inbox, "Commandes", 15, 0},
      {Work, Inbox, "Travail", 57, 2},
      {ToRead, Inbox, "À lire"_cp, 6, 6},
  };
  const auto id = [](SampleFolder folder) { return static_cast<std::uint32_t>(folder); };
  DbxBuilder builder(kStoreMark);
  builder.Add({id(Root), kNoParent, "Outlook Express", "", 0, 0});
  builder.Add({id(Local), id(Root), "Dossiers locaux", "", 0, 0});
  for (const auto& row : kRows) {
    builder.Add({id(row.folder), id(row.parent), std::string(row.name), Joined(row.name, ".dbx"),
                 row.messages, row.unread});
  }
  // Made and never used: the mail client has given it no file yet.
  builder.Add({id(Archive), id(Local), "Archives 2006", "", 0, 0});
  return builder.Build().bytes;
}

/// The words in binary order, each once and ended by a zero, then two more zeros.
std::string WordList(std::vector<std::string_view> words) {
  std::sort(words.begin(), words.end(),
            [](auto left, auto right) { return std::is_lt(CompareBinary(left, right)); });
  words.erase(std::unique(words.begin(), words.end()), words.end());
  std::string value;
  for (const auto word : words) value.append(word).append(1, '\0');
  return value.append(2, '\0');
}

/// A folder as an action gives it: the store's mark, then the id in four bytes.
std::string FolderValue(SampleFolder folder) {
  return kStoreMark + static_cast<char>(folder) + "\0\0\0"s;
}

void AddValue(Key& key, const SampleValue& value) {
  if (const auto* number = std::get_if<std::uint32_t>(&value)) {
    key.Dword("ValueType", kNumberValue).Dword("Value", *number);
  } else if (const auto* text = std::get_if<std::string_view>(&value)) {
    key.Dword("ValueType", kTextValue).Text("Value", *text);
  } else if (const auto* words = std::get_if<std::vector<std::string_view>>(&value)) {
    key.Dword("ValueType", kBytesValue).Binary("Value", WordList(*words));
  } else if (const auto* folder = std::get_if<SampleFolder>(&value)) {
    key.Dword("ValueType", kBytesValue).Binary("Value", FolderValue(*folder));
  }
}

/// The ids 000, 001 … joined by blanks.
std::string OrderOf(std::size_t count) {
  std::string order;
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) order += ' ';
    order += ThreeDigitId(static_cast<int>(i));
  }
  return order;
}

void AddRule(RegExport& tree, const SampleRule& rule) {
  const auto path = Joined(ClientKey(), "Rules\\Mail\\", rule.id);
  tree.At(path).Text("Name", rule.name).Dword("Enabled", rule.enabled ? 1 : 0).Dword("Version", 0);

  tree.At(path + "\\Criteria").Text("Order", OrderOf(rule.criteria.size()));
  const auto logic = rule.criteria.size() > 1 ? rule.logic : 0;
  for (std::size_t i = 0; i < rule.criteria.size(); ++i) {
    const auto& criterion = rule.criteria[i];
    auto& key = tree.At(Joined(path, "\\Criteria\\", ThreeDigitId(static_cast<int>(i))));
    key.Dword("Type", criterion.type).Dword("Logic", logic).Dword("Flags", criterion.flags);
    AddValue(key, criterion.value);
  }

  tree.At(path + "\\Actions").Text("Order", OrderOf(rule.actions.size()));
  for (std::size_t i = 0; i < rule.actions.size(); ++i) {
    const auto& action = rule.actions[i];
    auto& key = tree.At(Joined(path, "\\Actions\\", ThreeDigitId(static_cast<int>(i))));
    key.Dword("Type", action.type).Dword("Flags", 0);
    AddValue(key, action.value);
  }
}

void AddRules(RegExport& tree) {
  std::string order;
  for (const auto& rule : SampleRules()) {
    if (!order.empty()) order += ' ';
    order += rule.id;
    AddRule(tree, rule);
  }
  tree.At(ClientKey() + "Rules\\Mail").Text("Order", order).Dword("Version", kRuleStoreVersion);
  tree.At(ClientKey() + "Rules\\News").Text("Order", "").Dword("Version", kRuleStoreVersion);
}

void AddIdentity(RegExport& tree) {
  tree.At("Identities")
      .Dword("Identity Ordinal", 2)
      .Dword("Migrated5", 1)
      .Text("Last Username", "Identité principale"_cp)
      .Text("Last User ID", kGuid)
      .Text("Default User ID", kGuid)
      .Dword("Identity Login", 0x00098053);
  tree.At(IdentityKey())
      .Text("Username", "Identité principale"_cp)
      .Dword("Identity Ordinal", 1)
      .Text("User ID", kGuid)
      .Binary("Directory Name", "\x18\x6B\xD3\xA0");
  tree.At(ClientKey())
      .Dword("StoreMigratedV5", 1)
      .Dword("Settings Upgraded", 7)
      .Expand("Store Root", StoreFolder())
      .Dword("Running", 0)
      .Dword("Compact Check Count", 37)
      // Kinds that the registry editor shows as plain bytes: a 64-bit number, and no type at all.
      .Typed("Last Compacted", 11, "\x00\x40\x5C\x9B\x7E\x21\xC7\x01"s)
      .Typed("Migration", 0, "")
      .Binary("Window State",
              "\x2C\0\0\0\0\0\0\0\x01\0\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"
              "\x16\0\0\0\x1D\0\0\0\x96\x03\0\0\xA5\x02\0\0"s);
  // A name that no single-byte text can hold: it has to come through untouched.
  tree.At(ClientKey() + "Recent Stationery Wide List")
      .Text("File0", u"C:\\Papier à lettres\\Fond de thé 茶.htm"s)
      .Text("File1", u"C:\\Papier à lettres\\Święta – Рождество.htm"s);
}

void AddSignatures(RegExport& tree) {
  const auto path = ClientKey() + "signatures";
  tree.At(path).Text("Default Signature", "00000000");
  tree.At(path + "\\00000000")
      .Text("name", "Signature personnelle")
      .Dword("type", 1)
      .Text("text", "À bientôt,\r\n-- \r\nutilisateur@example.org"_cp)
      .Text("file", "");
  tree.At(path + "\\00000001")
      .Text("name", "Bureau")
      .Dword("type", 1)
      .Text("text", "Cordialement, le \"bureau\" de l'association"_cp)
      .Text("file", "");
}

void AddAccounts(RegExport& tree) {
  const std::string manager = "Software\\Microsoft\\Internet Account Manager";
  tree.At(manager).Text("Default Mail Account", "00000001").Dword("Account Name", 3);
  const auto account = [&](std::string_view id, std::string_view name, std::string_view domain,
                           std::string_view user) {
    tree.At(Joined(manager, "\\Accounts\\", id))
        .Text("Account Name", name)
        .Dword("Connection Type", 3)
        .Text("POP3 Server", Joined("pop.", domain))
        .Text("POP3 User Name", user)
        .Text("SMTP Server", Joined("smtp.", domain))
        .Text("SMTP Email Address", Joined(user, "@", domain));
  };
  account("00000001", "Messagerie personnelle", "example.org", "utilisateur");
  account("00000002", "Bureau", "example.com", "bureau");
}

std::string RegistryFile() {
  RegExport tree;
  AddIdentity(tree);
  AddRules(tree);
  AddSignatures(tree);
  AddAccounts(tree);
  tree.At("Software\\Microsoft\\WAB\\WAB4").Dword("FirstRun", 0);
  tree.At("Software\\Microsoft\\WAB\\WAB4\\Wab File Name").Text("", Joined(kProfile, kBookPath));
  return tree.File();
}

/// As the French address book exports its entries.
std::string AddressBookFile() {
  return std::string(
      "Prénom;Nom;Nom complet;Surnom;Adresse de messagerie;Ville (domicile);Notes\r\n"
      "Aurélie;;Aurélie;;aurelie@example.org;Besançon;\r\n"
      "Basile;;Basile;;basile@example.org;;\r\n"
      "Chloé;;Chloé;Clo;chloe@example.org;Orléans;\"Chorale ; mardi soir\"\r\n"
      "Éloi;;Éloi;;eloi@example.org;;\r\n"
      "Françoise;;Françoise;Fanfan;francoise@example.org;Saint-Étienne;\r\n"
      "Gaël;;Gaël;;;Nîmes;Pas d'adresse\r\n"
      "Héloïse;;Héloïse;;heloise@example.org;;\"Dit \"\"Lolo\"\"\"\r\n"
      "Jérôme;;Jérôme;;jerome@example.org;;\r\n"
      ";;Comité des fêtes;;comite@example.org;;\r\n"
      "Zoé;;Zoé;;zoe@example.org;;\r\n"_cp);
}

}  // namespace

std::map<std::string, std::string> SampleIdentityFiles() {
  return {{"identite.reg", RegistryFile()},
          {SamplePath(StoreFolder() + "Folders.dbx"), FolderStoreFile()},
          {SamplePath(Joined(kProfile, kBookPath)), AddressBookFile()}};
}

}  // namespace morvelle
