#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "disk/host_files.h"
#include "fuzz/quiet_desktop.h"
#include "platform/registry_hive.h"
#include "platform/registry_regfile.h"
#include "tests/platform/hive_sample.h"
#include "tests/support/rule_set.h"
#include "tests/support/temp_folder.h"
#include "ui/frm_morvelle.h"

namespace morvelle {

/// A file that holds the registry: an export or a hive.
enum class StoreKind { RegFile, Hive };

inline OpenedStore OpenStore(StoreKind kind, const std::filesystem::path& file) {
  const auto open = kind == StoreKind::Hive ? OpenHive : OpenRegFile;
  return open(file, MakeHostFiles(), std::chrono::system_clock::now);
}

/// Makes a file with that many rules, ten words each.
inline void MakeRules(StoreKind kind, const std::filesystem::path& file, int count) {
  WriteFile(file, kind == StoreKind::Hive ? EmptyHive() : std::string("REGEDIT4\r\n\r\n"));
  const auto opened = OpenStore(kind, file);
  ASSERT_NE(opened.store, nullptr) << opened.error;
  opened.store->BeginBatch();
  RuleSet set(*opened.store);
  std::string order;
  for (int row = 0; row < count; ++row) order += (row > 0 ? " " : "") + ThreeDigitId(row);
  set.Order(order);
  std::vector<std::string> words;
  for (int word = 0; word < 10; ++word) words.push_back("mot" + std::to_string(word));
  for (int row = 0; row < count; ++row) {
    set.PlainRule(ThreeDigitId(row), "R" + std::to_string(row), "000").Words("000", 12, words);
  }
  ASSERT_EQ(opened.store->CommitBatch(false), CommitOutcome::Done);
}

/// All that the file holds below a key, as text; what was wrong, where it cannot be opened.
inline std::string Held(StoreKind kind, const std::filesystem::path& file) {
  const auto opened = OpenStore(kind, file);
  if (opened.store == nullptr) return "cannot be opened: " + ToUtf8(opened.error);
  std::string text;
  const auto walk = [&](const auto& self, const std::string& path) -> void {
    KeyHandle key = 0;
    if (opened.store->OpenKey(path, KeyAccess::ReadWrite, key) != kStatusSuccess) return;
    for (const char* name :
         {"Order", "Version", "Name", "Enabled", "Type", "Flags", "Logic", "Value", "ValueType"}) {
      std::string data;
      if (opened.store->ReadValue(key, name, data) == kStatusSuccess) {
        text += path + " " + name + "=" + data + "\n";
      }
    }
    std::string name;
    for (std::uint32_t i = 0; opened.store->EnumKey(key, i, name) == kStatusSuccess; ++i) {
      self(self, path + "\\" + name);
    }
    opened.store->CloseKey(key);
  };
  walk(walk, kTestMailKey.substr(0, kTestMailKey.size() - 1));
  return text;
}

/// The program on such a file, driven by its commands.
class Editor {
 public:
  Editor(StoreKind kind, const std::filesystem::path& file) : opened_(OpenStore(kind, file)) {
    desktop.answers = 0xFF;
    form.Form_Load();
  }

  QuietDesktop desktop;

  void AddWord(const std::u16string& word) {
    form.RuleMenu("mnuMod").Choose(0);
    form.txtBox[0].Type(word);
    form.cmdAdd[0].Click();
    form.cmdRecord[0].Click();
  }
  void DeleteLast() { form.RuleMenu("mnuDel").Choose(state_.tables.RuleCount - 1); }
  void Import(const std::filesystem::path& file) {
    desktop.chosenFile = file;
    form.Menu("mnuImpAllRules").Choose();
  }

 private:
  OpenedStore opened_;
  Ports ports_{*opened_.store, desktop, desktop, desktop, desktop,
               desktop,        desktop, desktop, desktop};
  ProgramState state_;

 public:
  frmMorvelle form{ports_, state_};
};

}  // namespace morvelle
