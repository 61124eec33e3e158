#include "files/line_sink.h"

#include <algorithm>

#include "app/messages/text.h"

namespace morvelle {

namespace {

constexpr char kStandIn = "·"_cp[0];

}  // namespace

void LineSink::Line(int indent, std::string_view text) {
  if (!OnPaper()) {
    text_ += text;
    text_ += "\r\n";
    return;
  }
  auto& line = lines_.emplace_back(static_cast<std::size_t>(indent), ' ');
  line += text;
  std::replace_if(line.begin(), line.end(), IsControlCharacter, kStandIn);
}

void LineSink::Marker(std::string_view marker) {
  if (!OnPaper()) Line(0, marker);
}

void LineSink::Gap() {
  if (OnPaper()) lines_.emplace_back();
}

}  // namespace morvelle
