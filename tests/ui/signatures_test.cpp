#include "disk/host_files.h"
#include "files/file_names.h"
#include "platform/windows_paths.h"
#include "tests/support/text_cases.h"
#include "tests/ui/window.h"

namespace morvelle {
namespace {

const std::string kSignatures = "Identities\\" + std::string(kTestIdentity) +
                                "\\Software\\Microsoft\\Outlook Express\\5.0\\signatures";
constexpr std::string_view kImported = "Le fichier de signature a été importé dans le registre"_cp;
constexpr std::string_view kAskReplace =
    "Le nom de cette signature existe déjà,\rDésirez-vous remplacer la signature existante ?"_cp;
constexpr std::string_view kOne = "Le fichier de signature a été enregistré dans le dossier :\r"_cp;
constexpr std::string_view kSeveral =
    "Les fichiers de signatures ont été enregistrés dans le dossier :\r"_cp;
constexpr std::string_view kReplaced =
    "\rUn autre fichier s'y trouve, dont une copie datée sera gardée."_cp;

struct SignaturesTest : Window {
  SignaturesTest() {
    environment.finder = [this](const auto& name) { return FindWindowsPath(folders, name); };
  }
  void Store(const std::string& subkey, const std::string& name, const std::string& text,
             const std::string& file = {}, std::uint32_t type = 1) {
    const auto key = kSignatures + "\\" + subkey;
    rules.PutText(key, "file", file).PutText(key, "name", name).PutText(key, "text", text);
    rules.PutNumber(key, "type", type);
  }
  [[nodiscard]] std::filesystem::path Own(const std::string& name) const {
    return environment.userFolder / "Fichiers VLX" / name;
  }
  [[nodiscard]] std::string Folder() const { return Own("").parent_path().string(); }
  void Import(const std::string& content) {
    WriteFile(Own("a.sgn"), content);
    fileDialogs.Choose(Own("a.sgn"));
    Choose("mnuImpSign");
  }
  void Export(std::string_view message) {
    dialogs.Expect(std::string(message) + Folder());
    Choose("mnuExpSign");
  }
  /// The question before a text is written.
  void ExpectQuestion(const std::string& file, bool isReplaced, int defaultButton,
                      Button answer = Button::Yes) {
    std::string prompt;
    prompt += "Le fichier texte de cette signature va être écrit ici\u00A0:"_cp;
    if (file.find("..") == std::string::npos) prompt += "\r\"" + file + "\"";
    prompt += "\r\"" + environment.HostPath(file).string() + "\"";
    prompt += isReplaced ? kReplaced : "";
    prompt += "\rÊtes-vous d'accord\u00A0?"_cp;
    dialogs.Expect(prompt, kBoxYesNo + kBoxQuestion + defaultButton, kAppTitle, answer);
  }
  void ExpectNotPutBack(std::string_view reason, const std::string& file) {
    std::string prompt;
    prompt += "Le fichier texte de cette signature n'a pas été remis à sa place ("_cp;
    prompt.append(reason).append(")\u00A0:\r\""_cp);
    dialogs.Expect(prompt + file + "\"", kBoxExclamation, kAppTitle);
  }
  /// Imports a signature that is there already; its text goes to `file`.
  void ImportAgain(const std::string& name, const std::string& file, bool isThere = false) {
    fileDialogs.Choose(Own(name));
    dialogs.Expect(kAskReplace, Button::Yes);
    ExpectQuestion(file, isThere, isThere ? kBoxSecondDefault : 0);
    dialogs.Expect(kImported);
    Choose("mnuImpSign");
  }
  [[nodiscard]] std::string Dump() { return DumpOf(store, kSignatures); }

  WindowsFolders folders{{}, {}, folder.Path()};
};

TEST_F(SignaturesTest, EachSignatureGetsAFile) {
  Store("00000000", "Perso/moi", "Bien, à vous");
  StartWithTwoRules();
  dialogs.Expect(std::string(kOne) + Folder(), kBoxOk, kAppTitle);
  Choose("mnuExpSign");
  EXPECT_EQ(ReadFile(Own("Perso-moi 151126.sgn")), "\r\nPerso/moi\r\nBien, à vous\r\n 1 \r\n");

  // A type kept as text is its number; nothing is left over from the signature before. A name that
  // only the file system takes for another's has a file of its own, the same at each export; of
  // signatures of one name the last is written.
  rules.PutText(kSignatures + "\\00000001", "type", "2")
      .PutText(kSignatures + "\\00000001", "name", "PERSO:moi");
  Store("00000002", "Perso/moi", "Bises");
  for (int time = 0; time < 2; ++time) {
    Export(kSeveral);
    EXPECT_EQ(ReadFile(Own("Perso-moi 151126.sgn")), "\r\nPerso/moi\r\nBises\r\n 1 \r\n");
    EXPECT_EQ(ReadFile(Own("PERSO-moi 151126 (2).sgn")), "\r\nPERSO:moi\r\n\r\n 2 \r\n");
    const std::filesystem::directory_iterator files(Own("").parent_path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 2);
  }
}

TEST_F(SignaturesTest, TextsOfOneNameComeBackToTheirOwnSignatures) {
  const auto first = environment.HostPath("C:\\a\\s.txt");
  const auto second = environment.HostPath("C:\\b\\S.txt");
  WriteFile(first, "un");
  WriteFile(second, "deux");
  Store("00000000", "A", "", "C:\\a\\s.txt", 2);
  Store("00000001", "B", "", "C:\\b\\S.txt", 2);
  StartWithTwoRules();
  Export(kSeveral);
  std::filesystem::remove(first);
  std::filesystem::remove(second);
  ImportAgain("A 151126.sgn", "C:\\a\\s.txt");
  ImportAgain("B 151126.sgn", "C:\\b\\S.txt");
  EXPECT_EQ(ReadFile(first), "un");
  EXPECT_EQ(ReadFile(second), "deux");
  // A text that is not there is not another's.
  std::filesystem::remove(second);
  std::filesystem::remove(Own("S (B 151126).txt"));
  Export(kSeveral);
  EXPECT_EQ(ReadFile(Own("s (A 151126).txt")), "un");
  dialogs.Expect(kAskReplace, Button::Yes);
  dialogs.Expect("Le fichier texte de signature est absent");
  Import(ReadFile(Own("B 151126.sgn")));
}

TEST_F(SignaturesTest, ATextThatAnotherFileNamesIsNotWrittenOver) {
  const auto place = environment.HostPath("C:\\a\\s.txt");
  WriteFile(place, "un");
  Store("00000000", "A", "", "C:\\a\\s.txt", 2);
  StartWithTwoRules();
  Export(kSeveral);
  Export(kSeveral);
  EXPECT_EQ(ReadFile(Own("s.txt")), "un");
  WriteFile(Own("Autre.SGN"), "D:\\S.txt\r\nAutre\r\n\r\n 2 \r\n");
  Export(kSeveral);
  EXPECT_FALSE(std::filesystem::exists(Own("s (A 151126).txt"))) << "the same text serves both";
  WriteFile(place, "deux");
  Export(kSeveral);
  EXPECT_EQ(ReadFile(Own("s.txt")), "un");
  // The own copy goes first, and so is not left to grow old.
  std::filesystem::remove(Own("Autre.SGN"));
  WriteFile(place, "trois");
  Export(kSeveral);
  WriteFile(place, "quatre");
  ImportAgain("A 151126.sgn", "C:\\a\\s.txt", true);
  EXPECT_EQ(ReadFile(place), "trois");
}

TEST_F(SignaturesTest, WithoutSignaturesOrFilesItIsSaid) {
  StartWithTwoRules();
  dialogs.Expect("Il n'existe pas d'enregistrement des signatures !", kBoxOk,
                 "Recherche d'enregistrements dans la base de registre");
  dialogs.Expect("Il n'y a pas de signature à exporter !"_cp, kBoxOk, kAppTitle);
  Choose("mnuExpSign");
  dialogs.Expect("Il n'y a pas de signature à importer !"_cp, kBoxOk, kAppTitle);
  Choose("mnuImpSign");
  WriteFile(Own("a.sgn"), "");
  fileDialogs.Choose(std::nullopt);
  Choose("mnuImpSign");
  EXPECT_EQ(fileDialogs.asked.at(0).title, "Nom et emplacement du fichier à importer ?"_cp);
  EXPECT_EQ(fileDialogs.asked.at(0).filterLabel, "Fichiers de signatures OE (*.sgn)");
  EXPECT_FALSE(store.HasKey(kSignatures));
}

TEST_F(SignaturesTest, TheFirstOneBecomesTheDefaultAndTheNextTakesAFreeName) {
  StartWithTwoRules();
  dialogs.Expect(kImported, kBoxOk, kAppTitle);
  Import("\r\nPerso\r\nBises, Zo\r\n 1 \r\n");
  EXPECT_EQ(Dump(),
            "Default Signature = \"00000000\"\n00000000\\file = \"\"\n00000000\\name = \"Perso\"\n"
            "00000000\\text = \"Bises\"\n00000000\\type = 1\n");
  Store("00000001", "Autre", "");
  dialogs.Expect(kImported);
  Import("\r\nTravail\r\nx\r\n 1 \r\n");
  EXPECT_TRUE(store.HasKey(kSignatures + "\\00000002"));
}

TEST_F(SignaturesTest, OneOfTheSameNameIsReplacedOnlyWhenTheUserAgrees) {
  Store("00000005", "Perso", "avant");
  StartWithTwoRules();
  const auto before = Dump();
  dialogs.Expect(kAskReplace, kBoxYesNo, kAppTitle, Button::No);
  Import("\r\nPerso\r\napres\r\n 1 \r\n");
  EXPECT_EQ(Dump(), before);
  dialogs.Expect(kAskReplace, Button::Yes);
  dialogs.Expect(kImported);
  Import("\r\nPerso\r\napres\r\n 1 \r\n");
  EXPECT_EQ(Dump(), Replaced(before, "avant", "apres"));
}

TEST_F(SignaturesTest, ATwelfthNameIsTheLast) {
  for (const char digit : std::string("0123456789A")) {
    Store("0000000" + std::string(1, digit), std::string(1, digit), "");
  }
  StartWithTwoRules();
  dialogs.Expect(kImported);
  Import("\r\nTravail\r\nx\r\n 1 \r\n");
  EXPECT_TRUE(store.HasKey(kSignatures + "\\0000000B"));
  const auto before = Dump();
  dialogs.Expect("Cette identité a déjà trop de signatures : celle-ci n'a pas été importée"_cp);
  Import("\r\nPerso\r\nx\r\n 1 \r\n");
  EXPECT_EQ(Dump(), before);
}

TEST_F(SignaturesTest, ADamagedFileWritesNothing) {
  StartWithTwoRules();
  const auto name = Own("a.sgn").string();
  for (const auto* content : {"\r\nPerso\r\n 1 \r\n", "\r\nPerso\r\nx\r\nun\r\n"}) {
    dialogs.Expect("Fichier " + name + std::string(" introuvable ou endommagé"_cp));
    Import(content);
  }
  EXPECT_FALSE(store.HasKey(kSignatures));
}

TEST_F(SignaturesTest, ItsTextFileIsPutBackAndTheOneThereIsKept) {
  StartWithTwoRules();
  const std::string file = "C:\\Textes\\s.txt";
  const std::string content = file + "\r\nPerso\r\n\r\n 2 \r\n";
  dialogs.Expect("Le fichier texte de signature est absent", kBoxOk, kAppTitle);
  Import(content);
  EXPECT_FALSE(store.HasKey(kSignatures));
  WriteFile(Own("s.txt"), "copie");
  ExpectNotPutBack("son dossier n'existe pas", file);
  dialogs.Expect(kImported);
  Import(content);
  const auto place = environment.HostPath(file);
  std::filesystem::create_directory(place.parent_path());
  ImportAgain("a.sgn", file);
  EXPECT_EQ(ReadFile(place), "copie");
  dialogs.Expect(kAskReplace, Button::Yes);
  dialogs.Expect(kImported);
  Import(content);
  for (const auto* present : {"plus recent", "plus ancien"}) {
    WriteFile(place, present);
    ImportAgain("a.sgn", file, true);
    EXPECT_EQ(ReadFile(place), "copie");
  }
  const auto copies = DatedCopies(place.parent_path());
  EXPECT_EQ(copies, (std::multiset<std::string>{"plus ancien", "plus recent"}));
}

TEST_F(SignaturesTest, ATextOfBadIntentIsNotPutBackAndItsSignatureComesIn) {
  StartWithTwoRules();
  const auto drive = environment.HostPath("C:");
  for (const auto& own : {folder / "home" / ".bashrc", drive / "s.txt"}) WriteFile(own, "mien");
  std::filesystem::create_directory_symlink(folder / "home", drive / "out");
  std::filesystem::create_symlink(drive / "s.txt.bat", drive / "run.txt");
  std::filesystem::create_symlink(drive / "s.txt", drive / "menu.bat");
  std::filesystem::create_directory(drive / "dir.htm");
  for (const auto& [what, file, reason] : TextCases(MORVELLE_REFUSED_TEXTS)) {
    SCOPED_TRACE(what);
    WriteFile(Own(SafeFileName(WindowsFileName(file))), "code");
    auto shown = file;
    std::replace(shown.begin(), shown.end(), '\r', '?');
    ExpectNotPutBack(reason, shown);
    dialogs.Expect(kImported);
    Import(file + "\r\n" + what + "\r\n\r\n 2 \r\n");
  }
  WriteFile(Own("s.txt"), "code");
  ExpectQuestion("C:\\s.txt", true, kBoxSecondDefault, Button::No);
  ExpectNotPutBack("vous ne l'avez pas voulu", "C:\\s.txt");
  dialogs.Expect(kImported);
  Import("C:\\s.txt\r\nPerso\r\n\r\n 2 \r\n");
  std::filesystem::remove(Own("s.txt"));
  std::filesystem::create_symlink(folder / "home" / ".bashrc", Own("s.txt"));
  dialogs.Expect(kAskReplace, Button::Yes);
  ExpectNotPutBack("celui du dossier des fichiers est un lien", "C:\\new\\..\\s.txt");
  dialogs.Expect(kImported);
  Import("C:\\new\\..\\s.txt\r\nPerso\r\n\r\n 2 \r\n");
  EXPECT_TRUE(store.HasKey(kSignatures + "\\00000009"));
  EXPECT_THAT(Dump(), testing::Not(testing::AnyOf(testing::HasSubstr(".bashrc"),
                                                  testing::HasSubstr("C:\\s.txt"))))
      << "the mail client would add that file to every message";
  EXPECT_EQ(ReadFile(drive / "s.txt"), "mien");
  EXPECT_EQ(ReadFile(folder / "home" / ".bashrc"), "mien");
}

TEST_F(SignaturesTest, AnotherMachineIsNotAskedBeforeTheUserIs) {
  StartWithTwoRules();
  // As with the registry of Windows itself, where a path is what it says. A text of the same bytes
  // elsewhere needs no question.
  const auto place = folder / "share" / "s.txt";
  environment.finder = [&](const std::string&) { return place; };
  WriteFile(place, "copie");
  WriteFile(Own("s.txt"), "copie");
  ExpectQuestion("\\\\pc\\s.txt", false, kBoxSecondDefault, Button::No);
  ExpectNotPutBack("vous ne l'avez pas voulu", "\\\\pc\\s.txt");
  dialogs.Expect(kImported);
  Import("\\\\pc\\s.txt\r\nPerso\r\n\r\n 2 \r\n");
  // Nor for an export, which asks nobody.
  Store("00000009", "A", "", "\\\\pc\\s.txt", 2);
  dialogs.Expect(std::string(kSeveral) + Folder());
  dialogs.Expect(
      "N'ont pas été copiés (seuls le sont les textes .txt, .htm ou .html des disques de cette "
      "identité)\u00A0:\r\"\\\\pc\\s.txt\""_cp);
  Choose("mnuExpSign");
  std::filesystem::resize_file(Own("s.txt"), kTextFileLimit + 1);
  ExpectNotPutBack("il dépasse la taille permise, 64 Mo"_cp, "C:\\s.txt");
  dialogs.Expect(kImported);
  Import("C:\\s.txt\r\nB\r\n\r\n 2 \r\n");
}

TEST_F(SignaturesTest, AnExportTakesTextsAndNothingElse) {
  const auto drive = environment.HostPath("C:\\");
  WriteFile(folder / "home" / "id_rsa", "secret");
  WriteFile(drive / "s.doc", "x");
  WriteFile(drive / "large.txt", "");
  std::filesystem::resize_file(drive / "large.txt", kTextFileLimit + 1);
  std::filesystem::create_symlink(folder / "home" / "id_rsa", drive / "key.txt");
  for (const std::string name : {"0C:\\s.doc", "1C:\\key.txt", "2C:\\large.txt", "3C:\\no.txt",
                                 "4C:\\no.doc", "5Q:\\s.txt"}) {
    Store("0000000" + name.substr(0, 1), name, "", name.substr(1), 2);
  }
  StartWithTwoRules();
  dialogs.Expect(std::string(kSeveral) + Folder());
  dialogs.Expect(
      "N'ont pas été copiés (seuls le sont les textes .txt, .htm ou .html des disques de cette "
      "identité)\u00A0:\r\"C:\\s.doc\"\r\"C:\\key.txt\"\r\"C:\\large.txt\""_cp,
      kBoxExclamation, kAppTitle);
  Choose("mnuExpSign");
  for (const auto* name : {"s.doc", "large.txt", "key.txt"}) {
    EXPECT_FALSE(std::filesystem::exists(Own(name))) << name;
  }
}

TEST_F(SignaturesTest, WhatCannotBeWrittenIsTold) {
  Store("00000000", "Perso", "x");
  StartWithTwoRules();
  std::filesystem::create_directory(Own("Perso 151126.sgn"));
  dialogs.Expect("Permission refusée"_cp, kBoxOk, "ImpSign");
  Choose("mnuExpSign");
}

}  // namespace
}  // namespace morvelle
