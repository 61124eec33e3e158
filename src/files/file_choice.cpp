#include "files/file_choice.h"

#include <system_error>

#include "app/messages/text.h"
#include "disk/device_names.h"
#include "disk/whole_file.h"
#include "files/file_names.h"

namespace morvelle {

namespace {

constexpr std::string_view kTitleToSave = "Nom et emplacement du fichier à exporter ?"_cp;
constexpr std::string_view kTitleToOpen = "Nom et emplacement du fichier à importer ?"_cp;
constexpr std::string_view kTitleOfFilter = "Nom et emplacement du fichier personnalisé ?"_cp;

std::string LabelOf(std::string_view extension) {
  const auto what = extension == "oe"    ? "Fichiers de filtres OE"_cp
                    : extension == "sgn" ? "Fichiers de signatures OE"_cp
                                         : "Fichiers de règles OE"_cp;
  return std::string(what) + " (*." + std::string(extension) + ")";
}

FileQuestion QuestionOf(std::string_view title, std::string_view extension,
                        const std::filesystem::path& folder, std::string_view name) {
  const auto dotted = "." + std::string(extension);
  return {std::string(title), LabelOf(extension), "*" + dotted,
          name.empty() ? std::string{} : SafeFileName(name) + dotted, folder};
}

}  // namespace

std::optional<std::filesystem::path> FileChoice::ToOpen(std::string_view extension,
                                                        const std::filesystem::path& folder,
                                                        std::string_view name) {
  const auto title = extension == "oe" ? kTitleOfFilter : kTitleToOpen;
  auto file = dialogs_.AskFileToOpen(QuestionOf(title, extension, folder, name));
  environment_.SetCurrentFolder(programFolder_);
  return file;
}

std::optional<std::filesystem::path> FileChoice::ToSave(std::string_view extension,
                                                        const std::filesystem::path& folder,
                                                        std::string_view name) {
  const auto question = QuestionOf(kTitleToSave, extension, folder, name);
  for (;;) {
    auto file = dialogs_.AskFileToSave(question);
    environment_.SetCurrentFolder(programFolder_);
    if (!file) return std::nullopt;
    switch (MayBeWritten(*file)) {
      case Verdict::Taken:
        return file;
      case Verdict::GivenUp:
        return std::nullopt;
      case Verdict::AskAgain:
        break;
    }
  }
}

FileChoice::Verdict FileChoice::MayBeWritten(const std::filesystem::path& file) const {
  const auto title = FileTitle(file);
  const auto another = [&](std::string_view reason) {
    const auto answer = messages_.Msg(title + std::string(reason) + ", choisir un autre nom",
                                      kBoxOkCancel + kBoxExclamation);
    return answer == Button::Ok ? Verdict::AskAgain : Verdict::GivenUp;
  };
  if (IsDeviceName(title)) return another(" est un nom réservé par Windows"_cp);
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return Verdict::Taken;
  const auto replace =
      messages_.Msg(title + std::string(" existe déjà.\rVoulez-vous le remplacer ?"_cp),
                    kBoxYesNo + kBoxExclamation + kBoxSecondDefault);
  if (replace != Button::Yes) return Verdict::AskAgain;
  return IsReadOnly(file) ? another(" est protégé"_cp) : Verdict::Taken;
}

}  // namespace morvelle
