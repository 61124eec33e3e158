#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "disk/host_files.h"
#include "tests/support/temp_folder.h"

namespace {
bool hasNoHardLinks = false;
}  // namespace

/// Stands in front of the system's own, which it calls where the disk knows hard links.
extern "C" int link(const char* from, const char* to) noexcept {
  if (!hasNoHardLinks)
    return static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
  errno = EPERM;
  return -1;
}

namespace morvelle {
namespace {

using testing::ElementsAre;

/// The rights of a file as chmod has them.
mode_t RightsOf(const std::filesystem::path& file) {
  struct stat status {};
  ::lstat(file.c_str(), &status);
  return status.st_mode & 07777U;
}

class PosixFilesTest : public testing::Test {
 protected:
  /// Writes beside the file; notes the rights of what it writes to before the first byte.
  FileFault WriteAside(const std::filesystem::path& file) {
    class Watched final : public FileContent {
     public:
      explicit Watched(PosixFilesTest& test) : test_(test) {}
      std::string_view Next() override {
        if (!std::exchange(first_, false)) return {};
        for (const auto& name : test_.folder_.Names()) {
          if (name.ends_with(".tmp")) test_.rightsAtFirst_ = RightsOf(test_.folder_ / name);
        }
        return "neuf";
      }

     private:
      PosixFilesTest& test_;
      bool first_ = true;
    } content(*this);
    return files_->WriteAside(file, content, aside_, stamp_);
  }

  FileFolder folder_;
  std::unique_ptr<HostFiles> files_ = MakeHostFiles();
  std::filesystem::path aside_;
  FileStamp stamp_;
  mode_t rightsAtFirst_ = 0;
};

TEST_F(PosixFilesTest, WritesBesideUnderANameThatNobodyHas) {
  const auto file = folder_.Write("a.reg", "ancien");
  const auto victim = folder_.Write("profil", "à lui");
  const auto first = ".a.reg." + std::to_string(::getpid());
  std::filesystem::create_symlink(victim, folder_ / (first + ".tmp"));
  folder_.Write(first + "-1.tmp", "d'un autre");
  EXPECT_TRUE(WriteAside(file).Empty());
  EXPECT_EQ(aside_, folder_ / (first + "-2.tmp"));
  EXPECT_TRUE(files_->PutInPlace(aside_, file, stamp_).Empty());
  EXPECT_EQ(folder_.Read("a.reg") + folder_.Read("profil") + folder_.Read(first + "-1.tmp"),
            "neufà luid'un autre");
}

TEST_F(PosixFilesTest, ANewFileIsForItsUserAndAnOldOneKeepsItsRights) {
  EXPECT_TRUE(WriteAside(folder_ / "b.roe").Empty());
  EXPECT_EQ(rightsAtFirst_, 0600U);
  files_->Remove(aside_);
  const auto file = folder_.Write("a.roe", "ancien");
  for (const mode_t rights : {0600U, 0640U, 0666U}) {
    ::chmod(file.c_str(), rights);
    EXPECT_TRUE(WriteAside(file).Empty());
    EXPECT_EQ(rightsAtFirst_, rights);
    files_->Remove(aside_);
  }
  const auto own = folder_ / "un" / "deux";
  MakeOwnFolder(own);
  MakeOwnFolder(own);
  EXPECT_EQ(RightsOf(own), 0700U);
  EXPECT_EQ(RightsOf(own.parent_path()), 0700U);
  EXPECT_THROW(MakeOwnFolder(file / "dans"), std::filesystem::filesystem_error);
}

TEST_F(PosixFilesTest, AGroupThatCannotBeKeptTakesNoRightsAlong) {
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator can make a file of another group";
  const auto file = folder_.Write("a.reg", "ancien");
  EXPECT_EQ(::chown(file.c_str(), 65534, 12345), 0);
  ::chmod(file.c_str(), 0664);
  ::chmod(folder_.Path().c_str(), 0777);
  EXPECT_TRUE(WriteAside(file).Empty());
  EXPECT_EQ(rightsAtFirst_, 0664U) << "by who may give it";
  // u::rw-,u:1:rw-,g::---,m::rw-,o::r--: the list lets the group do less than the rights show.
  constexpr std::string_view kList(
      "\2\0\0\0\1\0\6\0\xff\xff\xff\xff\2\0\6\0\1\0\0\0\4\0\0\0\xff\xff\xff\xff"
      "\x10\0\6\0\xff\xff\xff\xff\x20\0\4\0\xff\xff\xff\xff",
      44);
  const auto other = folder_.Write("liste.reg", "ancien");
  if (::setxattr(other.c_str(), "system.posix_acl_access", kList.data(), kList.size(), 0) == 0) {
    files_->Remove(aside_);
    EXPECT_TRUE(WriteAside(other).Empty());
    std::array<char, 64> list{};
    const auto size =
        ::getxattr(aside_.c_str(), "system.posix_acl_access", list.data(), list.size());
    EXPECT_EQ(std::string_view(list.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))),
              kList);
  }
  files_->Remove(aside_);
  EXPECT_EQ(::seteuid(65534), 0);
  EXPECT_TRUE(WriteAside(file).Empty());
  hasNoHardLinks = true;
  FileFault fault;
  EXPECT_EQ(files_->KeepCopy(file, folder_ / "copie", fault), HostFiles::Copying::Done);
  hasNoHardLinks = false;
  EXPECT_EQ(::seteuid(0), 0);
  EXPECT_EQ(rightsAtFirst_, 0644U);
  EXPECT_EQ(RightsOf(folder_ / "copie"), 0644U);
  EXPECT_EQ(folder_.Read("copie"), "ancien");
}

TEST_F(PosixFilesTest, ALockFileThatIsNotOursIsLeftAlone) {
  const auto file = folder_.Write("a.reg", "");
  const auto name = folder_ / ".a.reg.lock";
  const auto victim = folder_.Write("victime", "");
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"text", [&] { folder_.Write(".a.reg.lock", "à lui"); }},
      {"link", [&] { std::filesystem::create_symlink(victim, name); }},
      {"pipe", [&] { ::mkfifo(name.c_str(), 0600); }},
      {"folder", [&] { std::filesystem::create_directory(name); }},
  };
  std::unique_ptr<FileLock> lock;
  for (const auto& [what, make] : cases) {
    make();
    EXPECT_EQ(files_->Lock(file, lock), HostFiles::Locking::Impossible) << what;
    EXPECT_TRUE(std::filesystem::remove(name)) << what;
  }
  // What was left by a run that was killed is, and what took its place meanwhile is not.
  folder_.Write(".a.reg.lock", "");
  EXPECT_EQ(files_->Lock(file, lock), HostFiles::Locking::Taken);
  std::filesystem::remove(name);
  folder_.Write(".a.reg.lock", "à lui");
  lock.reset();
  EXPECT_THAT(folder_.Names(), ElementsAre(".a.reg.lock", "a.reg", "victime"));
}

TEST_F(PosixFilesTest, ReadsPlainFilesWithinTheirLimit) {
  FileBytes bytes;
  const auto read = [&](const char* name, std::uint64_t limit) {
    return files_->Read(folder_ / name, limit, bytes, stamp_).reason;
  };
  ::mkfifo((folder_ / "tube").c_str(), 0600);
  EXPECT_EQ(read("tube", 9), "ce n'est pas un fichier ordinaire");
  std::filesystem::resize_file(folder_.Write("vaste.reg", ""), std::uintmax_t{20} << 30U);
  EXPECT_EQ(read("vaste.reg", kStoreLimit), "il dépasse la taille permise, 1 Go"_cp);
  EXPECT_EQ(read("vaste.reg", kTextFileLimit), "il dépasse la taille permise, 64 Mo"_cp);
  folder_.Write("juste.sgn", "abc");
  EXPECT_EQ(read("juste.sgn", 3), "");
  EXPECT_EQ(bytes.View(), "abc");
}

}  // namespace
}  // namespace morvelle
