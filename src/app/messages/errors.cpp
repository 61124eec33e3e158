#include "app/messages/errors.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>

#include "app/messages/text.h"

namespace morvelle {

namespace {

struct Description {
  int number;
  std::string_view text;
};

constexpr Description kDescriptions[] = {
    {5, "Argument ou appel de procédure incorrect"_cp},
    {6, "Dépassement de capacité"_cp},
    {7, "Mémoire insuffisante"_cp},
    {9, "L'indice n'appartient pas à la sélection"_cp},
    {11, "Division par zéro"_cp},
    {13, "Incompatibilité de type"_cp},
    {51, "Erreur interne"_cp},
    {52, "Nom ou numéro de fichier incorrect"_cp},
    {53, "Fichier introuvable"_cp},
    {55, "Fichier déjà ouvert"_cp},
    {57, "Erreur d'entrée/sortie de périphérique"_cp},
    {58, "Ce fichier existe déjà"_cp},
    {61, "Disque plein"_cp},
    {62, "L'entrée dépasse la fin de fichier"_cp},
    {70, "Permission refusée"_cp},
    {71, "Disque non prêt"_cp},
    {75, "Erreur d'accès au chemin/fichier"_cp},
    {76, "Chemin d'accès introuvable"_cp},
};

constexpr std::string_view kOtherDescription = "Erreur définie par l'application ou par l'objet"_cp;

int NumberOf(const std::error_code& code) {
  if (code == std::errc::no_such_file_or_directory) return 53;
  if (code == std::errc::permission_denied || code == std::errc::read_only_file_system) return 70;
  if (code == std::errc::no_space_on_device) return 61;
  if (code == std::errc::file_exists) return 58;
  if (code == std::errc::not_a_directory) return 76;
  return 57;
}

int NumberOfCurrentError() {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return error.Number();
  } catch (const std::bad_alloc&) {
    return 7;
  } catch (const std::system_error& error) {
    return NumberOf(error.code());
  } catch (...) {
    return 51;
  }
}

}  // namespace

std::string ErrorDescription(int number) {
  for (const auto& entry : kDescriptions) {
    if (entry.number == number) return std::string(entry.text);
  }
  return std::string(kOtherDescription);
}

void ReportCurrentError(Dialogs& dialogs, const char* procedure) {
  dialogs.ShowMessage(ErrorDescription(NumberOfCurrentError()), kBoxOk, procedure);
}

std::int32_t ToLong(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) throw RuntimeError(ErrorNumber::TypeMismatch);
  const auto last = text.find_last_not_of(' ');
  std::size_t at = first;
  const bool negative = text[at] == '-';
  if (negative || text[at] == '+') ++at;
  if (at > last) throw RuntimeError(ErrorNumber::TypeMismatch);
  std::int64_t value = 0;
  for (; at <= last; ++at) {
    if (text[at] < '0' || text[at] > '9') throw RuntimeError(ErrorNumber::TypeMismatch);
    value = value * 10 + (text[at] - '0');
    if (value > std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1) {
      throw RuntimeError(ErrorNumber::Overflow);
    }
  }
  return Checked<std::int32_t>(negative ? -value : value);
}

bool IsPlainNumber(std::string_view text) {
  constexpr std::size_t kMostDigits = 9;
  if (text.empty() || text.size() > kMostDigits || (text.size() > 1 && text.front() == '0')) {
    return false;
  }
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::int32_t ToLongOrZero(const std::string& text) {
  try {
    return ToLong(text);
  } catch (const RuntimeError&) {
    return 0;
  }
}

}  // namespace morvelle
