#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/identity.h"
#include "core/registry_access.h"
#include "files/file_choice.h"
#include "files/signature_file.h"
#include "files/signature_texts.h"
#include "ports/environment.h"

namespace morvelle {

/// Carries the identity's mail signatures to small files and back.
class Signatures {
 public:
  /// `folder`: where the files lie.
  Signatures(RegistryAccess& registry, const Identity& identity, const Environment& environment,
             FileChoice& files, std::filesystem::path folder)
      : registry_(registry),
        identity_(identity),
        environment_(environment),
        files_(files),
        texts_(environment, registry.Boxes()),
        folder_(std::move(folder)) {}

  /// Writes every signature, and a copy of the text file that it names, into the folder; names the
  /// texts that are not copied. False when there is none.
  bool ExpSign();
  /// Brings the signature of a file of the user's choice into the identity. False when the folder
  /// has no such file.
  bool ImpSign();

 private:
  struct Outgoing;

  [[nodiscard]] std::string KeyPath() const;
  [[nodiscard]] std::vector<std::string> Subkeys(bool report);
  [[nodiscard]] Signature Read(const std::string& subkey);
  void Write(Signature signature, const std::filesystem::path& sgn);
  /// Where the signature goes: a subkey, or nothing when the user declines or none is left.
  [[nodiscard]] std::optional<std::string> SubkeyFor(const Signature& signature,
                                                     const std::vector<std::string>& subkeys);
  [[nodiscard]] bool HasFiles() const;
  [[nodiscard]] std::vector<Outgoing> ToWrite(const std::vector<std::string>& subkeys);
  /// Names of the text files that the folder's other signatures name.
  [[nodiscard]] std::vector<std::string> TextsOfOthers(const std::vector<Outgoing>& written) const;
  /// Where the copy of a signature's text goes: its own name, or that beside its .sgn where another
  /// signature names a text of that name and of other bytes.
  [[nodiscard]] std::filesystem::path TextTarget(const Outgoing& one,
                                                 const std::vector<Outgoing>& all,
                                                 const std::vector<std::string>& others) const;
  /// Puts the signature's text file back in its place where that may be. False, after saying so,
  /// when the folder has no such text.
  [[nodiscard]] bool CopyTextBack(Signature& signature, const std::filesystem::path& sgn) const;
  [[nodiscard]] RegistryStatus Store(const std::string& path, const Signature& signature);

  RegistryAccess& registry_;
  const Identity& identity_;
  const Environment& environment_;
  FileChoice& files_;
  SignatureTexts texts_;
  std::filesystem::path folder_;
};

}  // namespace morvelle
