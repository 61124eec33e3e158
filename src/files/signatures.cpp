#include "files/signatures.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "core/command_batch.h"
#include "disk/dates.h"
#include "disk/whole_file.h"
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
constexpr std::string_view kNotCopied =
    "N'ont pas été copiés (seuls le sont les textes .txt, .htm ou .html des disques de cette "
    "identité)\u00A0:"_cp;
constexpr std::string_view kFirstSubkey = "00000000";
/// Names that are tried for a new signature.
constexpr int kCandidates = 12;

bool IsBlank(std::string_view text) { return text.find_first_not_of(' ') == text.npos; }

bool HasExtension(const path& file, std::string_view extension) {
  return EqualIgnoringCase(file.extension().string(), extension);
}

/// "00000000" with the number's hexadecimal digits at its end.
std::string SubkeyName(int number) { return "00000" + ThreeDigitId(number); }

/// The name of the text file that a signature names, without its folder.
std::string TextName(const Signature& signature) {
  return SafeFileName(WindowsFileName(signature.file));
}

/// What a text is called beside its .sgn where its own name is another's: "s (Perso 151126).txt".
path OwnName(const Signature& signature, const path& sgn) {
  const auto plain = ToPath(TextName(signature));
  auto name = plain.stem();
  name += " (";
  name += sgn.stem();
  name += ")";
  name += plain.extension();
  return name;
}

}  // namespace

/// A signature on its way out: the name of its .sgn, and its text file.
struct Signatures::Outgoing {
  Signature signature;
  std::string sgn;
  NamedText text;
};

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

std::vector<Signatures::Outgoing> Signatures::ToWrite(const std::vector<std::string>& subkeys) {
  std::vector<Outgoing> all;
  for (const auto& subkey : subkeys) {
    Outgoing one{Read(subkey), {}, {}};
    const auto stem = SafeFileName(one.signature.name + " " + ShortDate(environment_.Now()));
    // Of signatures of one name the last is written, as asked for. Two names that only the file
    // system takes for one are two files; what tells them apart is their place among the
    // signatures, so that the next export writes the same ones.
    const auto isTaken = [&](const Outgoing& other) {
      return other.signature.name != one.signature.name && EqualIgnoringCase(other.sgn, one.sgn);
    };
    one.sgn = stem + ".sgn";
    for (int number = 2; std::any_of(all.begin(), all.end(), isTaken); ++number) {
      one.sgn = stem + " (" + std::to_string(number) + ").sgn";
    }
    if (!IsBlank(one.signature.file)) one.text = texts_.Read(one.signature.file);
    all.push_back(std::move(one));
  }
  return all;
}

std::vector<std::string> Signatures::TextsOfOthers(const std::vector<Outgoing>& written) const {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder_, error)) {
    const auto& file = entry.path();
    const auto isIt = [&](const Outgoing& one) {
      return EqualIgnoringCase(one.sgn, PathText(file.filename()));
    };
    if (!HasExtension(file, ".sgn") || std::any_of(written.begin(), written.end(), isIt)) continue;
    const auto content = ReadWholeFile(file, kSmallFileLimit);
    const auto signature = content ? ReadSignature(*content) : std::nullopt;
    if (signature) names.push_back(TextName(*signature));
  }
  return names;
}

path Signatures::TextTarget(const Outgoing& one, const std::vector<Outgoing>& all,
                            const std::vector<std::string>& others) const {
  const auto name = TextName(one.signature);
  const auto plain = folder_ / ToPath(name);
  auto own = folder_ / OwnName(one.signature, ToPath(one.sgn));
  const bool namedHere = std::any_of(all.begin(), all.end(), [&](const Outgoing& other) {
    return other.text.bytes != one.text.bytes && EqualIgnoringCase(TextName(other.signature), name);
  });
  const auto isIt = [&](const auto& other) { return EqualIgnoringCase(other, name); };
  const auto present = ReadWholeFile(plain, kTextFileLimit);
  const bool namedThere =
      present && present != one.text.bytes && std::any_of(others.begin(), others.end(), isIt);
  // An import looks for the own name first: one that is there must not stay behind.
  std::error_code error;
  return namedHere || namedThere || std::filesystem::exists(own, error) ? own : plain;
}

bool Signatures::ExpSign() {
  const auto subkeys = Subkeys(true);
  if (subkeys.empty()) return false;
  const auto all = ToWrite(subkeys);
  const auto others = TextsOfOthers(all);
  bool textCopied = false;
  std::vector<std::string> leftOut;
  for (const auto& one : all) {
    WriteOverLink(folder_ / ToPath(one.sgn), SignatureText(one.signature));
    if (one.text.isLeftOut) leftOut.push_back(ShownPath(one.signature.file));
    if (!one.text.bytes) continue;
    textCopied = true;
    const auto target = TextTarget(one, all, others);
    std::error_code error;
    if (!std::filesystem::equivalent(one.text.place, target, error)) {
      WriteOverLink(target, *one.text.bytes);
    }
  }
  const auto what = subkeys.size() == 1 && !textCopied
                        ? "Le fichier de signature a été enregistré"_cp
                        : "Les fichiers de signatures ont été enregistrés"_cp;
  registry_.Boxes().Msg(std::string(what) + " dans le dossier :\r" + PathText(folder_));
  registry_.Boxes().MsgNamed(kNotCopied, leftOut);
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
  FileFault fault;
  const auto content = ReadWholeFile(*file, kSmallFileLimit, &fault);
  if (TellTooLarge(registry_.Boxes(), *file, fault)) return true;
  const auto signature = content ? ReadSignature(*content) : std::nullopt;
  if (signature) {
    Write(*signature, *file);
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

void Signatures::Write(Signature signature, const path& sgn) {
  const auto subkeys = Subkeys(false);
  const auto subkey = SubkeyFor(signature, subkeys);
  if (!subkey || !CopyTextBack(signature, sgn)) return;
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

bool Signatures::CopyTextBack(Signature& signature, const path& sgn) const {
  if (IsBlank(signature.file)) return true;
  auto kept = folder_ / OwnName(signature, sgn);
  std::error_code error;
  if (!std::filesystem::exists(kept, error)) kept = folder_ / ToPath(TextName(signature));
  if (!std::filesystem::exists(kept, error)) {
    registry_.Boxes().Msg(kTextMissing);
    return false;
  }
  if (!texts_.PutBack(signature.file, kept)) signature.file.clear();
  return true;
}

}  // namespace morvelle
