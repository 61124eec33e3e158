#include "disk/edited_file.h"

#include <algorithm>
#include <fstream>
#include <utility>
#include <vector>

#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/dated_copy.h"

namespace morvelle {

namespace {

/// Whether two files hold the same bytes.
bool SameBytes(const std::filesystem::path& left, const std::filesystem::path& right) {
  constexpr std::size_t kPiece = std::size_t{1} << 16U;
  std::ifstream one(left, std::ios::binary);
  std::ifstream other(right, std::ios::binary);
  std::vector<char> mine(kPiece);
  std::vector<char> theirs(kPiece);
  while (one && other) {
    one.read(mine.data(), kPiece);
    other.read(theirs.data(), kPiece);
    const auto count = one.gcount();
    if (count != other.gcount() ||
        !std::equal(mine.begin(), mine.begin() + count, theirs.begin())) {
      return false;
    }
  }
  return one.eof() && other.eof();
}

}  // namespace

std::unique_ptr<EditedFile> EditedFile::Open(const std::filesystem::path& path,
                                             std::shared_ptr<HostFiles> files, Clock now,
                                             FileBytes& bytes, std::string& error) {
  auto real = files->Resolve(path);
  std::unique_ptr<EditedFile> file(
      new EditedFile(std::move(real), std::move(files), std::move(now)));
  if (!file->files_->Stamp(file->path_).there) {
    error = FileFailure(file->path_, "ne peut être ouvert"_cp, "il n'existe pas");
    return nullptr;
  }
  // Before reading, so that nobody writes in between.
  if (file->files_->Lock(file->path_, file->lock_) == HostFiles::Locking::HeldByAnother) {
    error = FileFailure(file->path_, "ne peut être ouvert"_cp,
                        "il est déjà ouvert dans un autre éditeur"_cp);
    return nullptr;
  }
  error = file->ReadAgain(bytes);
  return error.empty() ? std::move(file) : nullptr;
}

std::string EditedFile::ReadAgain(FileBytes& bytes) {
  const auto reason = files_->Read(path_, kStoreLimit, bytes, stamp_).reason;
  return reason.empty() ? reason : FileFailure(path_, "ne peut être ouvert"_cp, reason);
}

std::string EditedFile::ReadOnlyReason() const {
  const std::string reason = files_->WhyReadOnly(path_);
  return reason.empty() ? reason : FileFailure(path_, "ne pourra être enregistré"_cp, reason);
}

CommitOutcome EditedFile::Replace(FileContent& content, bool overwriteChanged, std::string& error) {
  FileStamp present = files_->Stamp(path_);
  if (present != stamp_ && !overwriteChanged) return ChangedMeanwhile(error);
  std::filesystem::path aside;
  FileStamp written;
  const auto reason = files_->WriteAside(path_, content, aside, written).reason;
  if (!reason.empty()) {
    error = FileFailure(path_, "ne peut être enregistré"_cp, reason);
    return CommitOutcome::Failed;
  }
  // Writing takes its time.
  present = files_->Stamp(path_);
  const bool changed = present != stamp_;
  if (changed && !overwriteChanged) {
    files_->Remove(aside);
    return ChangedMeanwhile(error);
  }
  if (!changed && written.size == stamp_.size && SameBytes(aside, path_)) {
    files_->Remove(aside);
    return CommitOutcome::Done;
  }
  // What another program wrote is worth a copy of its own.
  return PutInPlace(aside, present.there && (!copyKept_ || changed), written, error);
}

CommitOutcome EditedFile::ChangedMeanwhile(std::string& error) const {
  error = "Le fichier « "_cp;
  error += PathText(path_) + std::string(" » a été modifié par un autre programme"_cp);
  return CommitOutcome::ChangedMeanwhile;
}

CommitOutcome EditedFile::PutInPlace(const std::filesystem::path& aside, bool withCopy,
                                     FileStamp& written, std::string& error) {
  const auto fault = withCopy ? PutInPlaceKeepingCopy(*files_, aside, path_, now_(), written)
                              : files_->PutInPlace(aside, path_, written);
  if (!fault.Empty()) {
    error = FileFailure(path_, "ne peut être enregistré"_cp, fault.reason);
    return CommitOutcome::Failed;
  }
  stamp_ = written;
  copyKept_ = true;
  return CommitOutcome::Done;
}

}  // namespace morvelle
