#include "wab/address_reader.h"

#include <array>
#include <cstdint>
#include <limits>

#include "app/messages/errors.h"
#include "app/messages/text.h"
#include "core/word_lists.h"

namespace morvelle {

namespace {

constexpr const char* kBookKey = "Software\\Microsoft\\WAB\\WAB4\\Wab File Name\\";
/// Characters of the buffer into which a property is read.
constexpr std::size_t kBufferSize = 256;
constexpr std::string_view kTooManyAddresses =
    "Le carnet d'adresses compte plus de 32 767 adresses : une règle ne peut les contenir"_cp;

std::string LeftOutText(std::int32_t count) {
  const bool one = count == 1;
  std::string text = std::to_string(count);
  text += one ? " adresse contient" : " adresses contiennent";
  text += " des caractères que la messagerie ne connaît pas\u00A0: "_cp;
  text += one ? "elle est laissée de côté."_cp : "elles sont laissées de côté."_cp;
  return text;
}

}  // namespace

std::string CleanAddress(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

bool AddressReader::ReadPlace() {
  place_ = {};
  const OpenedKey key(registry_, kBookKey, false);
  if (!key.IsOpen()) return false;
  place_.wabFile = TextOf(registry_.Peek(key.Handle(), ""));
  const auto end = place_.wabFile.rfind('\\');
  if (end != std::string::npos) place_.WabFolder = place_.wabFile.substr(0, end);
  return true;
}

bool AddressReader::FindWab() {
  return Trap(registry_.Boxes().Boxes(), "FindWab", [&] {
    if (!ReadPlace()) {
      registry_.Boxes().Boxes().ShowMessage("Il n'existe pas de carnet d'adresses Windows.",
                                            kBoxInformation, "FindWab");
    }
    return !place_.WabFolder.empty();
  });
}

bool AddressReader::OpenWab() {
  return Trap(registry_.Boxes().Boxes(), "OpenWab", [&] {
    wabEntryCount_ = 0;
    // A start that ended early has not looked for the book.
    if (place_.wabFile.empty()) ReadPlace();
    if (!book_.Open(environment_.HostPath(place_.wabFile), hWab_)) {
      registry_.Boxes().Msg("Impossible de lire le carnet d'adresses", kBoxStop);
      return false;
    }
    wabEntryCount_ = book_.NumEntries(hWab_);
    if (wabEntryCount_ <= 0) {
      registry_.Boxes().Msg("Le carnet d'adresses est vide", kBoxStop);
      return false;
    }
    return true;
  });
}

void AddressReader::CloseWab() { book_.Close(hWab_); }

std::vector<std::string> AddressReader::ReadWab() {
  return Trap(registry_.Boxes().Boxes(), "ReadWab", [&] {
    std::vector<std::string> addresses;
    if (!OpenWab()) {
      CloseWab();
      return addresses;
    }
    std::vector<EntryId> ids(static_cast<std::size_t>(wabEntryCount_));
    book_.GetEntries(hWab_, ids);
    for (const auto id : ids) {
      std::array<char, kBufferSize> buffer{};
      buffer.fill(' ');
      // Its result is not used; the library is asked in the order that it knows.
      book_.GetString(hWab_, id, kPropertyDisplayName, buffer);
      buffer.fill(' ');
      if (!book_.GetString(hWab_, id, kPropertyEmailAddress, buffer)) continue;
      auto address = CleanAddress({buffer.data(), buffer.size()});
      if (!address.empty()) addresses.push_back(std::move(address));
    }
    const auto leftOut = book_.LeftOut(hWab_);
    book_.FreeEntries(hWab_, ids);
    wabEntryCount_ = 0;
    CloseWab();
    if (leftOut > 0) registry_.Boxes().Msg(LeftOutText(leftOut), kBoxExclamation);
    return addresses;
  });
}

std::vector<std::string> AddressReader::ReadWords() {
  auto words = SortedOnce(ReadWab());
  if (words.size() > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
    registry_.Boxes().Msg(kTooManyAddresses, kBoxExclamation);
    words.clear();
  }
  return words;
}

}  // namespace morvelle
