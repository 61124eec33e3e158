#include "disk/dates.h"

#include <array>
#include <ctime>

namespace morvelle {

namespace {

std::string Formatted(std::chrono::system_clock::time_point now, const char* form) {
  const auto seconds = std::chrono::system_clock::to_time_t(now);
  std::tm local{};
  // The program has one thread; localtime is the one form that every system has.
  if (const std::tm* known = std::localtime(&seconds)) local = *known;  // NOLINT
  std::array<char, 32> text{};
  return {text.data(), std::strftime(text.data(), text.size(), form, &local)};
}

}  // namespace

std::string ShortDate(std::chrono::system_clock::time_point now) {
  // The year without its century is what is asked for.
  return Formatted(now, "%d%m") + Formatted(now, "%Y").substr(2);
}

std::string LongDate(std::chrono::system_clock::time_point now) { return Formatted(now, "%d%m%Y"); }

std::string DateAndTime(std::chrono::system_clock::time_point now) {
  return Formatted(now, "%Y-%m-%d %H-%M-%S");
}

}  // namespace morvelle
