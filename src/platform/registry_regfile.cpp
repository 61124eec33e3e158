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
      : file_(std::move(file)), format_(text.format), size_(text.body.size()) {
    ReadRegText(text.body, format_.version, Tree());
    UseRoot();
  }

  void GiveKeyWhole(std::string_view path) override { wholeKeys_.emplace_back(path); }

 protected:
  CommitOutcome WriteOut(bool overwriteChanged, std::string& error) override {
    for (const auto& path : wholeKeys_) {
      if (RegistryKey* key = KeyAt(path)) key->replaced = true;
    }
    RegFileBytes bytes(FormatRegText(Tree(), format_, size_ + Tree().Growth(), std::move(buffer_)),
                       format_);
    const auto outcome = file_->Holds(bytes.View())
                             ? CommitOutcome::Done
                             : file_->Replace(bytes.View(), overwriteChanged, error);
    buffer_ = bytes.TakeText();
    if (!buffer_.empty()) size_ = buffer_.size();
    return outcome;
  }

 private:
  std::unique_ptr<EditedFile> file_;
  RegFileFormat format_;
  std::size_t size_;  ///< Characters of the file as it was last read or written.
  /// Memory of the last text: a fresh one of tens of megabytes costs as much as filling it.
  std::u16string buffer_;
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
