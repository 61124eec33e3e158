#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <future>
#include <optional>
#include <utility>

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

class SidecarLock : public FileLock {
 public:
  SidecarLock(path sidecar, std::unique_ptr<OpenFile> file)
      : sidecar_(std::move(sidecar)), file_(std::move(file)) {}
  ~SidecarLock() override { ::unlink(sidecar_.c_str()); }

 private:
  path sidecar_;
  std::unique_ptr<OpenFile> file_;
};

class PosixFiles : public HostFiles {
 public:
  path Resolve(const path& file) override {
    std::error_code ignored;
    auto real = std::filesystem::canonical(file, ignored);
    return real.empty() ? std::filesystem::absolute(file, ignored) : real;
  }

  FileFault Read(const path& file, std::uint64_t limit, FileBytes& bytes,
                 FileStamp& stamp) override {
    // A pipe must not hold the program up.
    const OpenFile input(file, O_RDONLY | O_NONBLOCK);
    if (!input) return Fault(errno);
    struct stat status {};
    if (::fstat(input.Handle(), &status) != 0) return Fault(errno);
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
    while (true) {
      auto opened = std::make_unique<OpenFile>(sidecar, O_RDWR | O_CREAT | O_NOFOLLOW, 0666);
      if (!*opened) opened = std::make_unique<OpenFile>(sidecar, O_RDONLY | O_NOFOLLOW);
      if (!*opened) return Locking::Impossible;
      if (::flock(opened->Handle(), LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? Locking::HeldByAnother : Locking::Impossible;
      }
      // The one who held the lock may have removed the file between our two steps.
      struct stat status {};
      if (::fstat(opened->Handle(), &status) == 0 &&
          StampOf(status).inode == Stamp(sidecar).inode) {
        lock = std::make_unique<SidecarLock>(sidecar, std::move(opened));
        return Locking::Taken;
      }
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
    aside = Beside(file, std::string(".").append(std::to_string(::getpid())).append(".tmp"));
    ::unlink(aside.c_str());
    int error = 0;
    try {
      error = WriteNew(aside, content, wasThere ? &old : nullptr, stamp);
    } catch (...) {
      ::unlink(aside.c_str());
      throw;
    }
    if (error == 0) return {};
    ::unlink(aside.c_str());
    return Fault(error);
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
    const OpenFile output(to, O_WRONLY | O_CREAT | O_EXCL, 0666);
    const int openError = errno;
    if (!output && openError == EEXIST) return Copying::NameTaken;
    WholeContent content(bytes.View());
    const int error = output ? WriteAll(output.Handle(), content) : openError;
    if (error != 0) {
      fault = Fault(error);
      if (output) Remove(to);
      return Copying::Failed;
    }
    return Copying::Done;
  }

  void Remove(const path& file) override { ::unlink(file.c_str()); }

 private:
  /// 0 or the error.
  static int WriteNew(const path& aside, FileContent& content, const struct stat* old,
                      FileStamp& stamp) {
    const OpenFile output(aside, O_WRONLY | O_CREAT | O_EXCL, 0666);
    if (!output) return errno;
    if (old != nullptr) {
      // Only an administrator may give a file away; the rights follow the owner that it has.
      [[maybe_unused]] const int owner = ::fchown(output.Handle(), old->st_uid, old->st_gid);
      if (::fchmod(output.Handle(), old->st_mode & 07777U) != 0) return errno;
    }
    if (const int error = WriteAll(output.Handle(), content); error != 0) return error;
    struct stat status {};
    if (::fstat(output.Handle(), &status) != 0) return errno;
    stamp = StampOf(status);
    return 0;
  }
};

}  // namespace

std::unique_ptr<HostFiles> MakeHostFiles() { return std::make_unique<PosixFiles>(); }

}  // namespace morvelle
