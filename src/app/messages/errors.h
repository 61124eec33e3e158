#pragma once

#include <cstdint>
#include <exception>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

#include "ports/dialogs.h"

/// Run-time errors and the one trap that reports them.
namespace morvelle {

/// Numbers of the run-time errors that the program raises.
enum class ErrorNumber {
  InvalidCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  FileNotFound = 53,
  DeviceError = 57,
  FileExists = 58,
  DiskFull = 61,
  EndOfFile = 62,
  PermissionDenied = 70,
  PathNotFound = 76,
};

/// The French description of a run-time error or system status number, Windows-1252; the general
/// text where the number has none of its own.
std::string ErrorDescription(int number);

/// An unexpected run-time error, on its way to the trap of the innermost procedure.
class RuntimeError : public std::exception {
 public:
  explicit RuntimeError(ErrorNumber number)
      : number_(static_cast<int>(number)), description_(ErrorDescription(number_)) {}
  [[nodiscard]] int Number() const { return number_; }
  [[nodiscard]] const std::string& Description() const { return description_; }
  [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

 private:
  int number_;
  std::string description_;
};

/// The end of the program, thrown after the last message was shown; it unwinds to the event loop.
/// Not a std::exception, so that nothing on the way takes it for an error.
struct ProgramEnd {};

/// Shows the run-time error now being handled: its description, an OK button, the procedure as
/// title. To be called in a handler; a ProgramEnd passes through.
void ReportCurrentError(Dialogs& dialogs, const char* procedure);

/// Runs the body of a procedure; an unexpected error is reported under the procedure's name and
/// ends the program.
template <typename Body>
auto Trap(Dialogs& dialogs, const char* procedure, Body&& body) -> std::invoke_result_t<Body> {
  try {
    return std::forward<Body>(body)();
  } catch (const ProgramEnd&) {
    throw;
  } catch (...) {
    ReportCurrentError(dialogs, procedure);
    throw ProgramEnd{};
  }
}

/// As Trap, but the program goes on after the report.
template <typename Body>
void TrapAndContinue(Dialogs& dialogs, const char* procedure, Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (const ProgramEnd&) {
    throw;
  } catch (...) {
    ReportCurrentError(dialogs, procedure);
  }
}

/// A number as a narrower type; out of its range it raises error 6.
template <typename Narrow, typename Wide>
Narrow Checked(Wide value) {
  if (!std::in_range<Narrow>(value)) throw RuntimeError(ErrorNumber::Overflow);
  return static_cast<Narrow>(value);
}

/// A decimal text as a 32-bit number: blanks around it do not count; error 13 when it is no number,
/// error 6 when it is too large.
std::int32_t ToLong(const std::string& text);
/// As ToLong, but 0 for a text that is no number: for what is only shown.
std::int32_t ToLongOrZero(const std::string& text);
/// Whether a text is a number as the program writes it: nine digits at most, none of them a leading
/// zero. A longer one may be a number too.
bool IsPlainNumber(std::string_view text);

}  // namespace morvelle
