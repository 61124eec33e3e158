#include "platform/hive_reader.h"

#include <hivex.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "app/messages/text.h"
#include "disk/host_files.h"
#include "platform/hive_cells.h"
#include "platform/memory_guard.h"

namespace morvelle {

namespace {

struct FreeDeleter {
  void operator()(void* memory) const { std::free(memory); }  // NOLINT
};
template <typename Type>
using Allocated = std::unique_ptr<Type, FreeDeleter>;

/// hivex opens files only: these bytes under a name that lasts as long as the object.
class BytesAsFile {
 public:
  explicit BytesAsFile(std::string_view bytes) : handle_(::memfd_create("hive", MFD_CLOEXEC)) {
    // No limit of ours counts what a file in memory takes.
    const auto left = MemoryLeft();
    const bool fits = left == 0 || bytes.size() <= left;
    while (fits && handle_ >= 0 && !bytes.empty()) {
      const auto count = ::write(handle_, bytes.data(), bytes.size());
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) break;
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    if (handle_ < 0 || !bytes.empty()) {
      Close();
      throw HiveError(kNoMemory);
    }
  }
  BytesAsFile(const BytesAsFile&) = delete;
  BytesAsFile& operator=(const BytesAsFile&) = delete;
  ~BytesAsFile() { Close(); }
  [[nodiscard]] std::string Name() const { return "/proc/self/fd/" + std::to_string(handle_); }

 private:
  void Close() const {
    if (handle_ >= 0) ::close(handle_);
  }
  int handle_;
};

/// What hivex does not look at.
void CheckHead(std::string_view bytes) {
  if (bytes.starts_with("CREG")) {
    throw HiveError(
        "c'est une ruche de Windows 95, 98 ou Me, que Morvelle ne sait pas modifier ; exportez-la "
        "en fichier .reg"_cp);
  }
  if (!bytes.starts_with("regf")) throw HiveError("ce n'est pas une ruche du registre");
  const bool hasFileType = bytes.size() >= hive::kFileType + sizeof(std::uint32_t);
  if (hasFileType && HiveNumber(bytes, hive::kFileType) != 0) {
    throw HiveError(
        "c'est le journal d'une ruche (.LOG)\u00A0; ouvrez la ruche elle-même, NTUSER.DAT"_cp);
  }
  if (bytes.size() < std::size_t{2} * hive::kBlock) throw HiveError("il est incomplet");
  if (HiveNumber(bytes, hive::kChecksum) != HiveChecksum(bytes)) {
    throw HiveError("il est endommagé (la somme de contrôle de son en-tête est fausse)"_cp);
  }
  if (HiveNumber(bytes, hive::kMajor) != 1) {
    throw HiveError("ce n'est pas une ruche du registre d'une version connue");
  }
  if (HiveNumber(bytes, hive::kSequence1) != HiveNumber(bytes, hive::kSequence2)) {
    throw HiveError(
        "Windows n'avait pas fini de l'écrire\u00A0; copiez-le avec les fichiers "
        "NTUSER.DAT.LOG* de son dossier, chargez puis déchargez la copie sous un Windows "
        "quelconque (reg load, reg unload), et ouvrez-la ensuite"_cp);
  }
}

class Reader {
 public:
  Reader(std::string_view bytes, RegistryTree& tree, HiveOrigins* origins)
      : cells_(bytes), tree_(tree), origins_(origins), seen_(bytes.size() / kCellUnit + 1) {
    const BytesAsFile file(bytes);
    hive_.reset(hivex_open(file.Name().c_str(), 0));
    if (hive_ == nullptr) {
      throw HiveError(errno == ENOMEM ? kNoMemory : "il est endommagé"_cp);
    }
  }

  void Read(RegistryKey& root) {
    const hive_node_h node = hivex_root(hive_.get());
    if (node == 0) Damaged(root);
    ReadKey(node, root, 0);
  }

 private:
  static constexpr std::size_t kCellUnit = 8;

  [[noreturn]] static void Damaged(const RegistryKey& key) {
    std::string message;
    message += "il est endommagé"_cp;
    const auto path = FromUtf16Lossy(RegistryTree::PathOf(key));
    if (const auto at = path.find('\\'); at != std::string::npos) {
      message += " (dans la clef " + path.substr(at + 1) + ")";
    }
    throw HiveError(message);
  }

  void ReadKey(hive_node_h node, RegistryKey& key, std::size_t level) {
    // A damaged hive may hold a key within itself.
    if (level > RegistryTree::kDeepestLevel || seen_[node / kCellUnit]) Damaged(key);
    seen_[node / kCellUnit] = true;
    tree_.ListAtEnd(key);
    ReadValues(node, key);
    if (origins_ != nullptr)
      origins_->emplace(&key, HiveOrigin{CellOf(node), key.name, key.entries});
    const Allocated<hive_node_h[]> subkeys(hivex_node_children(hive_.get(), node));
    if (subkeys == nullptr) Damaged(key);
    for (std::size_t i = 0; subkeys[i] != 0; ++i) {
      const auto name = cells_.KeyName(CellOf(subkeys[i]));
      if (name.empty() || RegistryTree::Subkey(key, name) != nullptr) Damaged(key);
      auto& subkey = tree_.AddSubkey(key, name, RegistryTree::Placing::Nowhere);
      ReadKey(subkeys[i], subkey, level + 1);
    }
  }

  void ReadValues(hive_node_h node, RegistryKey& key) {
    const Allocated<hive_value_h[]> values(hivex_node_values(hive_.get(), node));
    if (values == nullptr) Damaged(key);
    for (std::size_t i = 0; values[i] != 0; ++i) {
      hive_type kind{};
      std::size_t size = 0;
      const Allocated<char> data(hivex_value_value(hive_.get(), values[i], &kind, &size));
      if (data == nullptr) Damaged(key);
      const auto cell = CellOf(values[i]);
      key.entries.push_back({tree_.Names().Intern(cells_.ValueName(cell)),
                             cells_.Number(cell, hive::kValueKind), RegistryEntry::Role::Value,
                             std::string(data.get(), size)});
    }
  }

  /// hivex's handles are offsets in the file.
  static std::uint32_t CellOf(std::size_t handle) {
    return static_cast<std::uint32_t>(handle - hive::kBlock);
  }

  struct Closer {
    void operator()(hive_h* hive) const { hivex_close(hive); }
  };
  HiveCells cells_;
  RegistryTree& tree_;
  HiveOrigins* origins_;
  std::vector<bool> seen_;
  std::unique_ptr<hive_h, Closer> hive_;
};

}  // namespace

void ReadHive(std::string_view bytes, RegistryTree& tree, RegistryKey& root, HiveOrigins* origins) {
  CheckHead(bytes);
  Reader(bytes, tree, origins).Read(root);
}

}  // namespace morvelle
