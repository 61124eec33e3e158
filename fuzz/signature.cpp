#include "files/signature_file.h"
#include "fuzz/fuzzer.h"

namespace morvelle {

void TryInput(std::string_view input) {
  const auto signature = ReadSignature(input);
  if (!signature) return;
  const auto again = ReadSignature(SignatureText(*signature));
  Demand(again.has_value(), "a signature that was written can be read");
  Demand(again->type == signature->type, "its type is the one written");
  const bool severalLines = signature->text.find_first_of("\r\n") != std::string::npos;
  Demand(!severalLines || again->text == signature->text, "a text of several lines survives");
}

}  // namespace morvelle
