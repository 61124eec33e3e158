#include "files/signature_texts.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/whole_file.h"

namespace morvelle {

namespace {

using std::filesystem::path;

constexpr std::string_view kNoFileName = "son nom n'est pas celui d'un fichier";
constexpr std::string_view kNoText = "ce n'est pas un fichier .txt, .htm ou .html";
constexpr std::string_view kNoPlace = "son emplacement n'existe pas ici";
constexpr std::string_view kNoFolder = "son dossier n'existe pas";
constexpr std::string_view kDeclined = "vous ne l'avez pas voulu";

bool EndsAsText(std::string_view name) {
  constexpr std::array<std::string_view, 3> kEnds = {".txt", ".htm", ".html"};
  return std::any_of(kEnds.begin(), kEnds.end(), [&](std::string_view end) {
    return name.size() > end.size() &&
           EqualIgnoringCase(name.substr(name.size() - end.size()), end);
  });
}

/// A ":" after the drive's begins the name of a stream of some file, of any kind.
bool IsFileName(std::string_view file) {
  constexpr std::size_t kDriveLength = 2;
  return !HoldsControlCharacter(file) && file.find(':', kDriveLength) == std::string_view::npos;
}

/// Whether the path names another machine: to look there would already tell it who the user is.
bool IsOfNetwork(std::string_view file) { return file.find_first_not_of("\\/") >= 2; }

bool IsThere(const path& file) {
  std::error_code error;
  return std::filesystem::status(file, error).type() != std::filesystem::file_type::not_found;
}

}  // namespace

/// Where a text lies, or why it is left alone.
struct SignatureTexts::Place {
  path file;
  std::string_view refusal;
};

SignatureTexts::Place SignatureTexts::Find(const std::string& file) const {
  if (!IsFileName(file)) return {{}, kNoFileName};
  if (!EndsAsText(file)) return {{}, kNoText};
  auto place = environment_.HostPath(file);
  if (place.empty()) return {{}, kNoPlace};
  // Through a link it may be another file.
  if (!EndsAsText(PathText(place))) return {{}, kNoText};
  return {std::move(place), {}};
}

NamedText SignatureTexts::Read(const std::string& file) const {
  auto place = Find(file);
  if (!place.refusal.empty()) {
    const auto here = environment_.HostPath(file);
    if (!here.empty()) return {{}, {}, IsThere(here)};
    // On a drive that is not there nothing is.
    const auto start = file.substr(0, file.find_first_of("\\/"));
    return {{}, {}, !environment_.HostPath(start).empty()};
  }
  if (!IsThere(place.file)) return {};
  auto bytes = ReadWholeFile(place.file, kTextFileLimit);
  const bool isRead = bytes.has_value();
  return {std::move(place.file), std::move(bytes), !isRead};
}

void SignatureTexts::PutBack(const std::string& file, const path& kept) const {
  const auto refusal = Write(file, kept);
  if (refusal.empty()) return;
  std::string prompt;
  prompt += "Le fichier texte de cette signature n'a pas été remis à sa place ("_cp;
  prompt += refusal;
  prompt += ")\u00A0:"_cp;
  messages_.MsgNamed(prompt, {ShownPath(file)});
}

std::string SignatureTexts::Write(const std::string& file, const path& kept) const {
  const auto place = Find(file);
  if (!place.refusal.empty()) return std::string(place.refusal);
  FileFault fault;
  const auto content = ReadWholeFile(kept, kTextFileLimit, &fault);
  if (!content) return fault.reason;
  const bool isElsewhere = IsOfNetwork(file) || IsOfNetwork(PathText(place.file));
  if (isElsewhere && !Agrees(file, place.file, false, true)) return std::string(kDeclined);
  std::error_code error;
  if (!std::filesystem::is_directory(place.file.parent_path(), error)) {
    return std::string(kNoFolder);
  }
  const bool isReplaced = IsThere(place.file);
  if (isReplaced) {
    const auto present = ReadWholeFile(place.file, kTextFileLimit, &fault);
    if (!present) return fault.reason;
    if (present == content) return {};
  }
  if (!isElsewhere && !Agrees(file, place.file, isReplaced, isReplaced)) {
    return std::string(kDeclined);
  }
  try {
    ReplaceWholeFile(place.file, *content, environment_.Now());
  } catch (const RuntimeError& failure) {
    return failure.Description();
  }
  return {};
}

bool SignatureTexts::Agrees(const std::string& file, const path& place, bool isReplaced,
                            bool isDoubtful) const {
  std::string question;
  question += "Le fichier texte de cette signature va être écrit ici\u00A0:"_cp;
  question += "\r\"" + file + "\"";
  if (const auto host = ShownPath(PathText(place)); host != file) question += "\r\"" + host + "\"";
  if (isReplaced) {
    question += "\rUn autre fichier s'y trouve, dont une copie datée sera gardée."_cp;
  }
  question += "\rÊtes-vous d'accord\u00A0?"_cp;
  const int style = kBoxYesNo + kBoxQuestion + (isDoubtful ? kBoxSecondDefault : 0);
  return messages_.Msg(question, style) == Button::Yes;
}

std::string ShownPath(std::string path) {
  std::replace_if(path.begin(), path.end(), IsControlCharacter, '?');
  return path;
}

}  // namespace morvelle
