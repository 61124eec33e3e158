#include "platform/registry_regfile.h"

#include <string_view>
#include <utility>
#include <vector>

#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "platform/reg_file_reader.h"
#include "platform/reg_file_text.h"
#include "platform/reg_file_writer.h"
#include "platform/tree_store.h"

namespace morvelle {

namespace {

class RegFileStore final : public TreeStore {
 public:
  RegFileStore(std::unique_ptr<EditedFile> file, const RegFileText& text)
      : file_(std::move(file)), format_(text.format) {
    ReadRegText(text.body, format_.version, Tree());
    UseRoot();
  }

  void GiveKeyWhole(std::string_view path) override { wholeKeys_.emplace_back(path); }

 protected:
  CommitOutcome WriteOut(bool overwriteChanged, std::string& error) override {
    for (const auto& path : wholeKeys_) {
      if (RegistryKey* key = KeyAt(path)) key->replaced = true;
    }
    RegFileContent content(Tree(), format_);
    return file_->Replace(content, overwriteChanged, error);
  }

 private:
  std::unique_ptr<EditedFile> file_;
  RegFileFormat format_;
  std::vector<std::string> wholeKeys_;
};

}  // namespace

OpenedStore OpenRegFile(const std::filesystem::path& path, std::shared_ptr<HostFiles> files,
                        EditedFile::Clock now) {
  OpenedStore opened;
  FileBytes bytes;
  auto file = EditedFile::Open(path, std::move(files), std::move(now), bytes, opened.error);
  if (file == nullptr) return opened;
  RegFileText text;
  if (!DecodeRegFile(bytes.View(), text)) {
    opened.error = "Le fichier « "_cp;
    opened.error += PathText(path);
    opened.error +=
        " » ne peut être ouvert : ce n'est pas un fichier de registre (son en-tête n'est ni « "
        "REGEDIT4 » ni « Windows Registry Editor Version 5.00 »)"_cp;
    return opened;
  }
  opened.store = std::make_unique<RegFileStore>(std::move(file), text);
  return opened;
}

}  // namespace morvelle
