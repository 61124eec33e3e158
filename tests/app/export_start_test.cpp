// A registry export that lost its end, edited and imported on the machine that it came from.

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "app/messages/errors.h"
#include "core/identity.h"
#include "platform/reg_file_reader.h"
#include "platform/reg_file_writer.h"
#include "platform/registry_regfile.h"
#include "tests/core/rule_model.h"
#include "tests/support/fake_environment.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

constexpr auto kIncomplete =
    "Ce fichier semble incomplet\u00A0: sa fin manque peut-être.\rL'ouvrir quand même\u00A0?"_cp;

constexpr const char* kVersion4 = "REGEDIT4\r\n";

/// One file, in memory: thousands of cuts are saved.
class OneFile final : public HostFiles {
 public:
  explicit OneFile(std::string& bytes) : bytes_(bytes) {}
  std::string readOnly;
  std::filesystem::path Resolve(const std::filesystem::path& path) override { return path; }
  FileFault Read(const std::filesystem::path&, std::uint64_t, FileBytes& bytes,
                 FileStamp& stamp) override {
    bytes.data = std::make_unique<char[]>(bytes_.size());
    bytes.size = bytes_.copy(bytes.data.get(), bytes_.size());
    stamp = Stamp({});
    return {};
  }
  FileStamp Stamp(const std::filesystem::path&) override { return {0, 0, bytes_.size(), 0, true}; }
  std::string WhyReadOnly(const std::filesystem::path&) override { return readOnly; }
  Locking Lock(const std::filesystem::path&, std::unique_ptr<FileLock>&) override {
    return Locking::Taken;
  }
  FileFault WriteAside(const std::filesystem::path&, FileContent& content, std::filesystem::path&,
                       FileStamp& stamp) override {
    aside_.clear();
    for (auto piece = content.Next(); !piece.empty(); piece = content.Next()) aside_ += piece;
    stamp = {0, 0, aside_.size(), 0, true};
    return {};
  }
  FileFault PutInPlace(const std::filesystem::path&, const std::filesystem::path&,
                       FileStamp&) override {
    bytes_ = aside_;
    return {};
  }
  Copying KeepCopy(const std::filesystem::path&, const std::filesystem::path&,
                   FileFault&) override {
    return Copying::Done;
  }
  void Remove(const std::filesystem::path&) override {}

 private:
  std::string& bytes_;
  std::string aside_;
};

/// Every value as its key and its line.
std::set<std::string> ValuesOf(const RegistryTree& tree) {
  RegFileContent content(tree, {5, RegFileFormat::Encoding::Utf8, false});
  std::string text;
  for (auto piece = content.Next(); !piece.empty(); piece = content.Next()) text += piece;
  for (auto at = text.find("\\\r\n  "); at != std::string::npos; at = text.find("\\\r\n  ")) {
    text.erase(at, 5);
  }
  std::set<std::string> values;
  std::string key;
  for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
    const auto line = text.substr(at, text.find('\r', at) - at);
    if (line.starts_with('[')) key = line;
    if (!line.empty() && !line.starts_with("[-")) values.insert(key + line);
  }
  return values;
}

/// Boxes in whose time another program works. With `yes` every question gets that answer.
struct Answering final : ScriptedDialogs {
  bool yes = false;
  std::function<void()> meanwhile;
  Button ShowMessage(const std::string& prompt, int style, const std::string& title) override {
    if (meanwhile) std::exchange(meanwhile, nullptr)();
    if (!yes) return ScriptedDialogs::ShowMessage(prompt, style, title);
    return (style & kBoxYesNo) != 0 ? Button::Yes : Button::Ok;
  }
};

/// A start on one export.
class ExportStart : public testing::Test {
 protected:
  std::unique_ptr<RegistryStore> Open() {
    return OpenRegFile("a.reg", files, [] { return std::chrono::system_clock::time_point{}; })
        .store;
  }
  bool FindID(RegistryStore& store) {
    DamageReport damage(messages, label);
    RegistryAccess registry(store, messages, damage);
    return IdentityFinder(registry, environment, display, identity).FindID();
  }

  std::string file;
  std::shared_ptr<OneFile> files = std::make_shared<OneFile>(file);
  Answering dialogs;
  Messages messages{dialogs};
  std::string label;
  FakeEnvironment environment{"/nulle/part"};
  RecordedDisplay display;
  Identity identity;
};

class CutFile : public ExportStart, public testing::WithParamInterface<std::string> {
 protected:
  /// The file of a whole identity, as the registry editor gives it.
  std::string WholeSet() {
    file = GetParam();
    auto store = Open();
    store->BeginBatch();
    RuleSet set(*store);
    set.Order("000 001").PlainRule("000", "Sans", "000").Actions("000 001").Action("001", 7);
    // Cut before its criterion, the last rule would be one without criteria.
    set.PlainRule("001", "\xE9t\xE9", "000").Words("000", 8, {"gratuit", "promo", "\xE9t\xE9"});
    store->CommitBatch(false);
    return file;
  }
  /// One run on what is in the file: opened whatever is asked, a change saved. False when there was
  /// nothing to open.
  bool Run(std::uint32_t change, bool deletes = false) {
    auto store = Open();
    if (store == nullptr) return false;
    dialogs.yes = true;
    EXPECT_TRUE(MayOpen(*store, messages));
    try {
      FindID(*store);
    } catch (const ProgramEnd&) {
      return false;
    }
    store->BeginBatch();
    RuleSet(*store).PutNumber(kTestMailKey, "Essai", change);
    DamageReport damage(messages, label);
    if (deletes) RegistryAccess(*store, messages, damage).DeleteKey(kTestMailKey + "001");
    EXPECT_EQ(store->CommitBatch(false), CommitOutcome::Done);
    return true;
  }
  /// The lines of a file as the registry editor sees it, which passes over comments.
  static std::u16string LinesOf(std::string_view bytes) {
    RegFileText text;
    EXPECT_TRUE(DecodeRegFile(bytes, text));
    std::u16string lines(text.body);
    for (auto at = lines.find(u"\n;"); at != std::u16string::npos; at = lines.find(u"\n;")) {
      lines.erase(at, lines.find(u'\n', at + 1) - at);
    }
    return lines;
  }
  /// What the machine holds once it has imported one file after the other.
  [[nodiscard]] std::set<std::string> Imported(const std::vector<std::u16string>& imports) const {
    RegistryTree tree;
    for (const auto& lines : imports) ReadRegText(lines, GetParam() == kVersion4 ? 4 : 5, tree);
    return ValuesOf(tree);
  }
};

TEST_P(CutFile, NoRuleIsLostWhereverTheFileWasCut) {
  const auto whole = WholeSet();
  const auto machine = LinesOf(whole);
  const auto wanted = Imported({machine});
  ASSERT_TRUE(Run(1)) << "the same set, with the line that deletes the rules key";
  std::set<std::u16string> tried;
  std::vector<std::string> sets = {file};
  if (GetParam() == kVersion4) sets.push_back(whole);
  for (const auto& full : sets) {
    for (std::size_t size = 0; size < full.size(); ++size) {
      file = full.substr(0, size);
      // The second run meets a file that has an end again.
      for (std::uint32_t run = 2; run < 4 && Run(run); ++run) {
        const auto lines = LinesOf(file);
        if (!tried.insert(lines).second) break;
        auto lost = wanted;
        for (const auto& value : Imported({machine, lines})) lost.erase(value);
        ASSERT_TRUE(lost.empty()) << "cut at " << size << " of " << full.size() << ", run " << run
                                  << ": " << *lost.begin();
      }
    }
  }
  EXPECT_GT(tried.size(), 50U);
}

TEST_P(CutFile, WhatWasDeletedFromAWholeFileGoes) {
  const auto machine = LinesOf(WholeSet());
  ASSERT_TRUE(Run(1));
  ASSERT_TRUE(Run(2, true));
  for (const auto& value : Imported({machine, LinesOf(file)})) {
    EXPECT_EQ(value.find("Mail\\001"), std::string::npos) << value;
  }
}

std::string Wide(std::string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char letter : text) bytes.append({letter, '\0'});
  return bytes;
}

INSTANTIATE_TEST_SUITE_P(Encodings, CutFile,
                         testing::Values(kVersion4,
                                         "\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n",
                                         Wide("Windows Registry Editor Version 5.00\r\n")));

TEST_F(ExportStart, AFileThatCannotBeWrittenIsSaidWhenItIsOpened) {
  file = kVersion4;
  files->readOnly = "le disque est en lecture seule";
  dialogs.Expect(
      "Le fichier « a.reg » ne pourra être enregistré : le disque est en lecture seule.\rVous "
      "pouvez lire les règles, mais vos modifications ne pourront être gardées dans ce fichier."_cp,
      kBoxExclamation, "Morvelle");
  EXPECT_TRUE(MayOpen(*Open(), messages));
}

const std::string kIdentity = std::string(kVersion4) +
                              "\r\n[HKEY_CURRENT_USER\\Identities]\r\n\"Last User ID\"=\"" +
                              std::string(kTestIdentity) + "\"\r\n\r\n[HKEY_CURRENT_USER\\" +
                              kTestSettingsKey + "]\r\n\"Store Root\"=\"C:\"\r\n\r\n";
const std::string kRules = "[HKEY_CURRENT_USER\\" + kTestMailKey + "]\r\n";

TEST_F(ExportStart, StartsOverWhereAnotherProgramWroteTheFileMeanwhile) {
  // What another program leaves while the box about the missing rules key stands open.
  const auto start = [&](const std::string& theirs) {
    file = kIdentity;
    const auto store = Open();
    dialogs.meanwhile = [&] { file = theirs; };
    return FindID(*store);
  };
  const auto theirs = kIdentity + kRules + "\"Order\"=\"000\"\r\n\r\n";
  dialogs.Expect("La clef de registre \"Mail\" n'existe pas.\rVLX va la créer pour vous."_cp,
                 kBoxInformation, "Morvelle");
  EXPECT_TRUE(start(theirs)) << "the rules of the other program are there";
  EXPECT_EQ(file, theirs);
  dialogs.ExpectAllShown();

  dialogs.yes = true;
  EXPECT_FALSE(start(kIdentity + "[HKEY_CURRENT_USER\\Autre]\r\n\r\n"));
  EXPECT_NE(file.find("Autre"), std::string::npos);
  EXPECT_NE(file.find("\"Version\"=dword:00050000"), std::string::npos);
  EXPECT_THROW(start("rien"), ProgramEnd);
  EXPECT_EQ(file, "rien");
}

TEST_F(ExportStart, AnExportWithoutTheIdentitySaysWhatToExport) {
  file = kVersion4 + kRules + "\r\n";
  dialogs.Expect("Identité introuvable"_cp);
  dialogs.Expect(
      "Ce fichier ne contient pas l'identité à laquelle appartiennent les règles.\rDans l'éditeur "
      "du registre, exportez la clef HKEY_CURRENT_USER\\Identities tout entière."_cp,
      kBoxExclamation, "Morvelle");
  dialogs.Expect(
      "Il n'existe aucune identité ou le registre est endommagé.\r\rLe programme va être "
      "interrompu !"_cp);
  EXPECT_THROW(FindID(*Open()), ProgramEnd);
}

TEST(CutFileTest, WhoDoesNotWantItGetsItBackUntouched) {
  const FileFolder folder;
  const auto file = folder.Write("a.reg", "REGEDIT4\r\n[HKEY_CURRENT_USER\\Identities]\r\n\"Last");
  ScriptedDialogs dialogs;
  dialogs.Expect(kIncomplete, 292, "Morvelle", Button::No);
  auto opened = OpenRegFile(file, MakeHostFiles(), std::chrono::system_clock::now);
  EXPECT_FALSE(MayOpen(*opened.store, Messages(dialogs)));
  opened = {};
  EXPECT_EQ(folder.Names(), std::set<std::string>{"a.reg"});
}

}  // namespace
}  // namespace morvelle
