#include "disk/whole_file.h"

#include <fstream>
#include <system_error>

#include "app/messages/errors.h"
#include "disk/host_files.h"

namespace morvelle {

namespace {

using std::filesystem::path;

/// Why a file cannot be opened for writing: the stream does not say.
ErrorNumber WhyNotOpened(const path& file) {
  std::error_code ignored;
  const auto folder = file.parent_path();
  if (!folder.empty() && !std::filesystem::is_directory(folder, ignored)) {
    return ErrorNumber::PathNotFound;
  }
  return ErrorNumber::PermissionDenied;
}

void WriteDirectly(const path& file, std::string_view bytes) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (!out) throw RuntimeError(WhyNotOpened(file));
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw RuntimeError(ErrorNumber::DiskFull);
}

}  // namespace

std::optional<std::string> ReadWholeFile(const path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
  const auto size = std::filesystem::file_size(file, error);
  std::string bytes;
  if (error || size > bytes.max_size()) return std::nullopt;
  std::ifstream in(file, std::ios::binary);
  bytes.resize(static_cast<std::size_t>(size));
  in.read(bytes.data(), static_cast<std::streamsize>(size));
  if (!in) return std::nullopt;
  return bytes;
}

void WriteWholeFile(const path& file, std::string_view bytes) {
  std::error_code error;
  auto target = std::filesystem::canonical(file, error);
  if (error) target = file;
  const auto before = std::filesystem::status(target, error);
  if (std::filesystem::exists(before) && !std::filesystem::is_regular_file(before)) {
    WriteDirectly(target, bytes);
    return;
  }
  const auto files = MakeHostFiles();
  WholeContent content(bytes);
  path aside;
  FileStamp stamp;
  auto fault = files->WriteAside(target, content, aside, stamp);
  if (fault.Empty()) fault = files->PutInPlace(aside, target, stamp);
  if (!fault.Empty()) throw RuntimeError(fault.number);
}

bool IsReadOnly(const path& file) {
  using std::filesystem::perms;
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  return std::filesystem::exists(status) &&
         (status.permissions() & perms::owner_write) == perms::none;
}

}  // namespace morvelle
