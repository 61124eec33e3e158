// reg_file_sample FOLDER: writes a `.reg` file through the store, and the smallest hive that a
// reader of hives takes, for that reader to merge the one into the other.

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <string>
#include <utility>

#include "app/messages/text.h"
#include "platform/registry_regfile.h"

namespace morvelle {

namespace {

void Put(std::string& bytes, std::size_t at, std::uint32_t number, std::size_t count = 4) {
  for (std::size_t i = 0; i < count; ++i) bytes[at + i] = static_cast<char>(number >> (8 * i));
}

void Put(std::string& bytes, std::initializer_list<std::pair<std::size_t, std::uint32_t>> numbers) {
  for (const auto& [at, number] : numbers) Put(bytes, at, number);
}

void Put(std::string& bytes, std::size_t at, std::string_view text) {
  bytes.replace(at, text.size(), text);
}

/// A hive with nothing but its root: base block, one bin with the root key, its security and a free
/// cell, as the layout of the files of Windows NT is documented.
std::string EmptyHive() {
  constexpr std::uint32_t kBlock = 4096;
  constexpr std::uint32_t kNone = 0xFFFFFFFF;
  constexpr std::uint32_t kRoot = 0x20;  // Offsets of cells count from the first bin.
  constexpr std::uint32_t kRootSize = 0x60;
  constexpr std::uint32_t kSecurity = kRoot + kRootSize;
  constexpr std::uint32_t kSecuritySize = 0x30;
  constexpr std::uint32_t kFree = kSecurity + kSecuritySize;
  std::string hive(std::size_t{2} * kBlock, '\0');
  Put(hive, 0, "regf");
  // Sequence numbers, version 1.3, format, root, size, clusters.
  Put(hive, {{4, 1}, {8, 1}, {0x14, 1}, {0x18, 3}, {0x20, 1}, {0x24, kRoot}});
  Put(hive, {{0x28, kBlock}, {0x2C, 1}});
  std::uint32_t checksum = 0;
  for (std::size_t at = 0; at < 0x1FC; at += 4) {
    for (std::size_t i = 0; i < 4; ++i) {
      checksum ^= static_cast<std::uint32_t>(static_cast<unsigned char>(hive[at + i])) << (8 * i);
    }
  }
  Put(hive, 0x1FC, checksum);

  Put(hive, kBlock, "hbin");
  Put(hive, kBlock + 8, kBlock);
  const std::size_t root = kBlock + kRoot;
  Put(hive, root, 0U - kRootSize);
  Put(hive, root + 4, "nk");
  Put(hive, root + 6, 0x2C, 2);  // Root of a hive, name of single bytes.
  Put(hive, {{root + 0x14, kNone}, {root + 0x20, kNone}, {root + 0x24, kNone}});
  Put(hive, {{root + 0x2C, kNone}, {root + 0x30, kSecurity}, {root + 0x34, kNone}});
  Put(hive, root + 0x4C, 4, 2);
  Put(hive, root + 0x50, "ROOT");

  const std::size_t security = kBlock + kSecurity;
  Put(hive, security + 4, "sk");
  Put(hive,
      {{security, 0U - kSecuritySize}, {security + 8, kSecurity}, {security + 12, kSecurity}});
  Put(hive, {{security + 16, 1}, {security + 20, 20}});  // A self-relative descriptor,
  Put(hive, security + 24, 1, 1);                        // nothing in it.
  Put(hive, security + 26, 0x8000, 2);
  Put(hive, kBlock + kFree, kBlock - kFree);
  return hive;
}

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
  store.GiveKeyWhole("A\\Mail");
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
