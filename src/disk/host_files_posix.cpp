#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <future>
#include <optional>
#include <utility>
#include <vector>

#include "app/messages/text.h"
#include "disk/host_files.h"

namespace morvelle {

namespace {

using std::filesystem::path;

std::string ReasonOf(int error) {
  const auto text = [error]() -> std::string_view {
    switch (error) {
      case ENOENT:
        return "il n'existe pas";
      case EACCES:
      case EPERM:
        return "vous n'en avez pas le droit";
      case EISDIR:
        return "c'est un dossier";
      case EROFS:
        return "le disque est en lecture seule";
      case ENOSPC:
        return "le disque est plein";
      case EDQUOT:
        return "votre espace sur le disque est épuisé"_cp;
      case EFBIG:
        return "le fichier serait trop grand";
      case EIO:
        return "erreur de lecture ou d'écriture du disque"_cp;
      default:
        return {};
    }
  }();
  return text.empty() ? std::string("erreur ").append(std::to_string(error)) : std::string(text);
}

ErrorNumber NumberOf(int error) {
  switch (error) {
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return ErrorNumber::PermissionDenied;
    case ENOENT:
    case ENOTDIR:
      return ErrorNumber::PathNotFound;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return ErrorNumber::DiskFull;
    default:
      return ErrorNumber::DeviceError;
  }
}

FileFault Fault(int error) { return {ReasonOf(error), NumberOf(error)}; }

/// An open file, closed at the end.
class OpenFile {
 public:
  OpenFile(const path& file, int flags, mode_t mode = 0)
      : handle_(::open(file.c_str(), flags | O_CLOEXEC, mode)) {}
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() {
    if (handle_ >= 0) ::close(handle_);
  }
  [[nodiscard]] int Handle() const { return handle_; }
  [[nodiscard]] explicit operator bool() const { return handle_ >= 0; }

 private:
  int handle_;
};

FileStamp StampOf(const struct stat& status) {
  constexpr std::int64_t kNsPerSecond = 1'000'000'000;
  return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec * kNsPerSecond + status.st_mtim.tv_nsec, true};
}

/// What is there and cannot be read or written as a file.
FileFault NoPlainFile(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return Fault(EISDIR);
  return {"ce n'est pas un fichier ordinaire", ErrorNumber::PermissionDenied};
}

/// 0 or the error.
int WritePiece(int handle, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(handle, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

/// Has the disk start on what was written so far; fsync then waits for all.
void StartDisk([[maybe_unused]] int handle) {
#ifdef SYNC_FILE_RANGE_WRITE
  ::sync_file_range(handle, 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
}

/// 0 or the error; down to the disk.
int WriteAll(int handle, FileContent& content) {
  for (auto piece = content.Next(); !piece.empty();) {
    // To write a piece takes the system about as long as it takes to make the next one.
    auto writing = std::async([=] { return WritePiece(handle, piece); });
    StartDisk(handle);
    const auto next = content.Next();
    if (const int error = writing.get(); error != 0) return error;
    piece = next;
  }
  return ::fsync(handle) == 0 ? 0 : errno;
}

/// A new name in a folder lasts only once the folder itself has reached the disk. Some file systems
/// cannot do that, and the file is in its place by then: no error.
void SyncFolder(const path& file) {
  const OpenFile folder(file.parent_path().empty() ? path(".") : file.parent_path(),
                        O_RDONLY | O_DIRECTORY);
  if (folder) ::fsync(folder.Handle());
}

path Beside(const path& file, const std::string& suffix) {
  path name = ".";
  name += file.filename();
  name += suffix;
  return file.parent_path() / name;
}

/// Whether the name is that of the open file, and what is open can be a lock file of ours: a plain
/// file that holds nothing.
enum class LockFile { Ours, Foreign, Gone };

LockFile LookAtLock(int handle, const path& sidecar) {
  struct stat status {};
  struct stat named {};
  if (::fstat(handle, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size != 0) {
    return LockFile::Foreign;
  }
  const bool same = ::lstat(sidecar.c_str(), &named) == 0 && named.st_ino == status.st_ino &&
                    named.st_dev == status.st_dev;
  return same ? LockFile::Ours : LockFile::Gone;
}

class SidecarLock : public FileLock {
 public:
  SidecarLock(path sidecar, std::unique_ptr<OpenFile> file)
      : sidecar_(std::move(sidecar)), file_(std::move(file)) {}
  ~SidecarLock() override {
    // What took its name meanwhile is another's.
    if (LookAtLock(file_->Handle(), sidecar_) == LockFile::Ours) ::unlink(sidecar_.c_str());
  }

 private:
  path sidecar_;
  std::unique_ptr<OpenFile> file_;
};

/// Gives a new file the access list of another, where that has one: its rights then show the most
/// that the list allows, not what the group may.
bool GiveAccessList([[maybe_unused]] int handle, [[maybe_unused]] const path& like) {
#ifdef __linux__
  constexpr const char* kList = "system.posix_acl_access";
  constexpr std::size_t kMost = 65536;  // XATTR_SIZE_MAX of the kernel.
  std::vector<char> list(kMost);
  const auto size = ::getxattr(like.c_str(), kList, list.data(), list.size());
  if (size > 0) {
    return ::fsetxattr(handle, kList, list.data(), static_cast<std::size_t>(size), 0) == 0;
  }
#endif
  return true;
}

/// Gives a new file, which only its maker may read so far, owner, group and rights of `like`. Where
/// the group or an access list cannot be kept, the group gets the rights of the others. 0 or the
/// error.
int GiveRights(int handle, const path& like) {
  struct stat other {};
  struct stat status {};
  if (::stat(like.c_str(), &other) != 0) return errno;
  // Only an administrator may give a file away; the rights follow the owner that it has.
  if (::fchown(handle, other.st_uid, other.st_gid) != 0) {
    [[maybe_unused]] const int group = ::fchown(handle, static_cast<uid_t>(-1), other.st_gid);
  }
  if (::fstat(handle, &status) != 0) return errno;
  mode_t rights = other.st_mode & 0777U;
  if (status.st_gid != other.st_gid || !GiveAccessList(handle, like)) {
    rights = (rights & ~mode_t{S_IRWXG}) | (rights & S_IRWXO) << 3U;
  }
  // A disk without rights of its own, as most sticks are, refuses even those that it shows.
  if (::fstat(handle, &status) != 0) return errno;
  if ((status.st_mode & 0777U) == rights) return 0;
  return ::fchmod(handle, rights) == 0 ? 0 : errno;
}

/// A new file of this name, for its maker alone: never one that is there, nor what a link names.
std::unique_ptr<OpenFile> MakeFile(const path& file) {
  return std::make_unique<OpenFile>(file, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
}

/// Writes a new file with the rights of `like`, where there is one. What fails takes it along. 0 or
/// the error.
int Fill(const OpenFile& output, const path& name, FileContent& content, const path& like) {
  try {
    int error = like.empty() ? 0 : GiveRights(output.Handle(), like);
    if (error == 0) error = WriteAll(output.Handle(), content);
    if (error != 0) ::unlink(name.c_str());
    return error;
  } catch (...) {
    ::unlink(name.c_str());
    throw;
  }
}

class PosixFiles : public HostFiles {
 public:
  path Resolve(const path& file) override {
    std::error_code ignored;
    auto real = std::filesystem::canonical(file, ignored);
    return real.empty() ? std::filesystem::absolute(file, ignored) : real;
  }

  FileFault Read(const path& file, std::uint64_t limit, FileBytes& bytes,
                 FileStamp& stamp) override {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) return Fault(errno);
    if (!S_ISREG(status.st_mode)) return NoPlainFile(status);
    // What takes its place meanwhile must not hold the program up either.
    const OpenFile input(file, O_RDONLY | O_NONBLOCK);
    if (!input || ::fstat(input.Handle(), &status) != 0) return Fault(errno);
    if (!S_ISREG(status.st_mode)) return NoPlainFile(status);
    stamp = StampOf(status);
    if (stamp.size > limit) return TooLarge(limit);
    bytes.data = std::make_unique_for_overwrite<char[]>(stamp.size);
    bytes.size = 0;
    while (bytes.size < stamp.size) {
      const auto count =
          ::read(input.Handle(), bytes.data.get() + bytes.size, stamp.size - bytes.size);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return Fault(errno);
      if (count == 0) break;
      bytes.size += static_cast<std::size_t>(count);
    }
    return {};
  }

  FileStamp Stamp(const path& file) override {
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 ? StampOf(status) : FileStamp{};
  }

  std::string WhyReadOnly(const path& file) override {
    const auto folder = file.parent_path().empty() ? path(".") : file.parent_path();
    const bool writable = ::faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) == 0 &&
                          ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
    return writable ? std::string() : ReasonOf(errno);
  }

  Locking Lock(const path& file, std::unique_ptr<FileLock>& lock) override {
    const path sidecar = Beside(file, ".lock");
    constexpr int kFlags = O_NOFOLLOW | O_NONBLOCK;
    while (true) {
      auto opened = std::make_unique<OpenFile>(sidecar, O_RDWR | O_CREAT | kFlags, 0666);
      if (!*opened) opened = std::make_unique<OpenFile>(sidecar, O_RDONLY | kFlags);
      if (!*opened) return Locking::Impossible;
      if (LookAtLock(opened->Handle(), sidecar) == LockFile::Foreign) return Locking::Impossible;
      if (::flock(opened->Handle(), LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? Locking::HeldByAnother : Locking::Impossible;
      }
      // The one who held the lock may have removed the file between our two steps.
      const auto found = LookAtLock(opened->Handle(), sidecar);
      if (found == LockFile::Foreign) return Locking::Impossible;
      if (found == LockFile::Gone) continue;
      lock = std::make_unique<SidecarLock>(sidecar, std::move(opened));
      return Locking::Taken;
    }
  }

  FileFault WriteAside(const path& file, FileContent& content, path& aside,
                       FileStamp& stamp) override {
    struct stat old {};
    const bool wasThere = ::stat(file.c_str(), &old) == 0;
    if (wasThere && !S_ISREG(old.st_mode)) return NoPlainFile(old);
    // The rename that follows would pass over the rights of the file.
    if (wasThere && ::faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) != 0) {
      return Fault(errno);
    }
    const auto output = MakeAside(file, aside);
    if (!*output) return Fault(errno);
    const int error = Fill(*output, aside, content, wasThere ? file : path{});
    if (error != 0) return Fault(error);
    stamp = Stamp(aside);
    return {};
  }

  FileFault PutInPlace(const path& aside, const path& file,
                       [[maybe_unused]] FileStamp& stamp) override {
    if (::rename(aside.c_str(), file.c_str()) == 0) {
      SyncFolder(file);
      return {};
    }
    auto fault = Fault(errno);
    ::unlink(aside.c_str());
    return fault;
  }

  Copying KeepCopy(const path& from, const path& to, FileFault& fault) override {
    // Replace gives the old name to a new file, so that the old content needs a name and no copy.
    if (::link(from.c_str(), to.c_str()) == 0) return Copying::Done;
    if (errno == EEXIST) return Copying::NameTaken;
    FileBytes bytes;
    FileStamp stamp;
    fault = Read(from, kStoreLimit, bytes, stamp);
    if (!fault.Empty()) return Copying::Failed;
    const auto output = MakeFile(to);
    if (!*output) return errno == EEXIST ? Copying::NameTaken : Failed(errno, fault);
    WholeContent content(bytes.View());
    const int error = Fill(*output, to, content, from);
    return error == 0 ? Copying::Done : Failed(error, fault);
  }

  void Remove(const path& file) override { ::unlink(file.c_str()); }

 private:
  static Copying Failed(int error, FileFault& fault) {
    fault = Fault(error);
    return Copying::Failed;
  }

  /// A name of its own beside the file: what a run that was killed left, or somebody else put
  /// there, stays as it is. Not open where there can be none, errno saying why.
  static std::unique_ptr<OpenFile> MakeAside(const path& file, path& aside) {
    constexpr int kNames = 100;
    const auto process = "." + std::to_string(::getpid());
    for (int number = 0;; ++number) {
      aside = Beside(file, process + (number > 0 ? "-" + std::to_string(number) : "") + ".tmp");
      auto output = MakeFile(aside);
      if (*output || errno != EEXIST || number == kNames) return output;
    }
  }
};

}  // namespace

bool IsLink(const path& file) {
  std::error_code error;
  return std::filesystem::is_symlink(file, error);
}

void MakeOwnFolder(const path& folder) {
  if (::mkdir(folder.c_str(), S_IRWXU) == 0) return;
  if (errno == ENOENT && folder.has_parent_path() && folder.parent_path() != folder) {
    MakeOwnFolder(folder.parent_path());
    if (::mkdir(folder.c_str(), S_IRWXU) == 0) return;
  }
  const std::error_code error(errno, std::generic_category());
  if (!std::filesystem::is_directory(folder)) {
    throw std::filesystem::filesystem_error("mkdir", folder, error);
  }
}

std::unique_ptr<HostFiles> MakeHostFiles() { return std::make_unique<PosixFiles>(); }

}  // namespace morvelle
