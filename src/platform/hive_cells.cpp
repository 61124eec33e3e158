#include "platform/hive_cells.h"

#include <algorithm>

#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr std::size_t kLengthSize = 4;  // In front of a cell's content.
constexpr std::size_t kCellUnit = 8;
constexpr std::size_t kBinHead = 0x20;
constexpr std::size_t kBinTime = 0x14;

void PutNumber(std::string& bytes, std::size_t at, std::uint64_t number, std::size_t size = 4) {
  for (std::size_t i = 0; i < size; ++i) bytes[at + i] = static_cast<char>(number >> (8 * i));
}

std::size_t RoundedUp(std::size_t size, std::size_t unit) {
  return (size + unit - 1) / unit * unit;
}

}  // namespace

std::uint64_t HiveNumber(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < size; ++i) {
    number |= std::uint64_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
  }
  return number;
}

std::uint32_t HiveChecksum(std::string_view bytes) {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at < hive::kChecksum; at += 4) {
    sum ^= static_cast<std::uint32_t>(HiveNumber(bytes, at));
  }
  return sum;
}

HiveCells::HiveCells(std::string_view bytes)
    : bytes_(bytes),
      minor_(static_cast<std::uint32_t>(HiveNumber(bytes, hive::kMinor))),
      end_(hive::kBlock + HiveNumber(bytes, hive::kBinsSize)) {
  if (end_ > bytes_.size()) throw HiveError("il est incomplet");
}

std::string_view HiveCells::Content(std::uint32_t cell) const {
  const std::size_t at = std::size_t{hive::kBlock} + cell;
  if (cell % kCellUnit == 0 && at + kLengthSize <= end_) {
    // In use when negative.
    const auto length = 0U - static_cast<std::uint32_t>(HiveNumber(bytes_, at));
    if (length >= kCellUnit && length <= end_ - at) {
      return std::string_view(bytes_).substr(at + kLengthSize, length - kLengthSize);
    }
  }
  throw HiveError("il est endommagé"_cp);
}

std::uint32_t HiveCells::Number(std::uint32_t cell, std::size_t at, std::size_t size) const {
  const auto content = Content(cell);
  if (at + size > content.size()) throw HiveError("il est endommagé"_cp);
  return static_cast<std::uint32_t>(HiveNumber(content, at, size));
}

bool HiveCells::Is(std::uint32_t cell, std::string_view kind) const {
  return Content(cell).starts_with(kind);
}

std::u16string HiveCells::KeyName(std::uint32_t key) const {
  const bool isLatin = (Number(key, hive::kKeyFlags, 2) & hive::kKeyNameIsLatin) != 0;
  return Name(key, hive::kKeyName, Number(key, hive::kKeyNameSize, 2), isLatin);
}

std::u16string HiveCells::ValueName(std::uint32_t value) const {
  const bool isLatin = (Number(value, hive::kValueFlags, 2) & hive::kValueNameIsLatin) != 0;
  return Name(value, hive::kValueName, Number(value, hive::kValueNameSize, 2), isLatin);
}

std::u16string HiveCells::Name(std::uint32_t cell, std::size_t at, std::size_t size,
                               bool isLatin) const {
  const auto content = Content(cell);
  if (at + size > content.size()) throw HiveError("il est endommagé"_cp);
  const std::size_t unit = isLatin ? 1 : 2;
  std::u16string name;
  for (std::size_t i = 0; i + unit <= size; i += unit) {
    name += static_cast<char16_t>(HiveNumber(content, at + i, unit));
  }
  return name;
}

void HiveCells::Put(std::uint32_t cell, std::size_t at, std::uint64_t number, std::size_t size) {
  if (at + size > Content(cell).size()) throw HiveError("il est endommagé"_cp);
  PutNumber(bytes_, hive::kBlock + cell + kLengthSize + at, number, size);
}

void HiveCells::Put(std::uint32_t cell, std::size_t at, std::string_view text) {
  if (at + text.size() > Content(cell).size()) throw HiveError("il est endommagé"_cp);
  bytes_.replace(hive::kBlock + cell + kLengthSize + at, text.size(), text);
}

std::uint32_t HiveCells::Allocate(std::size_t size) {
  const std::size_t length = RoundedUp(size + kLengthSize, kCellUnit);
  if (newBins_.empty() || free_ + length > end_) AddBin(length);
  const std::size_t at = free_;
  free_ += length;
  PutNumber(bytes_, at, 0U - length);
  if (free_ < end_) PutNumber(bytes_, free_, end_ - free_);
  return static_cast<std::uint32_t>(at - hive::kBlock);
}

void HiveCells::AddBin(std::size_t contentSize) {
  const std::size_t size = RoundedUp(kBinHead + contentSize, hive::kBlock);
  const std::size_t at = end_;
  // Cells are named by 31 bits and their highest name must not be kNone.
  if (at + size > std::size_t{0x7FFFFFFF}) throw HiveError("il serait trop grand");
  end_ += size;
  // Windows lets its files be longer than what they hold.
  if (bytes_.size() < end_) bytes_.resize(end_);
  std::fill_n(bytes_.begin() + static_cast<std::ptrdiff_t>(at), size, '\0');
  bytes_.replace(at, 4, "hbin");
  PutNumber(bytes_, at + 4, at - hive::kBlock);
  PutNumber(bytes_, at + 8, size);
  newBins_.push_back(at);
  free_ = at + kBinHead;
}

void HiveCells::Free(std::uint32_t cell) {
  const std::size_t length = Content(cell).size() + kLengthSize;
  PutNumber(bytes_, hive::kBlock + cell, length);
}

std::string HiveCells::Finish(std::uint64_t time) {
  const auto sequence = HiveNumber(bytes_, hive::kSequence1) + 1;
  PutNumber(bytes_, hive::kSequence1, sequence);
  PutNumber(bytes_, hive::kSequence2, sequence);
  PutNumber(bytes_, hive::kWritten, time, 8);
  PutNumber(bytes_, hive::kBinsSize, end_ - hive::kBlock);
  for (const std::size_t bin : newBins_) PutNumber(bytes_, bin + kBinTime, time, 8);
  PutNumber(bytes_, hive::kChecksum, HiveChecksum(bytes_));
  return std::move(bytes_);
}

}  // namespace morvelle
