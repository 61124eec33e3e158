#include "platform/edited_file.h"

#include <array>
#include <ctime>
#include <utility>

#include "app/messages/path_text.h"
#include "app/messages/text.h"

namespace morvelle {

namespace {

/// Local time, in a form that every file system takes and that sorts by age.
std::string DateText(std::chrono::system_clock::time_point moment) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
  std::tm local{};
  // The program has one thread; localtime is the one form that every system has.
  if (const std::tm* known = std::localtime(&seconds)) local = *known;  // NOLINT
  std::array<char, 32> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H-%M-%S", &local)};
}

}  // namespace

std::unique_ptr<EditedFile> EditedFile::Open(const std::filesystem::path& path,
                                             std::shared_ptr<HostFiles> files, Clock now,
                                             FileBytes& bytes, std::string& error) {
  auto real = files->Resolve(path);
  std::unique_ptr<EditedFile> file(
      new EditedFile(std::move(real), std::move(files), std::move(now)));
  if (!file->files_->Stamp(file->path_).there) {
    error = file->Failure("ne peut être ouvert"_cp, "il n'existe pas");
    return nullptr;
  }
  // Before reading, so that nobody writes in between.
  if (file->files_->Lock(file->path_, file->lock_) == HostFiles::Locking::HeldByAnother) {
    error = file->Failure("ne peut être ouvert"_cp, "il est déjà ouvert dans un autre éditeur"_cp);
    return nullptr;
  }
  const std::string reason = file->files_->Read(file->path_, bytes, file->stamp_);
  if (reason.empty()) return file;
  error = file->Failure("ne peut être ouvert"_cp, reason);
  return nullptr;
}

CommitOutcome EditedFile::Replace(std::string_view bytes, bool overwriteChanged,
                                  std::string& error) {
  const FileStamp present = files_->Stamp(path_);
  const bool changed = present != stamp_;
  if (changed && !overwriteChanged) {
    error = "Le fichier « "_cp;
    error += PathText(path_) + std::string(" » a été modifié par un autre programme"_cp);
    return CommitOutcome::ChangedMeanwhile;
  }
  std::filesystem::path copy;
  std::string reason;
  // What another program wrote is worth a copy of its own.
  if (present.there && (!copyKept_ || changed) && !KeepDatedCopy(copy, reason)) {
    error = Failure("ne peut être enregistré"_cp, reason);
    return CommitOutcome::Failed;
  }
  reason = files_->Replace(path_, bytes, stamp_);
  if (reason.empty()) {
    copyKept_ = true;
    return CommitOutcome::Done;
  }
  // Where the file itself is gone, the copy is all that is left of it.
  if (!copy.empty() && files_->Stamp(path_).there) files_->Remove(copy);
  error = Failure("ne peut être enregistré"_cp, reason);
  return CommitOutcome::Failed;
}

bool EditedFile::Holds(std::string_view bytes) const {
  if (stamp_.size != bytes.size() || files_->Stamp(path_) != stamp_) return false;
  FileBytes present;
  FileStamp stamp;
  return files_->Read(path_, present, stamp).empty() && present.View() == bytes;
}

bool EditedFile::KeepDatedCopy(std::filesystem::path& copy, std::string& reason) {
  const std::string date = DateText(now_());
  for (int number = 1;; ++number) {
    std::filesystem::path name = path_.stem();
    name += " (copie du " + date + (number > 1 ? " n" + std::to_string(number) : "") + ")";
    name += path_.extension();
    copy = path_.parent_path() / name;
    const auto outcome = files_->KeepCopy(path_, copy, reason);
    if (outcome == HostFiles::Copying::Done) return true;
    if (outcome == HostFiles::Copying::Failed) return false;
  }
}

std::string EditedFile::Failure(std::string_view what, std::string_view reason) const {
  std::string message;
  message += "Le fichier « "_cp;
  message += PathText(path_);
  message += " » "_cp;
  message += what;
  message += " : ";
  message += reason;
  return message;
}

}  // namespace morvelle
