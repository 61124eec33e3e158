#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/messages/text.h"
#include "disk/final_path_win32.h"
#include "disk/host_files.h"

namespace morvelle {

namespace {

using std::filesystem::path;

std::string ReasonOf(DWORD error) {
  const auto text = [error]() -> std::string_view {
    switch (error) {
      case ERROR_FILE_NOT_FOUND:
      case ERROR_PATH_NOT_FOUND:
        return "il n'existe pas";
      case ERROR_ACCESS_DENIED:
        return "vous n'en avez pas le droit";
      case ERROR_SHARING_VIOLATION:
      case ERROR_LOCK_VIOLATION:
        return "un autre programme s'en sert";
      case ERROR_WRITE_PROTECT:
        return "le disque est en lecture seule";
      case ERROR_DISK_FULL:
      case ERROR_HANDLE_DISK_FULL:
        return "le disque est plein";
      case ERROR_FILE_TOO_LARGE:
        return "le fichier serait trop grand";
      case ERROR_NOT_READY:
        return "le lecteur n'est pas prêt"_cp;
      case ERROR_CRC:
      case ERROR_READ_FAULT:
      case ERROR_WRITE_FAULT:
        return "erreur de lecture ou d'écriture du disque"_cp;
      default:
        return {};
    }
  }();
  return text.empty() ? "erreur " + std::to_string(error) : std::string(text);
}

ErrorNumber NumberOf(DWORD error) {
  switch (error) {
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return ErrorNumber::PermissionDenied;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return ErrorNumber::PathNotFound;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_FILE_TOO_LARGE:
      return ErrorNumber::DiskFull;
    default:
      return ErrorNumber::DeviceError;
  }
}

FileFault Fault(DWORD error) { return {ReasonOf(error), NumberOf(error)}; }

/// An open file, closed at the end.
class OpenFile {
 public:
  OpenFile(const path& file, DWORD access, DWORD sharing, DWORD creation, DWORD attributes,
           SECURITY_ATTRIBUTES* security = nullptr)
      : handle_(::CreateFileW(file.c_str(), access, sharing, security, creation, attributes,
                              nullptr)) {}
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() { Close(); }
  void Close() {
    if (*this) ::CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }
  [[nodiscard]] HANDLE Handle() const { return handle_; }
  [[nodiscard]] explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE handle_;
};

std::uint64_t Joined(DWORD high, DWORD low) { return (std::uint64_t{high} << 32U) | low; }

/// Not there when the system does not say.
FileStamp StampOf(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION known{};
  if (::GetFileInformationByHandle(file, &known) == FALSE) return {};
  // A FILETIME counts steps of 100 ns from 1601 on; between it and 1970 lie 11644473600 s.
  constexpr std::int64_t kStepsTo1970 = 116'444'736'000'000'000;
  constexpr std::int64_t kNsPerStep = 100;
  const auto steps = static_cast<std::int64_t>(
      Joined(known.ftLastWriteTime.dwHighDateTime, known.ftLastWriteTime.dwLowDateTime));
  return {known.dwVolumeSerialNumber, Joined(known.nFileIndexHigh, known.nFileIndexLow),
          Joined(known.nFileSizeHigh, known.nFileSizeLow), (steps - kStepsTo1970) * kNsPerStep,
          true};
}

/// The longest piece read or written at once: a network drive refuses much longer ones.
constexpr std::size_t kPiece = 16U << 20U;

/// 0 or the error.
DWORD WritePiece(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD count = 0;
    const auto piece = static_cast<DWORD>(std::min(bytes.size(), kPiece));
    if (::WriteFile(file, bytes.data(), piece, &count, nullptr) == FALSE) return ::GetLastError();
    bytes.remove_prefix(count);
  }
  return ERROR_SUCCESS;
}

/// 0 or the error; down to the disk.
DWORD WriteAll(HANDLE file, FileContent& content) {
  for (auto piece = content.Next(); !piece.empty(); piece = content.Next()) {
    if (const DWORD error = WritePiece(file, piece); error != ERROR_SUCCESS) return error;
  }
  return ::FlushFileBuffers(file) != FALSE ? ERROR_SUCCESS : ::GetLastError();
}

path Beside(const path& file, const std::wstring& suffix) {
  return file.parent_path() / (L"." + file.filename().native() + suffix);
}

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

FileFault NoPlainFile() {
  return {"ce n'est pas un fichier ordinaire", ErrorNumber::PermissionDenied};
}

/// Whether a file that is there can be a lock file of ours: a plain file that holds nothing, and no
/// link to one. True for one that is not there.
bool IsOurLock(const path& sidecar) {
  const OpenFile found(sidecar, FILE_READ_ATTRIBUTES, kShareAll, OPEN_EXISTING,
                       FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS);
  if (!found) return ::GetLastError() == ERROR_FILE_NOT_FOUND;
  constexpr DWORD kForeign = FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY;
  BY_HANDLE_FILE_INFORMATION known{};
  return ::GetFileType(found.Handle()) == FILE_TYPE_DISK &&
         ::GetFileInformationByHandle(found.Handle(), &known) != FALSE &&
         (known.dwFileAttributes & kForeign) == 0 && known.nFileSizeHigh == 0 &&
         known.nFileSizeLow == 0;
}

/// The rights of a file, for a new one that is to take its place; of one that has none, as on a
/// disk of another file system, those that its folder gives.
class Rights {
 public:
  explicit Rights(const path& file) {
    DWORD size = 0;
    ::GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    descriptor_.resize(size);
    if (size == 0 || ::GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, descriptor_.data(),
                                        size, &size) == FALSE) {
      return;
    }
    attributes_ = {sizeof attributes_, descriptor_.data(), FALSE};
  }
  /// Null where the folder's hold.
  SECURITY_ATTRIBUTES* Get() { return attributes_.nLength != 0 ? &attributes_ : nullptr; }

 private:
  std::vector<std::byte> descriptor_;
  SECURITY_ATTRIBUTES attributes_{};
};

/// Opened for nobody else, and gone when it is closed, even by the end of the program.
class SidecarLock : public FileLock {
 public:
  explicit SidecarLock(std::unique_ptr<OpenFile> file) : file_(std::move(file)) {}

 private:
  std::unique_ptr<OpenFile> file_;
};

class Win32Files : public HostFiles {
 public:
  path Resolve(const path& file) override {
    // Where this is not known there are no links to files either.
    if (auto real = FinalPath(file).value_or(path{}); !real.empty()) return real;
    std::error_code ignored;
    auto real = std::filesystem::absolute(file, ignored);
    return real.empty() ? file : real;
  }

  FileFault Read(const path& file, std::uint64_t limit, FileBytes& bytes,
                 FileStamp& stamp) override {
    const DWORD attributes = ::GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return Fault(::GetLastError());
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
      return {"c'est un dossier", ErrorNumber::PermissionDenied};
    const OpenFile input(file, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING, 0);
    if (!input) return Fault(::GetLastError());
    if (::GetFileType(input.Handle()) != FILE_TYPE_DISK) return NoPlainFile();
    stamp = StampOf(input.Handle());
    if (stamp.size > limit || !std::in_range<std::size_t>(stamp.size)) return TooLarge(limit);
    const auto size = static_cast<std::size_t>(stamp.size);
    bytes.data = std::make_unique_for_overwrite<char[]>(size);
    bytes.size = 0;
    while (bytes.size < size) {
      DWORD count = 0;
      const auto piece = static_cast<DWORD>(std::min(size - bytes.size, kPiece));
      if (::ReadFile(input.Handle(), bytes.data.get() + bytes.size, piece, &count, nullptr) ==
          FALSE) {
        return Fault(::GetLastError());
      }
      if (count == 0) break;
      bytes.size += count;
    }
    return {};
  }

  FileStamp Stamp(const path& file) override {
    const OpenFile known(file, FILE_READ_ATTRIBUTES, kShareAll, OPEN_EXISTING, 0);
    return known ? StampOf(known.Handle()) : FileStamp{};
  }

  std::string WhyReadOnly(const path& file) override {
    const DWORD attributes = ::GetFileAttributesW(file.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
      return ReasonOf(ERROR_ACCESS_DENIED);
    }
    const OpenFile writable(file, GENERIC_WRITE, kShareAll, OPEN_EXISTING, 0);
    if (!writable) return ReasonOf(::GetLastError());
    const OpenFile folder(file.parent_path(), FILE_ADD_FILE, kShareAll, OPEN_EXISTING,
                          FILE_FLAG_BACKUP_SEMANTICS);
    return folder ? std::string() : ReasonOf(::GetLastError());
  }

  Locking Lock(const path& file, std::unique_ptr<FileLock>& lock) override {
    const auto name = Beside(file, L".lock");
    // Looked at before it is opened in a way that deletes it.
    if (!IsOurLock(name)) return Locking::Impossible;
    auto sidecar = std::make_unique<OpenFile>(
        name, GENERIC_READ | GENERIC_WRITE | DELETE, 0, OPEN_ALWAYS,
        FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT);
    if (!*sidecar) {
      return ::GetLastError() == ERROR_SHARING_VIOLATION ? Locking::HeldByAnother
                                                         : Locking::Impossible;
    }
    lock = std::make_unique<SidecarLock>(std::move(sidecar));
    return Locking::Taken;
  }

  FileFault WriteAside(const path& file, FileContent& content, path& aside,
                       FileStamp& stamp) override {
    const DWORD attributes = ::GetFileAttributesW(file.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
      if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return Fault(ERROR_ACCESS_DENIED);
      if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return Fault(ERROR_ACCESS_DENIED);
      // A new file under the old name would pass over the rights of the old one.
      const OpenFile writable(file, GENERIC_WRITE, kShareAll, OPEN_EXISTING, 0);
      if (!writable) return Fault(::GetLastError());
      if (::GetFileType(writable.Handle()) != FILE_TYPE_DISK) return NoPlainFile();
    }
    Rights rights(file);
    DWORD error = ERROR_SUCCESS;
    {
      const auto output = MakeAside(file, aside, rights);
      if (!*output) return Fault(::GetLastError());
      try {
        error = WriteAll(output->Handle(), content);
      } catch (...) {
        output->Close();
        Remove(aside);
        throw;
      }
    }
    if (error != ERROR_SUCCESS) {
      Remove(aside);
      return Fault(error);
    }
    stamp = Stamp(aside);
    return {};
  }

  FileFault PutInPlace(const path& aside, const path& file, FileStamp& stamp) override {
    const bool wasThere = ::GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
    if (TakePlace(aside, file, wasThere)) {
      stamp = Stamp(file);
      return {};
    }
    const DWORD error = ::GetLastError();
    // Where the old file is gone, what was written aside is the only copy.
    if (!wasThere || ::GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES) Remove(aside);
    return Fault(error);
  }

  Copying KeepCopy(const path& from, const path& to, FileFault& fault) override {
    FileBytes bytes;
    FileStamp stamp;
    fault = Read(from, kStoreLimit, bytes, stamp);
    if (!fault.Empty()) return Copying::Failed;
    Rights rights(from);
    DWORD error = ERROR_SUCCESS;
    {
      const auto output = MakeFile(to, rights);
      if (!*output) {
        error = ::GetLastError();
        fault = Fault(error);
        return error == ERROR_FILE_EXISTS ? Copying::NameTaken : Copying::Failed;
      }
      WholeContent content(bytes.View());
      error = WriteAll(output->Handle(), content);
    }
    // A copy that may not be written could not be taken back where the file cannot be replaced.
    const DWORD attributes = ::GetFileAttributesW(to.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
      ::SetFileAttributesW(to.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
    }
    if (error == ERROR_SUCCESS) return Copying::Done;
    fault = Fault(error);
    Remove(to);
    return Copying::Failed;
  }

  void Remove(const path& file) override { ::DeleteFileW(file.c_str()); }

 private:
  /// A new file of this name: never one that is there, nor what a link names.
  static std::unique_ptr<OpenFile> MakeFile(const path& file, Rights& rights) {
    return std::make_unique<OpenFile>(file, GENERIC_WRITE, 0, CREATE_NEW,
                                      FILE_FLAG_OPEN_REPARSE_POINT, rights.Get());
  }

  /// A name of its own beside the file: what a run that was killed left, or somebody else put
  /// there, stays as it is. Not open where there can be none, the last error saying why.
  static std::unique_ptr<OpenFile> MakeAside(const path& file, path& aside, Rights& rights) {
    constexpr int kNames = 100;
    const auto process = L"." + std::to_wstring(::GetCurrentProcessId());
    for (int number = 0;; ++number) {
      aside = Beside(file, process + (number > 0 ? L"-" + std::to_wstring(number) : L"") + L".tmp");
      auto output = MakeFile(aside, rights);
      if (*output || ::GetLastError() != ERROR_FILE_EXISTS || number == kNames) return output;
    }
  }

  /// ReplaceFile keeps the owner, the rights and the dates of the old file; not every file system
  /// has it.
  static bool TakePlace(const path& aside, const path& file, bool wasThere) {
    if (wasThere && ::ReplaceFileW(file.c_str(), aside.c_str(), nullptr,
                                   REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != FALSE) {
      return true;
    }
    return ::MoveFileExW(aside.c_str(), file.c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
  }
};

}  // namespace

bool IsLink(const path& file) {
  const DWORD attributes = ::GetFileAttributesW(file.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

void MakeOwnFolder(const path& folder) { std::filesystem::create_directories(folder); }

std::unique_ptr<HostFiles> MakeHostFiles() { return std::make_unique<Win32Files>(); }

}  // namespace morvelle
