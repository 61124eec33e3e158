#include "platform/registry_hive.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "platform/hive_cells.h"
#include "platform/hive_reader.h"
#include "platform/hive_writer.h"
#include "platform/tree_store.h"

namespace morvelle {

namespace {

/// Hundreds of nanoseconds since 1601, as Windows counts.
std::uint64_t FileTime(std::chrono::system_clock::time_point moment) {
  constexpr std::int64_t kFrom1601To1970 = 116'444'736'000'000'000;
  using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
  const auto ticks = std::chrono::duration_cast<Ticks>(moment.time_since_epoch()).count();
  return static_cast<std::uint64_t>(ticks + kFrom1601To1970);
}

bool SameContent(const RegistryKey& left, const RegistryKey& right) {
  return std::equal(left.entries.begin(), left.entries.end(), right.entries.begin(),
                    right.entries.end(),
                    [](const RegistryEntry& one, const RegistryEntry& other) {
                      return one.name->text == other.name->text && one.kind == other.kind &&
                             one.data == other.data;
                    }) &&
         std::equal(left.subkeys.begin(), left.subkeys.end(), right.subkeys.begin(),
                    right.subkeys.end(), [](const auto& one, const auto& other) {
                      return one->name->text == other->name->text && SameContent(*one, *other);
                    });
}

void CollectKeys(const RegistryKey& key, std::unordered_set<const RegistryKey*>& keys) {
  keys.insert(&key);
  for (const auto& subkey : key.subkeys) CollectKeys(*subkey, keys);
}

class HiveStore final : public TreeStore {
 public:
  HiveStore(std::unique_ptr<EditedFile> file, FileBytes base, EditedFile::Clock now)
      : file_(std::move(file)), base_(std::move(base)), now_(std::move(now)) {
    UseRoot();
    ReadHive(base_.View(), Tree(), *KeyAt({}), &origins_);
  }

  [[nodiscard]] std::string ReadOnlyReason() const override { return file_->ReadOnlyReason(); }

 protected:
  bool Read(std::string& error) override {
    origins_.clear();
    error = file_->ReadAgain(base_);
    if (!error.empty()) return false;
    UseRoot();
    try {
      ReadHive(base_.View(), Tree(), *KeyAt({}), &origins_);
    } catch (const HiveError& failure) {
      error = FileFailure(file_->Path(), "ne peut être ouvert"_cp, failure.what());
    }
    return error.empty();
  }
  CommitOutcome WriteOut(bool overwriteChanged, std::string& error) override {
    std::string bytes;
    try {
      bytes = WriteHive(base_.View(), *KeyAt({}), origins_, FileTime(now_()));
      CheckReadsBack(bytes);
    } catch (const HiveError& failure) {
      error = FileFailure(file_->Path(), "ne peut être enregistré"_cp, failure.what());
      return CommitOutcome::Failed;
    }
    WholeContent content(bytes);
    const auto outcome = file_->Replace(content, overwriteChanged, error);
    if (outcome == CommitOutcome::Done) ForgetDeletedKeys();
    return outcome;
  }

 private:
  /// The writer is ours, the reader is not.
  void CheckReadsBack(std::string_view bytes) {
    RegistryTree found;
    RegistryKey& root =
        found.AddSubkey(found.Top(), KeyAt({})->name->text, RegistryTree::Placing::Nowhere);
    ReadHive(bytes, found, root, nullptr);
    if (!SameContent(root, *KeyAt({}))) {
      throw HiveError("ce qui serait écrit ne se relit pas comme il faut"_cp);
    }
  }

  /// A deleted key's memory may serve a new key, which must not pass for the deleted one.
  void ForgetDeletedKeys() {
    std::unordered_set<const RegistryKey*> present;
    CollectKeys(*KeyAt({}), present);
    std::erase_if(origins_, [&](const auto& known) { return present.count(known.first) == 0; });
  }

  std::unique_ptr<EditedFile> file_;
  FileBytes base_;  ///< The file as it was opened.
  EditedFile::Clock now_;
  HiveOrigins origins_;
};

}  // namespace

bool IsHive(const std::filesystem::path& path) {
  // A pipe would hold the program up.
  if (std::error_code error; !std::filesystem::is_regular_file(path, error)) return false;
  std::ifstream file(path, std::ios::binary);
  std::array<char, 4> start{};
  file.read(start.data(), start.size());
  const std::string_view text(start.data(), static_cast<std::size_t>(file.gcount()));
  return text == "regf" || text == "CREG";
}

OpenedStore OpenHive(const std::filesystem::path& path, std::shared_ptr<HostFiles> files,
                     EditedFile::Clock now) {
  OpenedStore opened;
  FileBytes bytes;
  auto file = EditedFile::Open(path, std::move(files), now, bytes, opened.error);
  if (file == nullptr) return opened;
  try {
    opened.store = std::make_unique<HiveStore>(std::move(file), std::move(bytes), std::move(now));
  } catch (const HiveError& failure) {
    opened.error = FileFailure(path, "ne peut être ouvert"_cp, failure.what());
  }
  return opened;
}

}  // namespace morvelle
