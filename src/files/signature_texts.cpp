#include "files/signature_texts.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>

#include "app/messages/errors.h"
#include "app/messages/path_text.h"
#include "app/messages/text.h"
#include "disk/device_names.h"
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

/// As long as a path of Windows can be (MAX_PATH, less its zero).
constexpr std::size_t kMostLength = 259;

/// A ":" after the drive's begins the name of a stream of some file, of any kind; "?" stands in the
/// names that the system has for its devices.
bool IsFileName(std::string_view file) {
  constexpr std::size_t kDriveLength = 2;
  return file.size() <= kMostLength && !HoldsControlCharacter(file) &&
         file.find_first_of("*?\"<>|") == std::string_view::npos &&
         file.find(':', kDriveLength) == std::string_view::npos;
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
  // A path without its drive would mean whatever folder is the working one.
  if (!place.is_absolute()) return {{}, kNoPlace};
  place = place.lexically_normal();
  if (IsDeviceName(PathText(place.filename()))) return {{}, kNoFileName};
  // Through a link it may be another file.
  if (!EndsAsText(PathText(place))) return {{}, kNoText};
  return {std::move(place), {}};
}

NamedText SignatureTexts::Read(const std::string& file) const {
  // Nobody was asked.
  if (IsOfNetwork(file)) return {{}, {}, true};
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

bool SignatureTexts::PutBack(const std::string& file, const path& kept) const {
  const auto place = Find(file);
  std::string refusal(place.refusal);
  if (refusal.empty()) refusal = Write(file, place.file, kept);
  if (refusal.empty()) return true;
  std::string prompt;
  prompt += "Le fichier texte de cette signature n'a pas été remis à sa place ("_cp;
  prompt += refusal;
  prompt += ")\u00A0:"_cp;
  messages_.MsgNamed(prompt, {ShownPath(file)});
  if (!place.refusal.empty()) return place.refusal == kNoPlace;
  return !IsOfNetwork(file) && !IsThere(place.file);
}

std::string SignatureTexts::Write(const std::string& file, const path& place,
                                  const path& kept) const {
  // Of the folder of exported files nobody knows who filled it.
  if (IsLink(kept)) return "celui du dossier des fichiers est un lien";
  FileFault fault;
  const auto content = ReadWholeFile(kept, kTextFileLimit, &fault);
  if (!content) return fault.reason;
  const bool isElsewhere = IsOfNetwork(file) || IsOfNetwork(PathText(place));
  if (isElsewhere && !Agrees(file, place, false, true)) return std::string(kDeclined);
  std::error_code error;
  if (!std::filesystem::is_directory(place.parent_path(), error)) {
    return std::string(kNoFolder);
  }
  const bool isReplaced = IsThere(place);
  if (isReplaced) {
    const auto present = ReadWholeFile(place, kTextFileLimit, &fault);
    if (!present) return fault.reason;
    if (present == content) return {};
  }
  if (!isElsewhere && !Agrees(file, place, isReplaced, isReplaced)) {
    return std::string(kDeclined);
  }
  try {
    ReplaceWholeFile(place, *content, environment_.Now());
  } catch (const RuntimeError& failure) {
    auto reason = failure.Description();
    reason.replace(0, 1, LowerCase(reason.substr(0, 1)));
    return reason;
  }
  return {};
}

bool SignatureTexts::Agrees(const std::string& file, const path& place, bool isReplaced,
                            bool isDoubtful) const {
  std::string question;
  question += "Le fichier texte de cette signature va être écrit ici\u00A0:"_cp;
  const auto host = ShownPath(PathText(place));
  // What ".." makes of a path is seen in the other one.
  if (host != file && file.find("..") == std::string::npos) question += "\r\"" + file + "\"";
  question += "\r\"" + host + "\"";
  if (isReplaced) {
    question += "\rUn autre fichier s'y trouve, dont une copie datée sera gardée."_cp;
  }
  question += "\rÊtes-vous d'accord\u00A0?"_cp;
  const int style = kBoxYesNo + kBoxQuestion + (isDoubtful ? kBoxSecondDefault : 0);
  return messages_.Msg(question, style) == Button::Yes;
}

std::string ShownPath(std::string path) {
  if (path.size() > kMostLength) path = path.substr(0, kMostLength) + "\x85";
  std::replace_if(path.begin(), path.end(), IsControlCharacter, '?');
  return path;
}

}  // namespace morvelle
