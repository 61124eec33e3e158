#include "files/signatures.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "core/command_batch.h"
#include "disk/whole_file.h"
#include "files/dates.h"
#include "files/file_names.h"

namespace morvelle {

namespace {

using std::filesystem::path;

constexpr std::string_view kSearchTitle = "Recherche d'enregistrements dans la base de registre";
constexpr std::string_view kNoSignatures = "Il n'existe pas d'enregistrement des signatures !";
constexpr std::string_view kTextMissing = "Le fichier texte de signature est absent";
constexpr std::string_view kAskReplace =
    "Le nom de cette signature existe déjà,\rDésirez-vous remplacer la signature existante ?"_cp;
constexpr std::string_view kNoFreeName =
    "Cette identité a déjà trop de signatures : celle-ci n'a pas été importée"_cp;
constexpr std::string_view kFirstSubkey = "00000000";
/// Names that are tried for a new signature.
constexpr int kCandidates = 12;

bool IsBlank(std::string_view text) { return text.find_first_not_of(' ') == text.npos; }

bool HasExtension(const path& file, std::string_view extension) {
  return EqualIgnoringCase(file.extension().string(), extension);
}

/// "00000000" with the number's hexadecimal digits at its end.
std::string SubkeyName(int number) { return "00000" + ThreeDigitId(number); }

/// The copies of text files of one name: "s.txt", "s (2).txt", "s (3).txt" ...
std::string Numbered(const std::string& name, int number) {
  if (number == 1) return name;
  const path parts = ToPath(name);
  return PathText(parts.stem()) + " (" + std::to_string(number) + ")" + PathText(parts.extension());
}

bool SameContent(const path& left, const path& right) {
  const auto content = ReadWholeFile(left);
  return content && content == ReadWholeFile(right);
}

/// Whether the file is there and was changed after the other.
bool IsNewer(const path& file, const path& other) {
  std::error_code error;
  return std::filesystem::exists(file, error) &&
         std::filesystem::last_write_time(file) > std::filesystem::last_write_time(other);
}

}  // namespace

std::string Signatures::KeyPath() const {
  return "Identities\\" + identity_.IdentityId +
         "\\Software\\Microsoft\\Outlook Express\\5.0\\signatures";
}

std::vector<std::string> Signatures::Subkeys(bool report) {
  std::int16_t count = 0;
  return registry_.EnumSubKeys(KeyPath(), count, kNoSignatures, std::string(kSearchTitle), report);
}

Signature Signatures::Read(const std::string& subkey) {
  Signature signature;
  const OpenedKey key(registry_, KeyPath() + "\\" + subkey, false);
  if (!key.IsOpen()) return signature;
  signature.file = TextOf(registry_.Peek(key.Handle(), "file"));
  signature.name = TextOf(registry_.Peek(key.Handle(), "name"));
  signature.text = TextOf(registry_.Peek(key.Handle(), "text"));
  // Some programs store it as a string.
  signature.type = ToLongOrZero(TextOf(registry_.Peek(key.Handle(), "type")));
  return signature;
}

bool Signatures::ExpSign() {
  const auto subkeys = Subkeys(true);
  if (subkeys.empty()) return false;
  bool textCopied = false;
  std::vector<std::string> taken;
  for (const auto& subkey : subkeys) {
    const auto signature = Read(subkey);
    const auto name = signature.name + " " + ShortDate(environment_.Now()) + ".sgn";
    WriteWholeFile(folder_ / ToPath(SafeFileName(name)), SignatureText(signature));
    textCopied = CopyTextOut(signature, taken) || textCopied;
  }
  const auto what = subkeys.size() == 1 && !textCopied
                        ? "Le fichier de signature a été enregistré"_cp
                        : "Les fichiers de signatures ont été enregistrés"_cp;
  registry_.Boxes().Msg(std::string(what) + " dans le dossier :\r" + PathText(folder_));
  return true;
}

bool Signatures::CopyTextOut(const Signature& signature, std::vector<std::string>& taken) const {
  if (IsBlank(signature.file)) return false;
  const auto source = environment_.HostPath(signature.file);
  std::error_code error;
  if (!std::filesystem::is_regular_file(source, error)) return false;
  const auto plain = SafeFileName(WindowsFileName(signature.file));
  auto name = plain;
  // Two signatures may name files of the same name in different folders.
  const auto isTaken = [&] {
    return std::any_of(taken.begin(), taken.end(),
                       [&](const auto& other) { return EqualIgnoringCase(other, name); });
  };
  for (int number = 2; isTaken(); ++number) name = Numbered(plain, number);
  taken.push_back(name);
  const auto target = folder_ / ToPath(name);
  if (std::filesystem::equivalent(source, target, error)) return true;
  const auto content = ReadWholeFile(source);
  if (!content) throw RuntimeError(ErrorNumber::PermissionDenied);
  WriteWholeFile(target, *content);
  return true;
}

bool Signatures::HasFiles() const {
  std::error_code error;
  const std::filesystem::directory_iterator entries(folder_, error);
  return std::any_of(begin(entries), end(entries),
                     [](const auto& entry) { return HasExtension(entry.path(), ".sgn"); });
}

bool Signatures::ImpSign() {
  if (!HasFiles()) return false;
  const auto file = files_.ToOpen("sgn", folder_);
  if (!file) return true;
  const auto content = ReadWholeFile(*file);
  const auto signature = content ? ReadSignature(*content) : std::nullopt;
  if (signature) {
    Write(*signature);
  } else {
    registry_.Boxes().FileDoesNotExist(*file);
  }
  return true;
}

std::optional<std::string> Signatures::SubkeyFor(const Signature& signature,
                                                 const std::vector<std::string>& subkeys) {
  for (const auto& subkey : subkeys) {
    if (Read(subkey).name != signature.name) continue;
    if (registry_.Boxes().Msg(kAskReplace, kBoxYesNo) != Button::Yes) return std::nullopt;
    return subkey;
  }
  for (int number = 0; number < kCandidates; ++number) {
    auto name = SubkeyName(number);
    if (std::none_of(subkeys.begin(), subkeys.end(),
                     [&](const auto& subkey) { return EqualIgnoringCase(subkey, name); })) {
      return name;
    }
  }
  registry_.Boxes().Msg(kNoFreeName);
  return std::nullopt;
}

void Signatures::Write(const Signature& signature) {
  const auto subkeys = Subkeys(false);
  const auto subkey = SubkeyFor(signature, subkeys);
  if (!subkey || !CopyTextBack(signature)) return;
  CommandBatch batch(registry_.Store(), registry_.Boxes());
  auto status = Store(KeyPath() + "\\" + *subkey, signature);
  if (status == kStatusSuccess && subkeys.empty()) {
    const OpenedKey key(registry_, KeyPath(), true);
    status = registry_.SetKeyValue(key.Handle(), "Default Signature", ValueKind::String,
                                   std::string(kFirstSubkey));
  }
  if (!batch.Commit(status)) return;
  registry_.Boxes().Msg("Le fichier de signature a été importé dans le registre"_cp);
}

RegistryStatus Signatures::Store(const std::string& path, const Signature& signature) {
  const OpenedKey key(registry_, path, true);
  const std::array<std::pair<std::string_view, const std::string*>, 3> texts = {{
      {"file", &signature.file},
      {"name", &signature.name},
      {"text", &signature.text},
  }};
  for (const auto& [name, text] : texts) {
    const auto status = registry_.SetKeyValue(key.Handle(), name, ValueKind::String, *text);
    if (status != kStatusSuccess) return status;
  }
  return registry_.SetKeyValue(key.Handle(), "type", ValueKind::Dword, signature.type);
}

bool Signatures::CopyTextBack(const Signature& signature) const {
  if (IsBlank(signature.file)) return true;
  const auto name = SafeFileName(WindowsFileName(signature.file));
  const auto kept = folder_ / ToPath(name);
  const auto place = environment_.HostPath(signature.file);
  std::error_code error;
  const auto content = ReadWholeFile(kept);
  if (!content || !std::filesystem::is_directory(place.parent_path(), error)) {
    registry_.Boxes().Msg(kTextMissing);
    return false;
  }
  if (std::filesystem::equivalent(kept, place, error)) return true;
  // Of several copies only the content tells which is this signature's.
  int copies = 0;
  for (auto copy = kept; std::filesystem::exists(copy, error);
       copy = folder_ / ToPath(Numbered(name, copies + 1))) {
    if (SameContent(copy, place)) return true;
    ++copies;
  }
  if (copies > 1 || IsNewer(place, kept)) KeepCopy(place);
  WriteWholeFile(place, *content);
  return true;
}

void Signatures::KeepCopy(const path& present) const {
  std::error_code error;
  if (!std::filesystem::exists(present, error)) return;
  const auto date = ShortDate(environment_.Now());
  for (int number = 1;; ++number) {
    path copy = present.stem();
    copy += ToPath(" (copie du " + date + (number > 1 ? " n" + std::to_string(number) : "") + ")");
    copy += present.extension();
    copy = present.parent_path() / copy;
    if (std::filesystem::exists(copy, error)) continue;
    std::filesystem::copy_file(present, copy);
    return;
  }
}

}  // namespace morvelle
