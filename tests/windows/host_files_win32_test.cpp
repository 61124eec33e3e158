#include <windows.h>

#include "disk/host_files.h"
#include "tests/support/temp_folder.h"

namespace morvelle {

namespace {

class Win32FilesTest : public testing::Test {
 protected:
  FileFolder folder_;
  /// Puts the bytes in the place of the file; the reason where that fails.
  std::string Replace(const std::filesystem::path& file, std::string_view bytes) {
    WholeContent content(bytes);
    std::filesystem::path aside;
    const auto reason = files_->WriteAside(file, content, aside, stamp_);
    return (reason.Empty() ? files_->PutInPlace(aside, file, stamp_) : reason).reason;
  }

  std::unique_ptr<HostFiles> files_ = MakeHostFiles();
  FileBytes bytes_;
  FileStamp stamp_;
};

TEST_F(Win32FilesTest, ReplacesAFileWholeOrNotAtAll) {
  const auto file = folder_.Write("a.reg", "old");
  EXPECT_EQ(Replace(file, "new content"), "");
  EXPECT_EQ(folder_.Read("a.reg"), "new content");
  EXPECT_EQ(stamp_, files_->Stamp(file));
  ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_NE(Replace(file, "refused"), "");
  ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
  // Held by a program that lets nobody else write it, nor, at first, delete or rename it.
  for (const DWORD shared : {DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_READ | FILE_SHARE_DELETE}}) {
    const HANDLE held =
        ::CreateFileW(file.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(Replace(file, "refused"), "");
    ::CloseHandle(held);
  }
  EXPECT_EQ(folder_.Read("a.reg"), "new content");
  // Nothing that was written aside stays; Wine leaves a file of its own where ReplaceFile fails.
  for (const auto& name : folder_.Names()) EXPECT_NE(name.front(), '.') << name;
  EXPECT_EQ(Replace(folder_.Path() / "b.reg", "made"), "");
  EXPECT_EQ(folder_.Read("b.reg"), "made");
}

TEST_F(Win32FilesTest, TellsAFileFromTheSameFileWrittenAgain) {
  const auto file = folder_.Write("a.reg", "old");
  EXPECT_EQ(files_->Read(file, kStoreLimit, bytes_, stamp_).reason, "");
  EXPECT_EQ(bytes_.View(), "old");
  EXPECT_EQ(files_->Stamp(file), stamp_);
  folder_.Write("a.reg", "longer");
  EXPECT_NE(files_->Stamp(file), stamp_);
  EXPECT_FALSE(files_->Stamp(folder_.Path() / "none").there);
  EXPECT_NE(files_->Read(folder_.Path() / "none", kStoreLimit, bytes_, stamp_).reason, "");
  EXPECT_NE(files_->Read(folder_.Path(), kStoreLimit, bytes_, stamp_).reason, "");
}

TEST_F(Win32FilesTest, KeepsASecondEditorOff) {
  const auto file = folder_.Write("a.reg", "old");
  const auto other = MakeHostFiles();
  std::unique_ptr<FileLock> lock;
  std::unique_ptr<FileLock> second;
  EXPECT_EQ(files_->Lock(file, lock), HostFiles::Locking::Taken);
  EXPECT_EQ(other->Lock(file, second), HostFiles::Locking::HeldByAnother);
  lock.reset();
  EXPECT_EQ(folder_.Names(), std::set<std::string>{"a.reg"});
  EXPECT_EQ(other->Lock(file, second), HostFiles::Locking::Taken);
}

TEST_F(Win32FilesTest, WhatIsNotOursIsLeftAlone) {
  const auto file = folder_.Write("a.reg", "old");
  std::unique_ptr<FileLock> lock;
  folder_.Write(".a.reg.lock", "another's");
  EXPECT_EQ(files_->Lock(file, lock), HostFiles::Locking::Impossible);
  EXPECT_EQ(folder_.Read(".a.reg.lock"), "another's");
  std::filesystem::remove(folder_ / ".a.reg.lock");
  std::filesystem::create_directory(folder_ / ".a.reg.lock");
  EXPECT_EQ(files_->Lock(file, lock), HostFiles::Locking::Impossible);
  const auto aside = ".a.reg." + std::to_string(::GetCurrentProcessId()) + ".tmp";
  folder_.Write(aside, "another's");
  EXPECT_EQ(Replace(file, "new"), "");
  EXPECT_EQ(folder_.Read(aside) + folder_.Read("a.reg"), "another'snew");
  EXPECT_NE(Replace(L"NUL", "refused"), "");
  EXPECT_EQ(files_->Read(file, 2, bytes_, stamp_).reason, TooLarge(2).reason);
}

TEST_F(Win32FilesTest, ACopyNeverTakesTheNameOfAnother) {
  const auto file = folder_.Write("a.reg", "old");
  const auto copy = folder_.Path() / L"a (copie du 1er été).reg";
  FileFault fault;
  EXPECT_EQ(files_->KeepCopy(file, copy, fault), HostFiles::Copying::Done);
  Replace(file, "new");
  EXPECT_EQ(files_->KeepCopy(file, copy, fault), HostFiles::Copying::NameTaken);
  EXPECT_EQ(files_->Read(copy, kStoreLimit, bytes_, stamp_).reason, "");
  EXPECT_EQ(bytes_.View(), "old");
  EXPECT_EQ(files_->KeepCopy(folder_.Path() / "none", folder_.Path() / "c", fault),
            HostFiles::Copying::Failed);
  EXPECT_NE(fault.reason, "");
}

TEST_F(Win32FilesTest, TheCopyOfAFileThatMayNotBeWrittenCanBeTakenBack) {
  const auto file = folder_.Write("a.reg", "old");
  ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
  FileFault fault;
  EXPECT_EQ(files_->KeepCopy(file, folder_.Path() / "copy.reg", fault), HostFiles::Copying::Done);
  files_->Remove(folder_.Path() / "copy.reg");
  EXPECT_EQ(folder_.Names(), std::set<std::string>{"a.reg"});
  ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace

}  // namespace morvelle
