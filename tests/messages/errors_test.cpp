#include "app/messages/errors.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <system_error>

#include "tests/support/scripted_dialogs.h"

namespace morvelle {
namespace {

/// Number of the run-time error that a conversion raises; 0 when it raises none.
int ErrorOf(const std::string& text) {
  try {
    ToLong(text);
    return 0;
  } catch (const RuntimeError& error) {
    return error.Number();
  }
}

TEST(Errors, NumbersAreReadWithinTheirLimits) {
  EXPECT_EQ(ToLong("02147483647"), 2147483647);
  EXPECT_EQ(ToLong("-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ToLong(" +12 "), 12);
  for (const auto* const large : {"2147483648", "-2147483649", "99999999999999999999999999"}) {
    EXPECT_EQ(ErrorOf(large), 6) << large;
  }
  for (const auto* const none : {"", " ", "-", "1a", "0x10", "0-5", "1 2"}) {
    EXPECT_EQ(ErrorOf(none), 13) << none;
    EXPECT_EQ(ToLongOrZero(none), 0);
  }
  EXPECT_EQ(Checked<std::int16_t>(32767U), 32767);
  EXPECT_THROW(Checked<std::int16_t>(32768U), RuntimeError);
  EXPECT_THROW(Checked<std::uint8_t>(-1), RuntimeError);
}

TEST(Errors, TheInnermostProcedureReportsOnceAndEndsTheProgram) {
  ScriptedDialogs dialogs;
  dialogs.Expect("Dépassement de capacité"_cp, kBoxOk, "Inner");
  EXPECT_THROW(Trap(dialogs, "Outer",
                    [&] {
                      Trap(dialogs, "Inner", [] { throw RuntimeError(ErrorNumber::Overflow); });
                      ADD_FAILURE() << "goes on";
                    }),
               ProgramEnd);
  EXPECT_EQ(Trap(dialogs, "Value", [] { return 5; }), 5);
}

TEST(Errors, WhereItIsSaidTheProgramGoesOnButItsEndIsNotHeldUp) {
  ScriptedDialogs dialogs;
  dialogs.Expect("Incompatibilité de type"_cp, kBoxOk, "Going");
  TrapAndContinue(dialogs, "Going", [] { throw RuntimeError(ErrorNumber::TypeMismatch); });
  EXPECT_THROW(TrapAndContinue(dialogs, "Ending", [] { throw ProgramEnd{}; }), ProgramEnd);
}

TEST(Errors, ErrorsOfTheLibraryAreSaidInFrenchToo) {
  ScriptedDialogs dialogs;
  const auto report = [&](std::string_view text, auto&& raise) {
    dialogs.Expect(text, kBoxOk, "P");
    TrapAndContinue(dialogs, "P", raise);
  };
  report("Mémoire insuffisante"_cp, [] { throw std::bad_alloc(); });
  report("Permission refusée"_cp, [] {
    throw std::filesystem::filesystem_error("", std::make_error_code(std::errc::permission_denied));
  });
  report("Disque plein"_cp,
         [] { throw std::system_error(std::make_error_code(std::errc::no_space_on_device)); });
  report("Fichier introuvable"_cp, [] {
    throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory));
  });
  report("Erreur interne"_cp, [] { throw 1; });
  EXPECT_EQ(ToUtf8(ErrorDescription(9)), "L'indice n'appartient pas à la sélection");
  EXPECT_EQ(ToUtf8(ErrorDescription(1018)), "Erreur définie par l'application ou par l'objet");
}

}  // namespace
}  // namespace morvelle
