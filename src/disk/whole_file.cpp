#include "disk/whole_file.h"

#include <memory>
#include <system_error>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/dated_copy.h"

namespace morvelle {

namespace {

using std::filesystem::path;

/// The file itself behind links, with the content written beside it.
struct Aside {
  std::unique_ptr<HostFiles> files = MakeHostFiles();
  path target;
  path name;
  FileStamp stamp;
};

void Check(const FileFault& fault) {
  if (!fault.Empty()) throw RuntimeError(fault.number);
}

Aside WriteAside(const path& file, std::string_view bytes) {
  Aside aside;
  aside.target = aside.files->Resolve(file);
  WholeContent content(bytes);
  Check(aside.files->WriteAside(aside.target, content, aside.name, aside.stamp));
  return aside;
}

}  // namespace

std::optional<std::string> ReadWholeFile(const path& file, std::uint64_t limit, FileFault* fault) {
  FileBytes bytes;
  FileStamp stamp;
  auto found = MakeHostFiles()->Read(file, limit, bytes, stamp);
  const bool isRead = found.Empty();
  if (fault != nullptr) *fault = std::move(found);
  if (!isRead) return std::nullopt;
  return std::string(bytes.View());
}

bool TellTooLarge(const Messages& messages, const path& file, const FileFault& fault) {
  if (fault.number != ErrorNumber::OutOfMemory) return false;
  messages.Msg(FileFailure(file, "ne peut être ouvert"_cp, fault.reason), kBoxExclamation);
  return true;
}

void WriteWholeFile(const path& file, std::string_view bytes) {
  auto aside = WriteAside(file, bytes);
  Check(aside.files->PutInPlace(aside.name, aside.target, aside.stamp));
}

void WriteOverLink(const path& file, std::string_view bytes) {
  if (IsLink(file)) MakeHostFiles()->Remove(file);
  WriteWholeFile(file, bytes);
}

void ReplaceWholeFile(const path& file, std::string_view bytes,
                      std::chrono::system_clock::time_point now) {
  auto aside = WriteAside(file, bytes);
  auto& files = *aside.files;
  Check(files.Stamp(aside.target).there
            ? PutInPlaceKeepingCopy(files, aside.name, aside.target, now, aside.stamp)
            : files.PutInPlace(aside.name, aside.target, aside.stamp));
}

bool IsReadOnly(const path& file) {
  using std::filesystem::perms;
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  return std::filesystem::exists(status) &&
         (status.permissions() & perms::owner_write) == perms::none;
}

}  // namespace morvelle
