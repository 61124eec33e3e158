#include "disk/dated_copy.h"

#include <array>
#include <ctime>
#include <string>

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

/// `copy` is then the name of the copy.
FileFault KeepDatedCopy(HostFiles& files, const std::filesystem::path& file,
                        std::chrono::system_clock::time_point now, std::filesystem::path& copy) {
  const std::string date = DateText(now);
  for (int number = 1;; ++number) {
    std::filesystem::path name = file.stem();
    name += " (copie du " + date + (number > 1 ? " n" + std::to_string(number) : "") + ")";
    name += file.extension();
    copy = file.parent_path() / name;
    FileFault fault;
    const auto outcome = files.KeepCopy(file, copy, fault);
    if (outcome == HostFiles::Copying::Done) return {};
    if (outcome == HostFiles::Copying::Failed) return fault;
  }
}

}  // namespace

FileFault PutInPlaceKeepingCopy(HostFiles& files, const std::filesystem::path& aside,
                                const std::filesystem::path& file,
                                std::chrono::system_clock::time_point now, FileStamp& stamp) {
  std::filesystem::path copy;
  if (auto fault = KeepDatedCopy(files, file, now, copy); !fault.Empty()) {
    files.Remove(aside);
    return fault;
  }
  auto fault = files.PutInPlace(aside, file, stamp);
  if (!fault.Empty() && files.Stamp(file).there) files.Remove(copy);
  return fault;
}

}  // namespace morvelle
