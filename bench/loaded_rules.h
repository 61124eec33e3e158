#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/silent_desktop.h"
#include "disk/host_files.h"
#include "platform/reg_file_reader.h"
#include "platform/reg_file_text.h"
#include "platform/registry_regfile.h"
#include "platform/tree_store.h"
#include "ui/frm_morvelle.h"

namespace morvelle::bench {

/// A registry file's keys and values, which no command brings back to the file.
class MemoryOfFile final : public TreeStore {
 public:
  explicit MemoryOfFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    RegFileText text;
    if (!DecodeRegFile(bytes, text)) throw std::runtime_error("no registry file");
    ReadRegText(text.body, text.format.version, Tree());
    UseRoot();
  }
};

/// Where the commands of a benchmark leave what they write.
enum class Kept { InFile, InMemory };

/// A rule set brought from its file to filled tables, the window's state included.
class LoadedRules {
 public:
  explicit LoadedRules(const std::filesystem::path& file, Kept kept = Kept::InFile)
      : desktop_(file.parent_path()),
        opened_(kept == Kept::InFile
                    ? OpenRegFile(file, MakeHostFiles(), std::chrono::system_clock::now)
                    : OpenedStore{std::make_unique<MemoryOfFile>(file), {}}),
        ports_{Store(),  desktop_, desktop_, desktop_, desktop_,
               desktop_, desktop_, desktop_, desktop_},
        form_(ports_, state_) {
    form_.Form_Load();
    if (state_.tables.RuleCount == 0) throw std::runtime_error("no rule was loaded");
  }

  [[nodiscard]] frmMorvelle& Form() { return form_; }
  [[nodiscard]] SilentDesktop& Desktop() { return desktop_; }
  [[nodiscard]] Ports& AllPorts() { return ports_; }
  [[nodiscard]] const ProgramState& State() const { return state_; }

 private:
  RegistryStore& Store() {
    if (opened_.store == nullptr) throw std::runtime_error(opened_.error);
    return *opened_.store;
  }

  SilentDesktop desktop_;
  OpenedStore opened_;
  Ports ports_;
  ProgramState state_;
  frmMorvelle form_;
};

}  // namespace morvelle::bench
