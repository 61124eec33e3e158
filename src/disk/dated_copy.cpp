#include "disk/dated_copy.h"

#include <string>

#include "disk/dates.h"

namespace morvelle {

namespace {

/// `copy` is then the name of the copy.
FileFault KeepDatedCopy(HostFiles& files, const std::filesystem::path& file,
                        std::chrono::system_clock::time_point now, std::filesystem::path& copy) {
  const std::string date = DateAndTime(now);
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
