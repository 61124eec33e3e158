#include "dbx/folder_store.h"

#include "app/messages/errors.h"
#include "fuzz/fuzzer.h"

namespace morvelle {

namespace {

/// A machine on which every Windows path is the input.
class OneFile final : public Environment {
 public:
  explicit OneFile(const InputFile& file) : path_(file.Path()) {}
  [[nodiscard]] std::filesystem::path ProgramFile() const override { return {}; }
  [[nodiscard]] std::filesystem::path UserFolder() const override { return {}; }
  [[nodiscard]] std::optional<std::string> Variable(const std::string&) const override {
    return std::nullopt;
  }
  [[nodiscard]] std::string GetFileVersion(const std::filesystem::path&) const override {
    return {};
  }
  [[nodiscard]] std::filesystem::path HostPath(const std::string&) const override { return path_; }
  [[nodiscard]] std::chrono::system_clock::time_point Now() const override { return {}; }
  void SetCurrentFolder(const std::filesystem::path&) override {}

 private:
  std::filesystem::path path_;
};

}  // namespace

void TryInput(std::string_view input) {
  const InputFile file(input);
  const OneFile machine(file);
  ClosedBoxes boxes;
  const std::string storeRoot = "C:\\Courrier";
  FolderStore store(boxes, machine, storeRoot);
  try {
    const auto value = store.ReadFolders();
    Demand(value == "False" || value.size() == 8 || FolderStore::IsGood(value),
           "the value is a mark, a mark and a folder, or False");
    Demand(store.FolderCount >= 0 && store.FolderCount <= 255, "a node names at most 255 folders");
  } catch (const ProgramEnd&) {
    // An unexpected error was shown: an end, but an orderly one.
    return;
  }
}

}  // namespace morvelle
