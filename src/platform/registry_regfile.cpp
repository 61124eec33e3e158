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

std::string NoRegFile(const std::filesystem::path& path, std::string_view bytes) {
  std::string error;
  error += "Le fichier «\u00A0"_cp;
  error.append(PathText(path)).append("\u00A0» ne peut être ouvert\u00A0: "_cp);
  if (bytes.empty()) return error.append("il est vide");
  // Where hives are opened, they do not come here.
  if (bytes.starts_with("regf") || bytes.starts_with("CREG")) {
    return error.append(
        "c'est une ruche du registre, que Morvelle n'ouvre que sous Linux\u00A0; sous Windows, "
        "chargez-la dans l'éditeur du registre et exportez-la en fichier .reg"_cp);
  }
  return error.append(
      "ce n'est ni une ruche (NTUSER.DAT) ni un fichier de registre (son en-tête n'est ni "
      "«\u00A0REGEDIT4\u00A0» ni «\u00A0Windows Registry Editor Version 5.00\u00A0»)"_cp);
}

class RegFileStore final : public TreeStore {
 public:
  explicit RegFileStore(std::unique_ptr<EditedFile> file) : file_(std::move(file)) {}

  /// Reads the bytes of the file into the tree. Empty, or why it is none.
  std::string Take(std::string_view bytes) {
    RegFileText text;
    if (!DecodeRegFile(bytes, text)) return NoRegFile(file_->Path(), bytes);
    format_ = text.format;
    const auto end = ReadRegText(text.body, format_.version, Tree());
    UseRoot();
    const bool incomplete = end.incomplete || text.cut;
    exchange_ = {incomplete, incomplete || end.inPart, end.closed, {}};
    isMarked_ = end.inPart;
    if (end.lastKey != nullptr) exchange_.lastKey = PathBelowRoot(*end.lastKey);
    return {};
  }

  [[nodiscard]] std::optional<ExchangeFile> Exchange() const override { return exchange_; }
  void GiveKey(std::string_view path, Import how) override { givenKeys_.emplace_back(path, how); }

  [[nodiscard]] std::string ReadOnlyReason() const override { return file_->ReadOnlyReason(); }

 protected:
  bool Read(std::string& error) override {
    givenKeys_.clear();
    FileBytes bytes;
    error = file_->ReadAgain(bytes);
    if (error.empty()) error = Take(bytes.View());
    return error.empty();
  }
  CommitOutcome WriteOut(bool overwriteChanged, std::string& error) override {
    for (const auto& [path, how] : givenKeys_) PrepareImport(path, how);
    RegFileContent content(Tree(), format_);
    return file_->Replace(content, overwriteChanged, error);
  }

 private:
  void PrepareImport(std::string_view path, Import how) {
    RegistryKey* key = KeyAt(path);
    if (key == nullptr) return;
    if (how == Import::Replaces) {
      key->replaced = true;
      return;
    }
    RegistryTree::ForgetDeletions(*key);
    // The next run must know it too: what is written now has an end like any other.
    const auto* first = Tree().FirstPlace();
    const bool isThere = first->role == FilePlace::Role::Remark &&
                         static_cast<const FileLine*>(first)->text == kInPartRemark;
    if (!isMarked_ && !isThere) Tree().AddRemarkInFront(kInPartRemark);
  }

  std::unique_ptr<EditedFile> file_;
  RegFileFormat format_;
  ExchangeFile exchange_;
  bool isMarked_ = false;  ///< The file held the remark when it was read.
  std::vector<std::pair<std::string, Import>> givenKeys_;
};

}  // namespace

OpenedStore OpenRegFile(const std::filesystem::path& path, std::shared_ptr<HostFiles> files,
                        EditedFile::Clock now) {
  OpenedStore opened;
  FileBytes bytes;
  auto file = EditedFile::Open(path, std::move(files), std::move(now), bytes, opened.error);
  if (file == nullptr) return opened;
  auto store = std::make_unique<RegFileStore>(std::move(file));
  opened.error = store->Take(bytes.View());
  if (opened.error.empty()) opened.store = std::move(store);
  return opened;
}

}  // namespace morvelle
