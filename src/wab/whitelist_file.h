#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvelle {

/// K9's web site, named in the head of a whitelist that has none of its own.
inline constexpr std::string_view kK9Site = "http://keir.net/k9.html";

/// The whitelist of K9, from what the file holds and the addresses of the book: the lines before
/// its first address, or a head of our own, then a line "From :" for each address. The first
/// address line of the file does not count: its address stays only when the book has it too.
std::string MergedWhitelist(std::string_view file, std::vector<std::string> addresses);

}  // namespace morvelle
