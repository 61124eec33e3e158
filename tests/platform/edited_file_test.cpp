// A registry file on the disk: opening, locking, saving, and what must not be lost when that fails.

#include "disk/edited_file.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <utility>

#include "app/messages/text.h"
#include "platform/registry_regfile.h"
#include "tests/support/temp_folder.h"

namespace morvelle {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

constexpr std::string_view kEmpty = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\r\n";
constexpr std::string_view kOneValue =
    "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\"v\"=hex:31\r\n\r\n";

/// The real file system, with the failures that a test asks for.
class FailingFiles final : public HostFiles {
 public:
  std::string copyFails;
  /// A replacement that fails when the old file is gone already.
  bool losesFile = false;
  bool canLock = true;
  std::string readOnly;
  /// What another program does while the new file is being written.
  std::function<void()> meanwhile;

  std::filesystem::path Resolve(const std::filesystem::path& path) override {
    return real_->Resolve(path);
  }
  FileFault Read(const std::filesystem::path& path, std::uint64_t limit, FileBytes& bytes,
                 FileStamp& stamp) override {
    return real_->Read(path, limit, bytes, stamp);
  }
  FileStamp Stamp(const std::filesystem::path& path) override { return real_->Stamp(path); }
  std::string WhyReadOnly(const std::filesystem::path& path) override {
    return readOnly.empty() ? real_->WhyReadOnly(path) : readOnly;
  }
  Locking Lock(const std::filesystem::path& path, std::unique_ptr<FileLock>& lock) override {
    return canLock ? real_->Lock(path, lock) : Locking::Impossible;
  }
  FileFault WriteAside(const std::filesystem::path& path, FileContent& content,
                       std::filesystem::path& aside, FileStamp& stamp) override {
    auto reason = real_->WriteAside(path, content, aside, stamp);
    if (meanwhile) meanwhile();
    return reason;
  }
  FileFault PutInPlace(const std::filesystem::path& aside, const std::filesystem::path& path,
                       FileStamp& stamp) override {
    if (!losesFile) return real_->PutInPlace(aside, path, stamp);
    real_->Remove(path);
    return {"erreur"};
  }
  Copying KeepCopy(const std::filesystem::path& from, const std::filesystem::path& to,
                   FileFault& fault) override {
    if (copyFails.empty()) return real_->KeepCopy(from, to, fault);
    fault.reason = copyFails;
    return Copying::Failed;
  }
  void Remove(const std::filesystem::path& path) override { real_->Remove(path); }

 private:
  std::unique_ptr<HostFiles> real_ = MakeHostFiles();
};

class EditedFileTest : public testing::Test {
 protected:
  EditedFileTest() {
    // 2026-11-22 22:20:05, wherever the test runs.
    std::tm moment{5, 20, 22, 22, 10, 126, 0, 0, -1, 0, nullptr};
    now_ = std::chrono::system_clock::from_time_t(std::mktime(&moment));
  }

  OpenedStore Open(const std::filesystem::path& path) {
    return OpenRegFile(path, files_, [this] { return now_; });
  }
  std::unique_ptr<RegistryStore> OpenNew() {
    WriteFile(file_, kEmpty);
    auto opened = Open(file_);
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

  FileFolder folder_;
  std::filesystem::path file_ = folder_ / "a.reg";
  std::shared_ptr<FailingFiles> files_ = std::make_shared<FailingFiles>();
  std::chrono::system_clock::time_point now_;
  KeyHandle key_ = 0;
};

constexpr const char* kCopy = "a (copie du 2026-11-22 22-20-05).reg";

TEST_F(EditedFileTest, TheFirstWriteOfARunLeavesADatedCopy) {
  WriteFile(folder_ / kCopy, "older");
  {
    const auto store = OpenNew();
    store->BeginBatch();
    store->SetValue(key_, "v", ValueKind::Binary, "1");
    store->DeleteValue(key_, "v");
    EXPECT_EQ(store->CommitBatch(false), CommitOutcome::Done);
    EXPECT_THAT(folder_.Names(), UnorderedElementsAre("a.reg", kCopy, ".a.reg.lock"))
        << "no change, no copy";
    EXPECT_EQ(Save(*store, "1"), CommitOutcome::Done);
    EXPECT_EQ(ReadFile(file_), kOneValue);
    EXPECT_EQ(Save(*store, "2"), CommitOutcome::Done);
    EXPECT_EQ(Save(*store, "2"), CommitOutcome::Done);
  }
  const std::string second = "a (copie du 2026-11-22 22-20-05 n2).reg";
  EXPECT_THAT(folder_.Names(), UnorderedElementsAre("a.reg", kCopy, second));
  EXPECT_EQ(ReadFile(folder_ / kCopy), "older");
  EXPECT_EQ(ReadFile(folder_ / second), kEmpty);
}

TEST_F(EditedFileTest, ASecondEditorIsRefused) {
  auto store = OpenNew();
  const auto second = Open(file_);
  EXPECT_EQ(second.store, nullptr);
  EXPECT_THAT(second.error,
              HasSubstr("a.reg \xBB ne peut \xEAtre ouvert : il est d\xE9j\xE0 ouvert"));
  store.reset();
  EXPECT_THAT(folder_.Names(), ElementsAre("a.reg"));
  EXPECT_NE(Open(file_).store, nullptr);
}

TEST_F(EditedFileTest, SaysWhyAFileCannotBeOpened) {
  ::mkfifo((folder_ / "pipe").c_str(), 0600);
  std::filesystem::create_directory(folder_ / "folder.reg");
  WriteFile(folder_ / "wrong.reg", "[HKEY_CURRENT_USER]");
  WriteFile(folder_ / "empty.reg", "");
  WriteFile(folder_ / "huge.reg", "");
  std::filesystem::resize_file(folder_ / "huge.reg", kStoreLimit + 1);
  WriteFile(folder_ / "NTUSER.DAT", "regf");
  const std::pair<const char*, const char*> cases[] = {
      {"none.reg", "none.reg \xBB ne peut \xEAtre ouvert : il n'existe pas"},
      {"folder.reg", "c'est un dossier"},
      {"pipe", "ce n'est pas un fichier ordinaire"},
      {"wrong.reg", "ce n'est ni une ruche (NTUSER.DAT) ni un fichier de registre"},
      {"empty.reg", "il est vide"},
      {"huge.reg", "il d\xE9passe la taille permise, 1 Go"},
      {"NTUSER.DAT", "que Morvelle n'ouvre que sous Linux"},
  };
  for (const auto& [name, reason] : cases) {
    const auto opened = Open(folder_ / name);
    EXPECT_EQ(opened.store, nullptr);
    EXPECT_THAT(opened.error, HasSubstr(reason));
  }
  EXPECT_THAT(folder_.Names(), UnorderedElementsAre("NTUSER.DAT", "empty.reg", "folder.reg",
                                                    "huge.reg", "pipe", "wrong.reg"));
}

TEST_F(EditedFileTest, WhatAnotherProgramWroteIsNotOverwrittenWithoutAQuestion) {
  const auto store = OpenNew();
  WriteFile(file_, "another program's");
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::ChangedMeanwhile);
  EXPECT_THAT(store->LastError(), HasSubstr("modifi\xE9 par un autre programme"));
  EXPECT_EQ(ReadFile(file_), "another program's");
  EXPECT_EQ(Value(*store), "1") << "the batch stays open";
  EXPECT_EQ(store->CommitBatch(true), CommitOutcome::Done);
  EXPECT_EQ(ReadFile(file_), kOneValue);
  EXPECT_EQ(ReadFile(folder_ / kCopy), "another program's");

  files_->meanwhile = [&] { WriteFile(file_, "in between"); };
  EXPECT_EQ(Save(*store, "4"), CommitOutcome::ChangedMeanwhile);
  EXPECT_EQ(ReadFile(file_), "in between");
  EXPECT_EQ(std::ranges::count(folder_.Names(), ".a.reg.lock"), 1);
  EXPECT_EQ(folder_.Names().size(), 3U) << "nothing lies beside the file and its copy";
  files_->meanwhile = nullptr;
  store->AbandonBatch();

  // Later in the run too, and with the user's no.
  WriteFile(file_, "again");
  EXPECT_EQ(Save(*store, "2"), CommitOutcome::ChangedMeanwhile);
  store->AbandonBatch();
  EXPECT_EQ(Value(*store), "1");
  EXPECT_NE(store->SetValue(key_, "v", ValueKind::Binary, "3"), kStatusSuccess);
  EXPECT_EQ(ReadFile(file_), "again");
}

TEST_F(EditedFileTest, ReplacedOrVanishedCountsAsChanged) {
  const auto store = OpenNew();
  WriteFile(folder_ / "other", kEmpty);
  std::filesystem::last_write_time(folder_ / "other", std::filesystem::last_write_time(file_));
  std::filesystem::rename(folder_ / "other", file_);
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::ChangedMeanwhile);
  std::filesystem::remove(file_);
  EXPECT_EQ(store->CommitBatch(false), CommitOutcome::ChangedMeanwhile);
  EXPECT_EQ(store->CommitBatch(true), CommitOutcome::Done);
  EXPECT_EQ(ReadFile(file_), kOneValue);
}

TEST_F(EditedFileTest, KeepsRightsAndLinks) {
  const auto store = OpenNew();
  const auto link = folder_ / "links/l.reg";
  ::chmod(file_.c_str(), 0640);
  std::filesystem::create_directory(folder_ / "links");
  std::filesystem::create_symlink("../a.reg", link);
  EXPECT_EQ(Open(link).store, nullptr) << "it is the same file";
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::Done);
  EXPECT_EQ(std::filesystem::status(file_).permissions(), std::filesystem::perms{0640});
  EXPECT_TRUE(std::filesystem::is_symlink(link));
}

TEST_F(EditedFileTest, AFolderThatCannotBeWrittenStillOpens) {
  files_->canLock = false;
  files_->copyFails = files_->readOnly = "vous n'en avez pas le droit";
  const auto store = OpenNew();
  EXPECT_THAT(store->ReadOnlyReason(), HasSubstr("enregistr\xE9 : vous n'en avez pas le droit"));
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::Failed);
  EXPECT_THAT(store->LastError(), HasSubstr("pas le droit"));
  EXPECT_NE(store->DeleteKey("A"), kStatusSuccess) << "a write outside a batch";
  EXPECT_EQ(Value(*store), "none");
  EXPECT_EQ(ReadFile(file_), kEmpty) << "without its copy nothing is written";
}

TEST_F(EditedFileTest, TellsWhetherItCanBeWritten) {
  const auto store = OpenNew();
  const bool isRoot = ::geteuid() == 0;
  const auto can = [&](mode_t file, mode_t folder) {
    ::chmod(file_.c_str(), file);
    ::chmod(folder_.Path().c_str(), folder);
    // Nobody, where the test may write everything.
    EXPECT_EQ(isRoot ? ::seteuid(65534) : 0, 0);
    const bool writable = store->ReadOnlyReason().empty();
    EXPECT_EQ(isRoot ? ::seteuid(0) : 0, 0);
    return writable;
  };
  EXPECT_FALSE(can(0444, 0777));
  EXPECT_FALSE(can(0666, 0555));
  EXPECT_TRUE(can(0666, 0777));
}

TEST_F(EditedFileTest, TheCopyStaysWhereTheFileIsLost) {
  const auto store = OpenNew();
  files_->losesFile = true;
  EXPECT_EQ(Save(*store, "1"), CommitOutcome::Failed);
  EXPECT_EQ(ReadFile(folder_ / kCopy), kEmpty);
}

}  // namespace

}  // namespace morvelle
