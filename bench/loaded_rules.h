#pragma once

#include <filesystem>
#include <stdexcept>

#include "bench/silent_desktop.h"
#include "platform/host_files.h"
#include "platform/registry_regfile.h"
#include "ui/frm_morvelle.h"

namespace morvelle::bench {

/// A rule set brought from its file to filled tables, the window's state included.
class LoadedRules {
 public:
  explicit LoadedRules(const std::filesystem::path& file)
      : desktop_(file.parent_path()),
        opened_(OpenRegFile(file, MakeHostFiles(), std::chrono::system_clock::now)),
        ports_{Store(),  desktop_, desktop_, desktop_, desktop_,
               desktop_, desktop_, desktop_, desktop_},
        form_(ports_, state_) {
    form_.Form_Load();
    if (state_.tables.RuleCount == 0) throw std::runtime_error("no rule was loaded");
  }

  [[nodiscard]] frmMorvelle& Form() { return form_; }
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
