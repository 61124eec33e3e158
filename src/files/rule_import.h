#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/messages/messages.h"
#include "core/registry_access.h"
#include "core/rule_writer.h"
#include "files/rule_file_reader.h"
#include "ports/progress.h"

namespace morvelle {

/// Brings the rules of a file into the identity. The tables are the worse for it: whatever comes of
/// an import, they are to be loaded again.
class RuleImport {
 public:
  RuleImport(RegistryAccess& registry, const std::string& mailKey, RuleTables& tables,
             RuleWriter& writer, Progress& progress)
      : registry_(registry),
        mailKey_(mailKey),
        tables_(tables),
        writer_(writer),
        progress_(progress) {}

  /// False when the file cannot be read or is wrong inside a rule. One that lacks a marker is told
  /// and ends the program. All rules of the file that are taken reach the store together.
  bool MailFromFile(const std::filesystem::path& path, RuleFileKind kind);

 private:
  void ExistName(BoxSeries& boxes, const std::string& name) const;
  void DropKnownRules(RuleFile& file) const;
  /// Ids for so many new rules, after the greatest one there is; nothing, after saying so, when
  /// there are not enough.
  [[nodiscard]] std::optional<std::vector<std::string>> NewIds(std::size_t count) const;
  void AddRows(RuleFile& file, const std::vector<std::string>& ids);
  /// False, after saying why, when nothing was stored.
  [[nodiscard]] bool WriteRows(int first);
  void TellDamaged(const std::vector<std::string>& names) const;
  /// Writes the rules from that row on, those that were planned by their plan; the others go to
  /// `asRead`.
  [[nodiscard]] RegistryStatus WriteKeys(int first, std::vector<PlannedRule>& planned,
                                         std::vector<int>& asRead);

  RegistryAccess& registry_;
  const std::string& mailKey_;
  RuleTables& tables_;
  RuleWriter& writer_;
  Progress& progress_;
};

}  // namespace morvelle
