#include <sstream>

#include "app/messages/path_text.h"
#include "core/new_rule.h"
#include "disk/host_files.h"
#include "tests/core/rule_model.h"
#include "tests/support/full_disk.h"
#include "tests/ui/window.h"

namespace morvelle {
namespace {

using testing::ElementsAre;

constexpr std::string_view kCannotImport = "Ce fichier ne peut être importé"_cp;
constexpr std::string_view kReplace = " existe déjà.\rVoulez-vous le remplacer ?"_cp;
constexpr std::string_view kNoneImported =
    "Toutes les règles existent déjà.\r\nAucune n'a été importée."_cp;

std::string Refused(std::string_view name) {
  return std::string("La règle "_cp).append(name) +
         std::string(" existe déjà.\r\nElle ne sera pas importée."_cp);
}

struct RuleFilesTest : Window {
  void Export(int row) { form->RuleMenu("mnuWhatRuleToFile").Choose(row); }
  [[nodiscard]] std::filesystem::path File(const std::string& name) const { return folder / name; }
  /// Chooses an import of a file with that content.
  void Import(const std::string& menu, const std::string& content) {
    WriteFile(File("essai." + std::string(menu == "mnuImpOneRule" ? "roe" : "moe")), content);
    fileDialogs.Choose(File(menu == "mnuImpOneRule" ? "essai.roe" : "essai.moe"));
    Choose(menu);
  }
  std::string Exported() {
    std::filesystem::remove(File("tout.moe"));
    fileDialogs.Choose(File("tout"));
    Choose("mnuExpAllRules");
    return ReadFile(File("tout.moe"));
  }
  /// All that is stored; the values of a key are stored in an order of their own.
  std::multiset<std::string> StoredLines() {
    std::multiset<std::string> lines;
    std::istringstream text(Stored());
    for (std::string line; std::getline(text, line);) lines.insert(line);
    return lines;
  }
  /// The same identity without its rules, in a new window.
  void StartEmpty() {
    form.reset();
    const Messages messages{dialogs};
    DamageReport damage{messages, state.tables.RuleLabel};
    RegistryAccess(store, messages, damage).DeleteKey(kTestMailKey);
    rules.Remove(kTestMailKey, "Order");  // The key is there.
    state = {};
    dialogs.Expect("Il n'existe pas encore de règle de courrier"_cp);
    Start();
  }
};

TEST_F(RuleFilesTest, OneRuleGoesToTheChosenFile) {
  rules.Order("000 001");
  rules.PlainRule("000", "Le \"bon\"/vrai", "000").Words("000", 12, {"alpha"});
  rules.Rule("001", "Sans action").Actions("").Criteria("000").Words("000", 8, {"beta"});
  Start();
  fileDialogs.Choose(File("bon"));
  Export(0);
  const auto& question = fileDialogs.asked.at(0);
  EXPECT_EQ(question.title, "Nom et emplacement du fichier à exporter ?"_cp);
  EXPECT_EQ(question.filterLabel, "Fichiers de règles OE (*.roe)"_cp);
  EXPECT_EQ(question.pattern, "*.roe");
  EXPECT_EQ(question.proposal, "Le 'bon'-vrai.roe");
  EXPECT_EQ(question.folder, environment.userFolder / "Fichiers VLX");
  EXPECT_EQ(environment.currentFolder, environment.userFolder / "");
  EXPECT_EQ(form->lstRules.Count(), 2);
  Import("mnuImpOneRule", Replaced(ReadFile(File("bon.roe")), "Le \"bon\"/vrai", "Autre"));
  EXPECT_THAT(Stored(), testing::StartsWith("Order = \"000 001 002\"\n"));
  EXPECT_THAT(Stored("002"), testing::AllOf(testing::StartsWith("Name = \"Autre\"\n"),
                                            testing::HasSubstr("Actions\\000\\Type = 12\n"),
                                            testing::HasSubstr("\"alpha~~~\"")));
  // The action that a file is given stays in the tables only with all rules.
  fileDialogs.Choose(File("bon"));
  dialogs.Expect("bon.roe" + std::string(kReplace), Button::Yes);
  Export(1);
  EXPECT_EQ(state.tables.Actions[1], 0);
  Exported();
  EXPECT_EQ(state.tables.Actions[1], 1);
}

TEST_F(RuleFilesTest, AFileIsReplacedOnlyWhenTheUserAgreesAndItIsNotProtected) {
  StartWithTwoRules();
  WriteFile(File("a.moe"), "ancien");
  WriteFile(File("b.moe"), "ancien");
  std::filesystem::permissions(File("b.moe"), std::filesystem::perms::owner_read);
  for (const auto* name : {"a", "b", "b", "Com1", "b"}) fileDialogs.Choose(File(name));
  const std::string replace(kReplace);
  std::string isProtected = "b.moe";
  isProtected += " est protégé, choisir un autre nom"_cp;
  const int replaceStyle = kBoxYesNo + kBoxExclamation + kBoxSecondDefault;
  dialogs.Expect("a.moe" + replace, replaceStyle, kAppTitle, Button::No);
  dialogs.Expect("b.moe" + replace, Button::Yes);
  dialogs.Expect(isProtected, kBoxOkCancel + kBoxExclamation, kAppTitle, Button::Ok);
  dialogs.Expect("b.moe" + replace, Button::No);
  std::string isReserved = "Com1.moe";
  isReserved += " est un nom réservé par Windows, choisir un autre nom"_cp;
  dialogs.Expect(isReserved, kBoxOkCancel + kBoxExclamation, kAppTitle, Button::Ok);
  dialogs.Expect("b.moe" + replace, Button::Yes);
  dialogs.Expect(isProtected, Button::Cancel);
  Choose("mnuExpAllRules");
  EXPECT_EQ(fileDialogs.asked.back().proposal, "Règles OE 15112026.moe"_cp);
  EXPECT_EQ(ReadFile(File("a.moe")), "ancien");
  EXPECT_EQ(ReadFile(File("b.moe")), "ancien");

  fileDialogs.Choose(File("a.moe"));
  dialogs.Expect("a.moe" + replace, Button::Yes);
  Choose("mnuExpAllRules");
  EXPECT_THAT(ReadFile(File("a.moe")), testing::StartsWith("MAIL\r\nOrder\r\n000 001\r\n"));
}

TEST_F(RuleFilesTest, WhatCannotBeWrittenIsToldAndTheWindowStays) {
  StartWithTwoRules();
  const auto before = Stored();
  WriteFile(File("plein.moe"), "");
  fileDialogs.Choose(File("plein.moe"));
  dialogs.Expect("plein.moe" + std::string(kReplace), Button::Yes);
  dialogs.Expect("Disque plein", kBoxOk, "MailToFile");
  {
    const FullDisk full;
    Choose("mnuExpAllRules");
  }
  fileDialogs.Choose(std::nullopt);
  Choose("mnuExpAllRules");
  EXPECT_EQ(Stored(), before);
}

TEST_F(RuleFilesTest, ARuleSetComesBackAsItWas) {
  rules.Order("000 001 002 003");
  rules.Rule("000", "Été\rdeux"_cp, 0).Actions("000 001 002 003").Criteria("000 001 002");
  rules.Action("000", 6).Bytes("ab\rde\nfg\x05\0\r\0"s).Action("001", 2).Text("x@y");
  rules.Action("002", 10).Number(4294967295U).Action("003", 12);
  rules.Words("000", 12, {"a\nb", "c\rd", "e"}, 3, 2).Words("001", 8, {"zut"}, 1, 2);
  rules.Criterion("002", 19, 0, 2).Text("compte");
  rules.PlainRule("001", "Sans critère"_cp, "000");
  rules.PlainRule("002", "Nombres", "000 001").Criterion("000", 15, 0, 1).Number(100);
  rules.Criterion("001", 14, 0, 1);
  rules.PlainRule("003", "Double", "000").Words("000", 22, {"x", "y"});
  Start();
  const auto before = StoredLines();
  const auto text = Exported();
  StartEmpty();
  EXPECT_EQ(form->lstRules.Count(), 0);
  Import("mnuImpAllRules", text);
  EXPECT_EQ(StoredLines(), before);
  EXPECT_EQ(form->lstRules.Count(), 4);
  EXPECT_EQ(store.commits, 1) << "written once";
  EXPECT_THAT(progress.works.back(), "Importation des règles ..."_cp);
}

TEST_F(RuleFilesTest, TheTablesSayWhatIsStoredOnceItIsImported) {
  rules.Order("000 001 002");
  rules.Rule("000", "Usuelle", 0).Actions("000 001").Criteria("000 001 002");
  rules.Action("000", 17).Number(5).Action("001", 2).Text("x@y");
  rules.Words("000", 12, {"a"}).Words("001", 12, {"b"}).Criterion("002", 19, 0, 2).Text("compte");
  rules.PlainRule("001", "Nombres", "000 001").Criterion("000", 15, 0, 1).Number(100);
  rules.Criterion("001", 14, 0, 1);
  rules.PlainRule("002", "Sans type", "000").Words("000", 8, {"c"});
  Start();
  auto text = Replaced(Exported(), "\r\n100\r\n", "\r\n0100\r\n");
  // What is written otherwise than it stands in the file: a number, the type of a value.
  text = Replaced(text, "Flags d'action\r\n0\r\n", "Flags d'action\r\n00\r\n");
  text = Replaced(text, "\r\n65\r\n", "\r\n66\r\n");
  StartEmpty();
  Import("mnuImpAllRules", text);
  const auto imported = ShownRows(state.tables);
  form.reset();
  state = {};
  Start();
  EXPECT_EQ(imported, ShownRows(state.tables));
  EXPECT_EQ(state.tables.RuleCount, 3);
}

TEST_F(RuleFilesTest, NewRulesAreNumberedAfterTheGreatestId) {
  rules.Order("00A 000 009");
  for (const char* id : {"000", "009", "00A"}) rules.PlainRule(id, id, "000");
  Start();
  const auto text = Replaced(Replaced(Replaced(Exported(), "gle\r\n000\r\nV", "gle\r\nX\r\nV"),
                                      "gle\r\n009\r\nV", "gle\r\nX\r\nV"),
                             "gle\r\n00A\r\nV", "gle\r\nY\r\nV");
  Import("mnuImpAllRules", text);
  EXPECT_EQ(state.tables.Mail.Order, "00A 000 009 00B 00C 00D");
  EXPECT_EQ(state.tables.RuleAt(4).Name, "X") << "two new rules of one name are both taken";
  EXPECT_EQ(fileDialogs.asked.back().title, "Nom et emplacement du fichier à importer ?"_cp);
}

TEST_F(RuleFilesTest, AnIdThatNoOrderListsIsNotWrittenOver) {
  rules.Order("FFE").PlainRule("FFE", "Avant", "000");
  rules.PlainRule("FFF", "Perdue", "000").PlainRule("000", "Perdue aussi", "000");
  Start();
  const auto lost = Stored("FFF") + Stored("000");
  const auto text = Replaced(Exported(), "Avant", "Apres");
  Import("mnuImpAllRules", text);
  EXPECT_EQ(state.tables.Mail.Order, "FFE 001");
  EXPECT_EQ(Stored("FFF") + Stored("000"), lost);
}

TEST_F(RuleFilesTest, ARuleWhoseNameIsThereIsRefused) {
  StartWithTwoRules();
  const auto text = Exported();
  const auto before = Stored();
  dialogs.Expect(Refused("Publicités"_cp), kBoxOk, kAppTitle);
  dialogs.Expect(Refused("Famille"), kBoxOk, kAppTitle);
  dialogs.Expect(kNoneImported, kBoxOk, kAppTitle);
  Import("mnuImpAllRules", text);
  EXPECT_EQ(Stored(), before);
  // The other rules of the file are taken.
  dialogs.Expect(Refused("Famille"));
  Import("mnuImpAllRules", Replaced(text, "Publicités"_cp, "famille"));
  EXPECT_EQ(state.tables.Mail.Order, "000 001 002");
  EXPECT_EQ(state.tables.RuleAt(2).Name, "famille");
  // One rule alone: its own message, and no second one.
  fileDialogs.Choose(File("une.roe"));
  Export(0);
  dialogs.Expect(Refused("Publicités"_cp));
  Import("mnuImpOneRule", ReadFile(File("une.roe")));
}

TEST_F(RuleFilesTest, ManyRefusalsAreFiveBoxesAndAList) {
  rules.Order("000 001 002 003 004 005 006");
  for (std::string id = "000"; id < "007"; ++id.back()) rules.PlainRule(id, "R" + id, "000");
  Start();
  const auto text = Exported();
  for (const auto* name : {"R000", "R001", "R002", "R003", "R004"}) dialogs.Expect(Refused(name));
  dialogs.Expect(
      "Autres règles qui existent déjà et ne seront pas importées\u00A0:\r\"R005\"\r\"R006\""_cp);
  dialogs.Expect(kNoneImported);
  Import("mnuImpAllRules", text);
}

TEST_F(RuleFilesTest, ARuleThatWasDamagedComesBackInactiveAndIsNamed) {
  rules.Order("000 001 002");
  rules.PlainRule("000", "Sans action", "000").Words("000", 12, {"alpha"});
  rules.Remove(kTestMailKey + "000\\Actions\\000", "Type");
  rules.PlainRule("001", "Bonne", "000").Words("000", 12, {"beta"});
  rules.PlainRule("002", "Sans critère"_cp, "000 001").Words("000", 12, {"gamma"}, 0, 2);
  dialogs.AllowAnyBox();
  Start();
  dialogs.Expect(
      "Le fichier est enregistré mais la règle sera inactive une fois importée\u00A0:\r"
      "une action ou un critère ne peut être lu dans la règle\r"
      "\"Sans action\"\r\"Sans critère\""_cp,
      kBoxExclamation, kAppTitle);
  const auto text = Exported();
  dialogs.ExpectAllShown();
  StartEmpty();
  const auto imported = [&](std::string_view name) {
    dialogs.Expect(std::string("La règle \""_cp).append(name) +
                   std::string("\" de ce fichier est endommagée\u00A0: "
                               "elle a été importée inactive."_cp));
  };
  imported("Sans action");
  imported("Sans critère"_cp);
  Import("mnuImpAllRules", text);
  dialogs.ExpectAllShown();
  EXPECT_THAT(form->lstRules.Items(),
              ElementsAre("  000 Sans action", "* 001 Bonne", "  002 Sans critère"_cp));
  EXPECT_THAT(Stored("000"), testing::HasSubstr("Actions\\000\\Type = 12\n"));
  EXPECT_THAT(Stored("002"), testing::HasSubstr("Criteria\\Order = \"000\"\n"));
  // What is refused for its name is not said to have come.
  dialogs.shown.clear();
  Import("mnuImpAllRules", text);
  EXPECT_EQ(dialogs.shown.size(), 4U);
}

TEST_F(RuleFilesTest, WhatIsNoGoodFileChangesNothing) {
  StartWithTwoRules();
  const auto before = Stored();
  std::filesystem::create_directory(File("dossier.moe"));
  for (const auto& file : {std::optional(File("dossier.moe")), std::optional(File("absent.moe")),
                           std::optional<std::filesystem::path>()}) {
    fileDialogs.Choose(file);
    dialogs.Expect(kCannotImport);
    Choose("mnuImpAllRules");
  }
  for (const auto* content : {"", "MAIL\r\nOrder\r\n\r\nVersion\r\n1\r\nEOT\r\nEOM\r\n"}) {
    dialogs.Expect(kCannotImport);
    Import("mnuImpAllRules", content);
  }
  WriteFile(File("vaste.moe"), "");
  std::filesystem::resize_file(File("vaste.moe"), kTextFileLimit + 1);
  fileDialogs.Choose(File("vaste.moe"));
  dialogs.Expect(FileFailure(File("vaste.moe"), "ne peut être ouvert"_cp,
                             "il dépasse la taille permise, 64 Mo"_cp));
  dialogs.Expect(kCannotImport);
  Choose("mnuImpAllRules");
  const auto text = Exported();
  dialogs.Expect(kCannotImport);
  Import("mnuImpAllRules", Replaced(text, "Ordre des actions\r\n000\r\nID d'action\r\n000",
                                    "Ordre des actions\r\n000\r\nID d'action"));
  // A missing marker ends the program.
  dialogs.Expect(std::string("Le fichier "_cp) + File("essai.moe").string() +
                     std::string(" a mal été enregistré"_cp),
                 kBoxStop, kAppTitle);
  EXPECT_THROW(Import("mnuImpAllRules", Replaced(text, "\r\nEOM\r\n", "\r\n")), ProgramEnd);
  EXPECT_EQ(Stored(), before);
  EXPECT_EQ(store.commits, 0);
}

TEST_F(RuleFilesTest, MoreRulesThanAnIdentityHoldsAreRefusedWhole) {
  StartWithTwoRules();
  const auto text = Exported();
  const auto top = text.find("ID de r");
  const auto rule = text.substr(top, text.find("ID de r", top + 1) - top);
  std::string order = "000";
  std::string many;
  for (int k = 0; k < 4095; ++k) {
    if (k > 0) order += " 000";
    many += Replaced(rule, "Publicités"_cp, "R" + std::to_string(k));
  }
  const auto before = Stored();
  dialogs.Expect(kTooManyRules);
  const auto all = Replaced(text.substr(0, top), "000 001", order) + many + "EOM\r\n";
  Import("mnuImpAllRules", all);
  EXPECT_EQ(Stored(), before);
  // A rule that is refused for its name does not count.
  dialogs.AllowAnyBox();
  Import("mnuImpAllRules", Replaced(all, "\r\nR7\r\n", "\r\nFamille\r\n"));
  EXPECT_EQ(state.tables.RuleCount, 4096);
}

TEST_F(RuleFilesTest, AnImportThatCannotBeStoredIsUndone) {
  StartWithTwoRules();
  const auto before = Stored();
  auto text = Replaced(Exported(), "Publicités"_cp, "A");
  text = Replaced(text, "Famille", "B");
  store.commitOutcome = CommitOutcome::Failed;
  store.lastError = "disque plein";
  dialogs.Expect(std::string(kNotStored) + "\rdisque plein");
  Import("mnuImpAllRules", text);
  EXPECT_EQ(Stored(), before);
  EXPECT_EQ(form->lstRules.Count(), 2);
  // A rule without actions cannot be given one while its folder is not known.
  std::filesystem::remove(FoldersFile());
  form.reset();
  state = {};
  dialogs.AllowAnyBox();
  Start();
  dialogs.shown.clear();
  const auto action = text.rfind("000\r\nID d'action");
  const int writes = store.writes;
  auto bare = text;
  bare.erase(action, text.rfind("CRITERIA") - action);
  bare.insert(action, "\r\n");
  Import("mnuImpAllRules", bare);
  EXPECT_EQ(dialogs.shown.at(0).prompt, kUnreadableFolders);
  EXPECT_EQ(store.writes, writes) << "nor is the rule before it written";
  EXPECT_EQ(Stored(), before);
}

TEST_F(RuleFilesTest, TheListingIsPrintedAndOnlyAFailureIsTold) {
  StartWithTwoRules();
  Choose("mnuPrintAllRules");
  form->RuleMenu("mnuWhatRuleToPrint").Choose(1);
  ASSERT_EQ(printer.jobs.size(), 2U);
  EXPECT_EQ(printer.jobs[0].front(), "     MAIL");
  EXPECT_THAT(printer.jobs[1], testing::Contains("                         anniversaire"));
  EXPECT_EQ(printer.titles.back(), "Famille");
  printer.outcome = PrintOutcome::Cancelled;
  Choose("mnuPrintAllRules");
  EXPECT_TRUE(dialogs.shown.empty());
  printer.outcome = PrintOutcome::Failed;
  dialogs.Expect("L'impression n'a pas abouti", kBoxStop, kAppTitle);
  Choose("mnuPrintAllRules");
}

TEST_F(RuleFilesTest, DamagedAndUnreadableRulesAreNamed) {
  rules.Order("000 001");
  rules.Rule("000", "Trop").Actions(kTwelve + " 00C");
  rules.Criteria("000").PlainRule("001", "Deux\r\nlignes", "000");
  dialogs.AllowAnyBox();
  Start();
  dialogs.shown.clear();
  Export(0);
  form->RuleMenu("mnuWhatRuleToPrint").Choose(0);
  EXPECT_TRUE(fileDialogs.asked.empty() && printer.titles.empty());
  ShownBox damaged{{}, kBoxExclamation, std::string(kAppTitle)};
  auto broken = damaged;
  damaged.prompt = "Cette règle est endommagée : elle n'est ni exportée ni imprimée\r\"Trop\""_cp;
  broken.prompt =
      "Le fichier est enregistré mais ne pourra pas être importé :\r"
      "un saut de ligne ou une valeur illisible se trouve dans la règle\r"
      "\"Deux\r\nlignes\""_cp;
  fileDialogs.Choose(File("deux"));
  Export(1);
  EXPECT_THAT(dialogs.shown, testing::IsSupersetOf({damaged, broken}));
}

}  // namespace
}  // namespace morvelle
