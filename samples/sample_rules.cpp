#include "samples/sample_rules.h"

#include "app/messages/text.h"

namespace morvelle {

namespace {

// Criteria.
constexpr std::uint32_t kSubject = 8;
constexpr std::uint32_t kBody = 9;
constexpr std::uint32_t kSender = 12;
constexpr std::uint32_t kPriority = 13;
constexpr std::uint32_t kAttachment = 14;
constexpr std::uint32_t kSizeAbove = 15;
constexpr std::uint32_t kAccount = 19;
constexpr std::uint32_t kAllMessages = 20;
constexpr std::uint32_t kRecipients = 22;

// Flags and the joining of criteria.
constexpr std::uint32_t kContains = 0;
constexpr std::uint32_t kDoesNotContain = 1;
constexpr std::uint32_t kAllWords = 2;
constexpr std::uint32_t kOr = 1;
constexpr std::uint32_t kAnd = 2;

// Actions.
constexpr std::uint32_t kCopy = 1;
constexpr std::uint32_t kForward = 2;
constexpr std::uint32_t kReply = 5;
constexpr std::uint32_t kMove = 6;
constexpr std::uint32_t kDeleteFromServer = 8;
constexpr std::uint32_t kDoNotDownload = 9;
constexpr std::uint32_t kHighlight = 10;
constexpr std::uint32_t kFlag = 11;
constexpr std::uint32_t kStop = 12;
constexpr std::uint32_t kMarkRead = 13;

using Words = std::vector<std::string_view>;

std::vector<SampleRule> PrivateRules() {
  return {
      {"003",
       "Toujours dans la boîte de réception"_cp,
       true,
       kOr,
       {{kSender, kContains,
         Words{"ecole@example.org", "mairie@example.org", "médiathèque"_cp,
               "secretariat@example.com"}}},
       {{kStop, {}}}},
      {"002",
       "Famille",
       true,
       kOr,
       {{kSender, kContains,
         Words{"Aurélie"_cp, "Chloé"_cp, "Mamie", "Papi", "famille@example.org", "Éloi"_cp}}},
       {{kMove, SampleFolder::Family}, {kHighlight, std::uint32_t{10}}, {kStop, {}}}},
      {"00A",
       "Associations et comité des fêtes"_cp,
       true,
       kOr,
       {{kSender, kContains,
         Words{"Amis du musée"_cp, "Chœur de la vallée"_cp, "Comité des fêtes"_cp}},
        {kSubject, kContains, Words{"assemblée générale"_cp, "bénévoles"_cp, "cotisation"}}},
       {{kCopy, SampleFolder::ToRead}, {kMove, SampleFolder::Associations}, {kStop, {}}}},
      {"001",
       "Listes de diffusion",
       true,
       kOr,
       {{kSubject, kContains, Words{"[annonces]", "[potager]", "[vélo]"_cp}},
        {kRecipients, kContains,
         Words{"annonces@listes.example.org", "potager@listes.example.org",
               "velo@listes.example.org"}}},
       {{kMove, SampleFolder::Lists}, {kStop, {}}}},
      {"006",
       "Le potager d'abord"_cp,
       true,
       kAnd,
       {{kRecipients, kContains, Words{"potager@listes.example.org"}},
        {kBody, kAllWords, Words{"graines", "échange"_cp}}},
       {{kMove, SampleFolder::Garden}, {kFlag, {}}}},
      {"005",
       "Commandes et factures",
       true,
       kAnd,
       {{kSender, kContains, Words{"boutique.example.com", "librairie.example.com"}},
        {kSubject, kContains,
         Words{"commande", "expédition"_cp, "facture", "livraison", "n° de suivi"_cp, "reçu"_cp}}},
       {{kMove, SampleFolder::Orders}, {kMarkRead, {}}}},
  };
}

std::vector<SampleRule> WorkRules() {
  return {
      {"00E",
       "Compte du bureau : réunions"_cp,
       true,
       kAnd,
       {{kAccount, kContains, "00000002"},
        {kSubject, kContains, Words{"compte rendu", "ordre du jour", "réunion"_cp}}},
       {{kMove, SampleFolder::Work}}},
      {"00C",
       "Urgent",
       true,
       kAnd,
       {{kPriority, kContains, std::uint32_t{1}},
        {kSender, kContains, Words{"bureau@example.com", "planning@example.com"}}},
       {{kHighlight, std::uint32_t{2}}, {kFlag, {}}}},
      {"010",
       "Devis au secrétariat"_cp,
       false,
       kOr,
       {{kBody, kContains, Words{"bon de commande", "devis"}}},
       {{kForward, "secretariat@example.com"}}},
      {"011",
       "Réponse pendant les congés"_cp,
       false,
       kOr,
       {{kAllMessages, kContains, {}}},
       {{kReply, "C:\\Documents and Settings\\Utilisateur\\Mes documents\\Congés.eml"_cp}}},
  };
}

std::vector<SampleRule> JunkRules() {
  return {
      {"008",
       "Messages trop gros",
       true,
       kAnd,
       {{kAttachment, kContains, {}}, {kSizeAbove, kContains, std::uint32_t{2048}}},
       {{kDoNotDownload, {}}}},
      {"000",
       "Publicités"_cp,
       true,
       kOr,
       {{kSubject, kContains,
         Words{"100 % gratuit", "Félicitations"_cp, "casino", "crédit immédiat"_cp, "gagné"_cp,
               "loterie", "offre exceptionnelle", "régime miracle"_cp, "€ par jour"_cp}}},
       {{kMove, SampleFolder::Bin}, {kStop, {}}}},
      {"004",
       "Héritages lointains"_cp,
       true,
       kOr,
       {{kBody, kAllWords, Words{"confidentiel", "héritage"_cp, "virement"}}},
       {{kDeleteFromServer, {}}}},
      {"01B",
       "Démarchage"_cp,
       true,
       kOr,
       {{kSender, kContains, Words{"infolettre@promo.invalid", "ventes-flash.invalid"}},
        {kSubject, kContains, Words{"déstockage"_cp, "dernière chance"_cp, "soldes"}},
        {kBody, kContains, Words{"cliquez ici", "se désabonner"_cp, "œuvre de bienfaisance"_cp}},
        {kRecipients, kContains, Words{"destinataires inconnus", "liste-clients@promo.invalid"}}},
       {{kMove, SampleFolder::Bin}, {kMarkRead, {}}, {kStop, {}}}},
      {"014",
       "Pas pour moi",
       true,
       kAnd,
       {{kSender, kDoesNotContain, Words{"@example.com", "@example.org"}},
        {kRecipients, kDoesNotContain, Words{"bureau@example.com", "utilisateur@example.org"}}},
       {{kMove, SampleFolder::Bin}}},
  };
}

}  // namespace

std::vector<SampleRule> SampleRules() {
  auto rules = PrivateRules();
  for (const auto& more : {WorkRules(), JunkRules()}) {
    rules.insert(rules.end(), more.begin(), more.end());
  }
  return rules;
}

}  // namespace morvelle
