#include <system_error>
#include <vector>

#include "platform/real_path.h"

namespace morvelle {

namespace {

using std::filesystem::path;

/// As many links as the system itself follows for one path.
constexpr int kMostLinks = 40;

/// The names of a path from its root on, the last one first.
std::vector<path> NamesBackwards(const path& place) {
  const auto below = place.relative_path();
  std::vector<path> names(below.begin(), below.end());
  return {names.rbegin(), names.rend()};
}

}  // namespace

// std::filesystem::weakly_canonical takes a link that leads to nothing for a name that is free.
std::optional<path> RealPath(const path& place, const path& /*start*/) {
  std::error_code error;
  const auto whole = std::filesystem::absolute(place, error);
  auto real = whole.root_path();
  auto names = NamesBackwards(whole);
  int links = 0;
  while (!error && !names.empty()) {
    const auto name = std::move(names.back());
    names.pop_back();
    if (name.empty() || name == ".") continue;
    if (name == "..") {
      real = real.parent_path();
      continue;
    }
    auto next = real / name;
    const auto type = std::filesystem::symlink_status(next, error).type();
    if (type == std::filesystem::file_type::not_found) error.clear();
    if (type != std::filesystem::file_type::symlink) {
      real = std::move(next);
      continue;
    }
    if (++links > kMostLinks) return std::nullopt;
    const auto target = std::filesystem::read_symlink(next, error);
    if (target.is_absolute()) real = target.root_path();
    const auto further = NamesBackwards(target);
    names.insert(names.end(), further.begin(), further.end());
  }
  if (error) return std::nullopt;
  return real;
}

bool MayBeFileName(std::string_view /*name*/) { return true; }

}  // namespace morvelle
