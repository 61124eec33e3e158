// A registry file on the disk: opening, locking, saving, and what must not be lost when that fails.

#include "platform/edited_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <memory>
#include <string>
#include <utility>

#include "app/messages/text.h"
#include "platform/registry_regfile.h"
#include "tests/platform/temporary_folder.h"

namespace morvelle {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr std::string_view kEmpty = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\r\n";
constexpr std::string_view kOneValue =
    "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\"v\"=hex:31\r\n\r\n";

/// The real file system, with the failures that a test asks for.
class FailingFiles final : public HostFiles {
 public:
  std::string replaceFails, copyFails;

  std::filesystem::path Resolve(const std::filesystem::path& path) override {
    return real_->Resolve(path);
  }
  std::string Read(const std::filesystem::path& path, FileBytes& bytes, FileStamp& stamp) override {
    return real_->Read(path, bytes, stamp);
  }
  FileStamp Stamp(const std::filesystem::path& path) override { return real_->Stamp(path); }
  Locking Lock(const std::filesystem::path& path, std::unique_ptr<FileLock>& lock) override {
    return canLock ? real_->Lock(path, lock) : Locking::Impossible;
  }
  std::string Replace(const std::filesystem::path& path, std::string_view bytes,
                      FileStamp& stamp) override {
    return replaceFails.empty() ? real_->Replace(path, bytes, stamp) : replaceFails;
  }
  Copying KeepCopy(const std::filesystem::path& from, const std::filesystem::path& to,
                   std::string& reason) override {
    if (copyFails.empty()) return real_->KeepCopy(from, to, reason);
    reason = copyFails;
    return Copying::Failed;
  }
  void Remove(const std::filesystem::path& path) override { real_->Remove(path); }

  bool canLock = true;

 private:
  std::unique_ptr<HostFiles> real_ = MakeHostFiles();
};

class EditedFileTest : public testing::Test {
 protected:
  EditedFileTest() {
    // 2026-11-22 22:20:05, wherever the test runs.
    std::tm moment{};
    moment.tm_year = 126;
    moment.tm_mon = 10;
    moment.tm_mday = 22;
    moment.tm_hour = 22;
    moment.tm_min = 20;
    moment.tm_sec = 5;
    moment.tm_isdst = -1;
    now_ = std::chrono::system_clock::from_time_t(std::mktime(&moment));
  }

  OpenedStore Open(const std::filesystem::path& path) {
    return OpenRegFile(path, files_, [this] { return now_; });
  }
  std::unique_ptr<RegistryStore> OpenNew() {
    auto opened = Open(folder_.Write("a.reg", kEmpty));
    EXPECT_EQ(opened.error, "");
    opened.store->OpenKey("A", KeyAccess::ReadWrite, key_);
    return std::move(opened.store);
  }
  /// One batch that changes the value.
  CommitOutcome Save(RegistryStore& store, std::string_view data, bool overwrite = false) {
    store.BeginBatch();
    store.SetValue(key_, "v", ValueKind::Binary, data);
    return store.CommitBatch(overwrite);
  }
  std::string Value(RegistryStore& store) const {
    std::string data = "none";
    store.ReadValue(key_, "v", data);
    return data;
  }

  TemporaryFolder folder_;
  std::shared_ptr<FailingFiles> files_ = std::make_shared<FailingFiles>();
  std::chrono::system_clock::time_point now_;
  KeyHandle key_ = 0;
};

constexpr const char* kCopy = "a (copie du 2026-11-22 22-20-05).reg";

TEST_F(EditedFileTest, TheFirstWriteOfARunLeavesADatedCopy) {
  folder_.Write(kCopy, "older");
  {
    const auto store = OpenNew();
    EXPECT_EQ(Save(*store, "1"), CommitOutcome::Done);
    EXPECT_EQ(folder_.Read("a.reg"), kOneValue);
    EXPECT_EQ(Save(*store, "2"), CommitOutcome::Done);
    EXPECT_EQ(Save(*store, "2"), CommitOutcome::Done);
  }
  const std::string second = "a (copie du 2026-11-22 22-20-05 n2).reg";
  EXPECT_THAT(folder_.Names(), UnorderedElementsAre("a.reg", kCopy, second));
  EXPECT_EQ(folder_.Read(kCopy), "older");
  EXPECT_EQ(folder_.Read(second), kEmpty);
}

TEST_F(EditedFileTest, WhatComesToNothingIsNotWritten) {
  const auto store = OpenNew();
  store->BeginBatch();
  store->SetValue(key_, "v", ValueKind::Binary, "1");
  store->DeleteValue(key_, "v");
  EXPECT_EQ(store->CommitBatch(false), CommitOutcome::Done);
  EXPECT_THAT(folder_.Names(), UnorderedElementsAre("a.reg", ".a.reg.lock"));
}

TEST_F(EditedFileTest, ASecondEditorIsRefused) {
  auto store = OpenNew();
  const auto second = Open(folder_.Path() / "a.reg");
  EXPECT_EQ(second.store, nullptr);
  EXPECT_THAT(second.error,
              HasSubstr("a.reg \xBB ne peut \xEAtre ouvert : il est d\xE9j\xE0 ouvert"));
  store.reset();
  EXPECT_THAT(folder_.Names(), ElementsAre("a.reg"));
  EXPECT_NE(Open(folder_.Path() / "a.reg").store, nullptr);
}

TEST_F(EditedFileTest, SaysWhyAFileCannotBeOpened) {
  ::mkfifo((folder_.Path() / "pipe").c_str(), 0600);
  std::filesystem::create_directory(folder_.Path() / "folder.reg");
  folder_.Write("wrong.reg", "[HKEY_CURRENT_USER]");
  const std::pair<const char*, const char*> cases[] = {
      {"none.reg", "none.reg \xBB ne peut \xEAtre ouvert : il n'existe pas"},
      {"folder.reg", "c'est un dossier"},
      {"pipe", "ce n'est pas un fichier ordinaire"},
      {"wrong.reg", "ce n'est pas un fichier de registre"},
  };
  for (const auto& [name, reason] : cases) {
    const auto opened = Open(folder_.Path() / name);
    EXPECT_EQ(opened.store, nullptr);
    EXPECT_THAT(opened.error, HasSubstr(reason));
  }
  EXPECT_THAT(folder_.Names(), UnorderedElementsAre("folder.reg", "pipe", "wrong.reg"));
}

TEST_F(EditedFileTest, WhatAnotherProgramWroteIsNotOverwrittenWithoutAQuestion) {
  const auto store = OpenNew();
  folder_.Write("a.reg", "another program's");
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::ChangedMeanwhile);
  EXPECT_THAT(store->LastError(), HasSubstr("modifi\xE9 par un autre programme"));
  EXPECT_EQ(folder_.Read("a.reg"), "another program's");
  EXPECT_EQ(Value(*store), "1") << "the batch stays open";
  EXPECT_EQ(store->CommitBatch(true), CommitOutcome::Done);
  EXPECT_EQ(folder_.Read("a.reg"), kOneValue);
  EXPECT_EQ(folder_.Read(kCopy), "another program's");

  // Later in the run too, and with the user's no.
  folder_.Write("a.reg", "again");
  EXPECT_EQ(Save(*store, "2"), CommitOutcome::ChangedMeanwhile);
  store->AbandonBatch();
  EXPECT_EQ(Value(*store), "1");
  EXPECT_NE(store->SetValue(key_, "v", ValueKind::Binary, "3"), kStatusSuccess);
  EXPECT_EQ(Value(*store), "1");
  EXPECT_EQ(folder_.Read("a.reg"), "again");
}

TEST_F(EditedFileTest, ReplacedOrVanishedCountsAsChanged) {
  const auto store = OpenNew();
  const auto other = folder_.Write("other", kEmpty);
  std::filesystem::last_write_time(other,
                                   std::filesystem::last_write_time(folder_.Path() / "a.reg"));
  std::filesystem::rename(other, folder_.Path() / "a.reg");
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::ChangedMeanwhile);
  std::filesystem::remove(folder_.Path() / "a.reg");
  EXPECT_EQ(store->CommitBatch(false), CommitOutcome::ChangedMeanwhile);
  EXPECT_EQ(store->CommitBatch(true), CommitOutcome::Done);
  EXPECT_EQ(folder_.Read("a.reg"), kOneValue);
}

TEST_F(EditedFileTest, KeepsRightsAndLinks) {
  const auto store = OpenNew();
  const auto real = folder_.Path() / "a.reg";
  ::chmod(real.c_str(), 0640);
  std::filesystem::create_directory(folder_.Path() / "links");
  std::filesystem::create_symlink("../a.reg", folder_.Path() / "links/l.reg");
  EXPECT_EQ(Open(folder_.Path() / "links/l.reg").store, nullptr) << "it is the same file";
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::Done);
  EXPECT_EQ(std::filesystem::status(real).permissions(), std::filesystem::perms{0640});
  EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path() / "links/l.reg"));
}

TEST_F(EditedFileTest, AFailedSaveUndoesTheBatchAndSaysWhy) {
  const auto store = OpenNew();
  for (auto* failure : {&files_->replaceFails, &files_->copyFails}) {
    *failure = "le disque est en lecture seule";
    EXPECT_EQ(Save(*store, "1"), CommitOutcome::Failed);
    EXPECT_THAT(
        store->LastError(),
        HasSubstr("a.reg \xBB ne peut \xEAtre enregistr\xE9 : le disque est en lecture seule"));
    EXPECT_EQ(Value(*store), "none");
    EXPECT_NE(store->DeleteKey("A"), kStatusSuccess) << "a write outside a batch";
    EXPECT_EQ(Value(*store), "none");
    EXPECT_THAT(folder_.Names(), UnorderedElementsAre("a.reg", ".a.reg.lock"));
    failure->clear();
  }
  EXPECT_EQ(folder_.Read("a.reg"), kEmpty);
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::Done);
  EXPECT_EQ(folder_.Read("a.reg"), kOneValue);
  EXPECT_EQ(store->LastError(), "");
}

TEST_F(EditedFileTest, AFullDiskLeavesTheFileWhole) {
  const auto store = OpenNew();
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  rlimit small = before;
  small.rlim_cur = 100;
  const auto former = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  const auto outcome = Save(*store, std::string(500, 'x'));
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, former);
  EXPECT_EQ(outcome, CommitOutcome::Failed);
  EXPECT_THAT(store->LastError(), HasSubstr("le fichier serait trop grand"));
  EXPECT_EQ(folder_.Read("a.reg"), kEmpty);
  EXPECT_EQ(Value(*store), "none");
  EXPECT_THAT(folder_.Names(), UnorderedElementsAre("a.reg", ".a.reg.lock"));
}

TEST_F(EditedFileTest, AFolderThatCannotBeWrittenStillOpens) {
  files_->canLock = false;
  files_->copyFails = "vous n'en avez pas le droit";
  const auto store = OpenNew();
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::Failed);
  EXPECT_THAT(store->LastError(), HasSubstr("pas le droit"));
  // The lock of a folder that is not there cannot be taken, and nothing is made of it.
  std::unique_ptr<FileLock> lock;
  EXPECT_EQ(MakeHostFiles()->Lock(folder_.Path() / "none/a.reg", lock),
            HostFiles::Locking::Impossible);
  EXPECT_EQ(lock, nullptr);
}

}  // namespace

}  // namespace morvelle
