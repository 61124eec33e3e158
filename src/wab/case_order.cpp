#include "wab/case_order.h"

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numeric>
#include <string_view>

#include "app/messages/text.h"

namespace morvelle {

namespace {

/// For each byte, the place of its lower case in the order of the code page's characters: texts
/// written in these compare byte by byte as they do by their lower case.
std::array<char, 256> PlacesInOrder() {
  std::array<char, 256> bytes{};
  std::iota(bytes.begin(), bytes.end(), '\0');
  auto ordered = bytes;
  std::sort(ordered.begin(), ordered.end(),
            [](char left, char right) { return CodeUnitOf(left) < CodeUnitOf(right); });
  std::array<char, 256> places{};
  for (const char byte : bytes) {
    const auto place = std::find(ordered.begin(), ordered.end(), LowerCase(byte));
    places[static_cast<unsigned char>(byte)] = static_cast<char>(place - ordered.begin());
  }
  return places;
}

std::vector<std::string> KeysOf(const std::vector<std::string>& texts) {
  const auto places = PlacesInOrder();
  auto keys = texts;
  for (auto& key : keys) {
    for (auto& byte : key) byte = places[static_cast<unsigned char>(byte)];
  }
  return keys;
}

using Position = std::uint32_t;

/// The positions of the texts of one key, the smallest on top.
class PositionHeap {
 public:
  /// Positions are given in ascending order at first, which is a heap already.
  void Append(Position position) { heap_.push_back(position); }
  void Push(Position position) {
    heap_.push_back(position);
    std::push_heap(heap_.begin(), heap_.end(), std::greater<>());
  }
  Position Pop() {
    std::pop_heap(heap_.begin(), heap_.end(), std::greater<>());
    const auto position = heap_.back();
    heap_.pop_back();
    return position;
  }

 private:
  std::vector<Position> heap_;
};

}  // namespace

void SortByLowerCase(std::vector<std::string>& texts) {
  const auto count = static_cast<Position>(texts.size());
  const auto keys = KeysOf(texts);
  std::vector<Position> byKey(count);
  std::iota(byKey.begin(), byKey.end(), Position{0});
  std::sort(byKey.begin(), byKey.end(), [&](Position left, Position right) {
    const auto order = keys[left] <=> keys[right];
    return std::is_lt(order) || (std::is_eq(order) && left < right);
  });
  std::vector<PositionHeap> heaps;
  std::vector<Position> sizes;
  /// The heap of the text that stands at a position now.
  std::vector<Position> heapAt(count);
  for (Position i = 0; i < count; ++i) {
    const auto position = byKey[i];
    if (i == 0 || keys[position] != keys[byKey[i - 1]]) {
      heaps.emplace_back();
      sizes.push_back(0);
    }
    heaps.back().Append(position);
    ++sizes.back();
    heapAt[position] = static_cast<Position>(heaps.size() - 1);
  }
  Position next = 0;
  for (std::size_t key = 0; key < heaps.size(); ++key) {
    for (Position placed = 0; placed < sizes[key];) {
      const auto found = heaps[key].Pop();
      // A text that was swapped away from there, and stands in its heap a second time.
      if (found < next) continue;
      if (found != next) {
        std::swap(texts[next], texts[found]);
        std::swap(heapAt[next], heapAt[found]);
        heaps[heapAt[found]].Push(found);
      }
      ++next;
      ++placed;
    }
  }
}

void KeepLastOfEach(std::vector<std::string>& texts) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i + 1 < texts.size() && EqualIgnoringCase(texts[i], texts[i + 1])) continue;
    if (kept != i) texts[kept] = std::move(texts[i]);
    ++kept;
  }
  texts.resize(kept);
}

}  // namespace morvelle
