#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/hive_cells.h"

namespace morvelle {

/// A hive with nothing but its root: base block, one bin with the root key, its security and a free
/// cell, as the layout of the files of Windows NT is documented. Version 1.3 is that of Windows
/// XP's users, 1.5 came with it.
inline std::string EmptyHive(std::uint32_t minor = 3) {
  constexpr std::uint32_t kRoot = 0x20;  // Offsets of cells count from the first bin.
  constexpr std::uint32_t kRootSize = 0x60;
  constexpr std::uint32_t kSecurity = kRoot + kRootSize;
  constexpr std::uint32_t kSecuritySize = 0x30;
  constexpr std::uint32_t kFree = kSecurity + kSecuritySize;
  constexpr std::uint32_t kBlock = hive::kBlock;
  std::string bytes(std::size_t{2} * kBlock, '\0');
  const auto put = [&bytes](std::size_t at, std::uint32_t number, std::size_t count = 4) {
    for (std::size_t i = 0; i < count; ++i) bytes[at + i] = static_cast<char>(number >> (8 * i));
  };
  const auto text = [&bytes](std::size_t at, std::string_view letters) {
    bytes.replace(at, letters.size(), letters);
  };
  text(0, "regf");
  put(hive::kSequence1, 1);
  put(hive::kSequence2, 1);
  put(hive::kMajor, 1);
  put(hive::kMinor, minor);
  put(0x20, 1);
  put(hive::kRootCell, kRoot);
  put(hive::kBinsSize, kBlock);
  put(0x2C, 1);
  put(hive::kChecksum, HiveChecksum(bytes));

  text(kBlock, "hbin");
  put(kBlock + 8, kBlock);
  const std::size_t root = kBlock + kRoot;
  put(root, 0U - kRootSize);
  text(root + 4, "nk");
  put(root + 6, 0x2C, 2);  // Root of a hive, name of single bytes.
  put(root + 0x14, hive::kNone);
  put(root + 0x20, hive::kNone);
  put(root + 0x24, hive::kNone);
  put(root + 0x2C, hive::kNone);
  put(root + 0x30, kSecurity);
  put(root + 0x34, hive::kNone);
  put(root + 0x4C, 4, 2);
  text(root + 0x50, "ROOT");

  const std::size_t security = kBlock + kSecurity;
  put(security, 0U - kSecuritySize);
  text(security + 4, "sk");
  put(security + 8, kSecurity);
  put(security + 12, kSecurity);
  put(security + 16, 1);
  put(security + 20, 20);  // A self-relative descriptor with nothing in it.
  put(security + 24, 1, 1);
  put(security + 26, 0x8000, 2);
  put(kBlock + kFree, kBlock - kFree);
  return bytes;
}

}  // namespace morvelle
