#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/text.h"

namespace morvelle {

/// What tells a file from the same file after another program wrote it.
struct FileStamp {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t size = 0;       ///< Bytes.
  std::int64_t modifiedNs = 0;  ///< Nanoseconds since 1970.
  bool there = false;

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// The bytes of a file that was read whole.
struct FileBytes {
  std::unique_ptr<char[]> data;
  std::size_t size = 0;
  [[nodiscard]] std::string_view View() const { return {data.get(), size}; }
};

/// The bytes of a file to be written, in pieces.
class FileContent {
 public:
  FileContent() = default;
  FileContent(const FileContent&) = delete;
  FileContent& operator=(const FileContent&) = delete;
  virtual ~FileContent() = default;

  /// The next piece; empty behind the last one. It is good until the call after the next, so that
  /// one piece can be made while the one before is being written.
  virtual std::string_view Next() = 0;
};

/// Bytes that are there already, as one piece.
class WholeContent final : public FileContent {
 public:
  explicit WholeContent(std::string_view bytes) : bytes_(bytes) {}
  std::string_view Next() override { return std::exchange(bytes_, {}); }

 private:
  std::string_view bytes_;
};

/// Held while a file is being edited; letting go of it unlocks the file.
class FileLock {
 public:
  FileLock() = default;
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  virtual ~FileLock() = default;
};

/// The most bytes that a file may have to be read at all; who writes one of this size has nothing
/// good in mind, or took the wrong file.
inline constexpr std::uint64_t kSmallFileLimit = std::uint64_t{1} << 20U;  ///< Settings, words.
inline constexpr std::uint64_t kTextFileLimit = std::uint64_t{64} << 20U;  ///< Rules, books.
inline constexpr std::uint64_t kStoreLimit = std::uint64_t{1} << 30U;      ///< A whole registry.

/// Why the system refused something; empty when it did not.
struct FileFault {
  std::string reason;  ///< French and Windows-1252, without capital or full stop.
  ErrorNumber number = ErrorNumber::DeviceError;  ///< The run-time error for it.
  [[nodiscard]] bool Empty() const { return reason.empty(); }
};

/// Why a file within its limit cannot be read all the same.
inline constexpr std::string_view kNoMemory = "la mémoire ne suffit pas"_cp;

/// That a file has more bytes than `limit`.
FileFault TooLarge(std::uint64_t limit);

/// What the program asks of the file system where a file must not be lost.
class HostFiles {
 public:
  HostFiles() = default;
  HostFiles(const HostFiles&) = delete;
  HostFiles& operator=(const HostFiles&) = delete;
  virtual ~HostFiles() = default;

  /// The file itself behind links.
  [[nodiscard]] virtual std::filesystem::path Resolve(const std::filesystem::path& path) = 0;
  /// Reads a plain file of at most `limit` bytes; another is refused without waiting, and one that
  /// is too large before a byte of it is read.
  virtual FileFault Read(const std::filesystem::path& path, std::uint64_t limit, FileBytes& bytes,
                         FileStamp& stamp) = 0;
  [[nodiscard]] virtual FileStamp Stamp(const std::filesystem::path& path) = 0;

  /// Why WriteAside would fail by now: no right to write the file, or to make one beside it.
  [[nodiscard]] virtual std::string WhyReadOnly(const std::filesystem::path& path) = 0;

  enum class Locking {
    Taken,
    HeldByAnother,
    Impossible,  ///< The folder cannot be written; nor can the file then.
  };
  /// Keeps other editors off the file.
  virtual Locking Lock(const std::filesystem::path& path, std::unique_ptr<FileLock>& lock) = 0;

  /// Writes the content beside the file, down to the disk, with the file's rights and owner where
  /// that can be; `aside` is then its name. A file without right to write is refused. Nothing stays
  /// of what fails.
  virtual FileFault WriteAside(const std::filesystem::path& path, FileContent& content,
                               std::filesystem::path& aside, FileStamp& stamp) = 0;
  /// Puts what was written aside in the place of the file, whole or not at all; `stamp`, which
  /// WriteAside gave, becomes the new file's. What fails takes the aside file with it, unless that
  /// is all that is left of the file.
  virtual FileFault PutInPlace(const std::filesystem::path& aside,
                               const std::filesystem::path& path, FileStamp& stamp) = 0;

  enum class Copying { Done, NameTaken, Failed };
  /// Leaves the present content of `from` under the name `to`, which must be free. To be followed
  /// by PutInPlace: until then both names may stand for the same file.
  virtual Copying KeepCopy(const std::filesystem::path& from, const std::filesystem::path& to,
                           FileFault& fault) = 0;
  virtual void Remove(const std::filesystem::path& path) = 0;
};

/// Whether the name is that of a link, whatever it leads to.
bool IsLink(const std::filesystem::path& file);

/// Makes the folder, and those above it that are missing, for the user alone. Throws an error of
/// the system where that fails.
void MakeOwnFolder(const std::filesystem::path& folder);

/// The file system of this machine.
std::unique_ptr<HostFiles> MakeHostFiles();

}  // namespace morvelle
