// reg_file_sample FOLDER: writes a `.reg` file through the store, and the smallest hive that a
// reader of hives takes, for that reader to merge the one into the other.

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "app/messages/text.h"
#include "platform/registry_regfile.h"
#include "tests/platform/hive_sample.h"

namespace morvelle {

namespace {

int WriteSample(const std::filesystem::path& folder) {
  const auto write = [&folder](const char* name, std::string_view bytes) {
    std::ofstream(folder / name, std::ios::binary) << bytes;
  };
  write("hive", EmptyHive());
  // Read in UTF-8 by the other program. What is deleted here was merged before.
  write("sample.reg",
        "\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n\r\n"
        "[HKEY_CURRENT_USER\\A]\r\n\"w\"=\"\xD0\x96\"\r\n\"old\"=-\r\n");
  auto opened = OpenRegFile(folder / "sample.reg", MakeHostFiles(), std::chrono::system_clock::now);
  if (opened.store == nullptr) return EXIT_FAILURE;
  RegistryStore& store = *opened.store;
  store.GiveKey("A\\Mail", Import::Replaces);
  store.BeginBatch();
  KeyHandle key = 0;
  store.CreateKey("A\\Mail\\000", key);
  const auto text = [&](std::string_view name, ValueKind kind, std::string_view data) {
    store.SetValue(key, name, kind, data);
  };
  text("", ValueKind::String, std::string("x\0", 2));
  text("Name", ValueKind::String, std::string("\xE9t\xE9 \"\\\0", 7));
  text("Break", ValueKind::String, std::string("a\r\nb\0", 5));
  text("Open", ValueKind::String, "a");
  text("Expand", ValueKind::ExpandString, std::string("%A%\0", 4));
  text("Multi", ValueKind::MultiString, std::string("a\0b\0\0", 5));
  text("Version", ValueKind::Dword, std::string("\0\0\5\0", 4));
  text("Quote\"d\\", ValueKind::Binary, "");
  std::string words;
  for (int i = 0; i < 60; ++i) words += static_cast<char>(i);
  text("Value", ValueKind::Binary, words);
  text("Kind", static_cast<ValueKind>(11), "12345678");
  return store.CommitBatch(false) == CommitOutcome::Done ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

}  // namespace morvelle

int main(int count, char** arguments) {
  if (count == 2) return morvelle::WriteSample(arguments[1]);
  std::cerr << "reg_file_sample FOLDER\n";
  return EXIT_FAILURE;
}
