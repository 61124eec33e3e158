#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "disk/host_files.h"
#include "ports/registry_store.h"

namespace morvelle {

/// The user's file behind a store, from its opening to its closing: no second editor, no
/// overwriting of what another program wrote, and a dated copy of what was there before this run's
/// first write.
class EditedFile {
 public:
  using Clock = std::function<std::chrono::system_clock::time_point()>;

  /// Null when the file cannot be opened; `error` is then the message, with file name and reason.
  static std::unique_ptr<EditedFile> Open(const std::filesystem::path& path,
                                          std::shared_ptr<HostFiles> files, Clock now,
                                          FileBytes& bytes, std::string& error);

  /// The file as it is now, which is then the one that Replace expects. Empty, or why it cannot be
  /// read.
  std::string ReadAgain(FileBytes& bytes);

  /// Why it cannot be written as things are, as a message; empty when it can.
  [[nodiscard]] std::string ReadOnlyReason() const;

  /// Puts the content in the place of the file; one that is the file's own changes nothing. On
  /// Failed and ChangedMeanwhile nothing was written and `error` is the message.
  CommitOutcome Replace(FileContent& content, bool overwriteChanged, std::string& error);

  /// The file itself, behind links.
  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  EditedFile(std::filesystem::path path, std::shared_ptr<HostFiles> files, Clock now)
      : path_(std::move(path)), files_(std::move(files)), now_(std::move(now)) {}

  CommitOutcome ChangedMeanwhile(std::string& error) const;
  /// With a dated copy of what was there, where it is asked for.
  CommitOutcome PutInPlace(const std::filesystem::path& aside, bool withCopy, FileStamp& written,
                           std::string& error);

  std::filesystem::path path_;
  std::shared_ptr<HostFiles> files_;
  Clock now_;
  std::unique_ptr<FileLock> lock_;
  FileStamp stamp_;
  bool copyKept_ = false;
};

}  // namespace morvelle
