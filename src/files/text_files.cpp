#include "files/text_files.h"

#include <algorithm>
#include <fstream>
#include <system_error>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"

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

/// A name in the same folder that nothing has.
path NameBeside(const path& file) {
  for (int number = 0;; ++number) {
    auto name = file;
    name += ".nouveau";
    if (number > 0) name += std::to_string(number);
    if (std::error_code ignored; !std::filesystem::exists(symlink_status(name, ignored))) {
      return name;
    }
  }
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
  const auto beside = NameBeside(target);
  try {
    WriteDirectly(beside, bytes);
    if (std::filesystem::exists(before)) {
      std::filesystem::permissions(beside, before.permissions(), error);
    }
    std::filesystem::rename(beside, target);
  } catch (...) {
    std::filesystem::remove(beside, error);
    throw;
  }
}

bool IsReadOnly(const path& file) {
  using std::filesystem::perms;
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  return std::filesystem::exists(status) &&
         (status.permissions() & perms::owner_write) == perms::none;
}

std::string FileTitle(const path& path) { return PathText(path.filename()); }

path ToPath(std::string_view name) { return {ToUtf16(name)}; }

std::string SafeFileName(std::string_view name) {
  constexpr std::string_view kRefused = "\\/:*?<>|";
  std::string safe(name);
  for (auto& character : safe) {
    const auto unit = CodeUnitOf(character);
    if (character == '"') {
      character = '\'';
    } else if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0) ||
               kRefused.find(character) != std::string_view::npos) {
      character = '-';
    }
  }
  return safe;
}

std::string_view WindowsFileName(std::string_view path) {
  const auto slash = path.rfind('\\');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

}  // namespace morvelle
