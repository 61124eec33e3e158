#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace morvelle {

/// Why a hive cannot be read or written: what() is French, Windows-1252, without capital or full
/// stop.
class HiveError : public std::runtime_error {
 public:
  explicit HiveError(std::string_view reason) : std::runtime_error(std::string(reason)) {}
};

/// Where things stand in a hive file of Windows NT ("regf", versions 1.2 to 1.6), as its layout is
/// publicly documented and as hivex reads it. Offsets of a cell's fields count from its content,
/// which stands behind 4 bytes of length.
namespace hive {

inline constexpr std::uint32_t kBlock = 4096;  ///< Bytes of the base block; unit of a bin's size.
inline constexpr std::uint32_t kNone = 0xFFFFFFFF;  ///< Instead of a cell where there is none.

// Base block.
inline constexpr std::size_t kSequence1 = 0x04;
inline constexpr std::size_t kSequence2 = 0x08;
inline constexpr std::size_t kWritten = 0x0C;  ///< FILETIME.
inline constexpr std::size_t kMajor = 0x14;
inline constexpr std::size_t kMinor = 0x18;
inline constexpr std::size_t kFileType = 0x1C;  ///< 0 for a hive, others for its journals.
inline constexpr std::size_t kRootCell = 0x24;
inline constexpr std::size_t kBinsSize = 0x28;
inline constexpr std::size_t kChecksum = 0x1FC;

// Key, "nk".
inline constexpr std::size_t kKeyFlags = 0x02;
inline constexpr std::uint32_t kKeyNameIsLatin = 0x20;
inline constexpr std::size_t kKeyTime = 0x04;  ///< FILETIME.
inline constexpr std::size_t kKeyParent = 0x10;
inline constexpr std::size_t kKeySubkeyCount = 0x14;
inline constexpr std::size_t kKeySubkeys = 0x1C;
inline constexpr std::size_t kKeyVolatileSubkeys = 0x20;
inline constexpr std::size_t kKeyValueCount = 0x24;
inline constexpr std::size_t kKeyValues = 0x28;
inline constexpr std::size_t kKeySecurity = 0x2C;
inline constexpr std::size_t kKeyClass = 0x30;
inline constexpr std::size_t kKeyLongestSubkeyName = 0x34;  ///< Bytes as UTF-16; 16 bits.
inline constexpr std::size_t kKeyLongestValueName = 0x3C;   ///< Bytes as UTF-16.
inline constexpr std::size_t kKeyLargestValue = 0x40;
inline constexpr std::size_t kKeyNameSize = 0x48;
inline constexpr std::size_t kKeyName = 0x4C;

// Value, "vk".
inline constexpr std::size_t kValueNameSize = 0x02;
inline constexpr std::size_t kValueSize = 0x04;
inline constexpr std::uint32_t kValueIsInPlace = 0x80000000;  ///< In the size: data of 4 bytes.
inline constexpr std::size_t kValueData = 0x08;
inline constexpr std::size_t kValueKind = 0x0C;
inline constexpr std::size_t kValueFlags = 0x10;
inline constexpr std::uint32_t kValueNameIsLatin = 1;
inline constexpr std::size_t kValueName = 0x14;

// Data in pieces, "db": from version 1.4 on, Windows takes larger values in no other form.
inline constexpr std::uint32_t kFirstMinorWithPieces = 4;
inline constexpr std::size_t kPieceSize = 16344;
inline constexpr std::size_t kPieceCount = 0x02;
inline constexpr std::size_t kPieceList = 0x04;

// Security, "sk", a ring of cells.
inline constexpr std::size_t kSecurityNext = 0x04;
inline constexpr std::size_t kSecurityPrevious = 0x08;
inline constexpr std::size_t kSecurityUses = 0x0C;

}  // namespace hive

/// The bytes of a hive and the cells in them. Cells are named as the hive names them, by their
/// offset from the first bin. New cells stand in new bins behind the old ones: space that the hive
/// calls free is left to Windows.
class HiveCells {
 public:
  /// Of a file that was recognized as a hive.
  explicit HiveCells(std::string_view bytes);

  [[nodiscard]] std::uint32_t Minor() const { return minor_; }
  /// Content of a cell in use, good until the next Allocate.
  [[nodiscard]] std::string_view Content(std::uint32_t cell) const;
  /// A number of `size` bytes in a cell.
  [[nodiscard]] std::uint32_t Number(std::uint32_t cell, std::size_t at,
                                     std::size_t size = 4) const;
  /// True when the cell is in use and starts with these two letters.
  [[nodiscard]] bool Is(std::uint32_t cell, std::string_view kind) const;
  /// Name of a key or value as UTF-16.
  [[nodiscard]] std::u16string KeyName(std::uint32_t key) const;
  [[nodiscard]] std::u16string ValueName(std::uint32_t value) const;

  void Put(std::uint32_t cell, std::size_t at, std::uint64_t number, std::size_t size = 4);
  void Put(std::uint32_t cell, std::size_t at, std::string_view text);
  /// A new cell whose content has that many zero bytes, or a few more.
  std::uint32_t Allocate(std::size_t size);
  void Free(std::uint32_t cell);

  /// The whole file with a header that fits it, last written at `time` (FILETIME).
  std::string Finish(std::uint64_t time);

 private:
  void AddBin(std::size_t contentSize);
  [[nodiscard]] std::u16string Name(std::uint32_t cell, std::size_t at, std::size_t size,
                                    bool isLatin) const;

  std::string bytes_;
  std::uint32_t minor_;
  std::size_t end_;       ///< Of the bins, in the file.
  std::size_t free_ = 0;  ///< Start of what is left of the last new bin.
  std::vector<std::size_t> newBins_;
};

/// A little-endian number of up to 8 bytes.
std::uint64_t HiveNumber(std::string_view bytes, std::size_t at, std::size_t size = 4);
/// Exclusive or of the 32-bit numbers before it in the base block.
std::uint32_t HiveChecksum(std::string_view bytes);

}  // namespace morvelle
