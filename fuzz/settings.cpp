#include "app/settings.h"

#include "fuzz/fuzzer.h"

namespace morvelle {

namespace {

/// A folder of this process, made once.
const std::filesystem::path& Folder() {
  static const std::filesystem::path kFolder = [] {
    std::string name = "/dev/shm/morvelle-settings-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp");
    return name + "/";
  }();
  return kFolder;
}

}  // namespace

void TryInput(std::string_view input) {
  const auto path = Folder() / "Morvelle.ini";
  {
    const InputFile file(input);
    std::filesystem::copy_file(file.Path(), path,
                               std::filesystem::copy_options::overwrite_existing);
  }
  ClosedBoxes boxes;
  Messages messages(boxes);
  Settings settings;
  settings.AppPath = Folder();
  SettingsFile file(messages, settings);
  file.Read();
  const auto book = settings.BookMode;
  const auto quiet = settings.QuietMode;
  file.Write();
  file.Read();
  Demand(settings.BookMode == book && settings.QuietMode == quiet,
         "settings that were written are read back");
  std::filesystem::remove(path);
}

}  // namespace morvelle
