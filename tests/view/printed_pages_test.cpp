#include <wx/timer.h>
#include <wx/uiaction.h>

#include <cstdlib>
#include <regex>
#include <sstream>

#include "app/messages/text.h"
#include "platform/printer_wx.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

constexpr std::string_view kAccents = "               Été œuvre €"_cp;

/// A listing printed to a PDF file through the printer dialog, and read back by another program.
class PrintedPagesTest : public testing::Test {
 protected:
  PrintedPagesTest() {
    // Printing to a file proposes the current folder.
    std::filesystem::current_path(folder_.Path());
    user_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { UseDialog(); });
  }
  ~PrintedPagesTest() override { std::filesystem::current_path(before_); }

  void Print(const std::vector<std::string>& lines) {
    WxDialogs boxes;
    WxPrinter printer(boxes);
    user_.Start(500);
    EXPECT_EQ(printer.Print("Essai", lines), PrintOutcome::Printed);
    user_.Stop();
    // The file's name is the toolkit's, in its language.
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
      if (entry.path().extension() == ".pdf") pdf_ = entry.path();
    }
    ASSERT_FALSE(pdf_.empty());
  }
  /// The printer dialog is the toolkit's own: its one printer, a file, is chosen by the keyboard.
  void UseDialog() {
    wxUIActionSimulator keys;
    ++ticks_;
    // Through the list of printers, which chooses its first, to where the file is set.
    for (int k = 0; ticks_ == 4 && k < 3; ++k) keys.Char(WXK_TAB);
    if (ticks_ == 6) keys.Char('P', wxMOD_ALT);
    // "Imprimer", where the toolkit speaks French.
    if (ticks_ == 8) keys.Char('I', wxMOD_ALT);
    if (ticks_ == 20) keys.Char(WXK_ESCAPE);
  }
  std::string Read(const std::string& options) {
    const auto text = (folder_ / "pages.txt").string();
    const auto command = "pdftotext " + options + " '" + pdf_.string() + "' '" + text + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return ReadFile(text);
  }
  /// The lines of each page without the blanks around them, empty ones left out.
  std::vector<std::vector<std::string>> Pages() {
    std::vector<std::vector<std::string>> pages;
    std::istringstream text(Read("-layout"));
    for (std::string page; std::getline(text, page, '\f');) {
      auto& lines = pages.emplace_back();
      std::istringstream content(page);
      for (std::string line; std::getline(content, line);) {
        const auto first = line.find_first_not_of(' ');
        if (first != std::string::npos) lines.push_back(line.substr(first));
      }
    }
    return pages;
  }

  std::filesystem::path before_ = std::filesystem::current_path();
  TempFolder folder_;
  std::filesystem::path pdf_;
  wxTimer user_;
  int ticks_ = 0;
};

TEST_F(PrintedPagesTest, EveryLineIsOnThePaperWithThePageNumberBelow) {
  std::vector<std::string> lines = {"     MAIL", "", std::string(kAccents)};
  for (int k = 0; k < 150; ++k) lines.push_back(std::string(25, ' ') + "mot" + std::to_string(k));
  std::string longWord(25, ' ');
  for (int k = 0; k < 600; ++k) longWord += static_cast<char>('a' + k % 26);
  lines.push_back(longWord);
  Print(lines);
  std::string read;
  const auto pages = Pages();
  EXPECT_GE(pages.size(), 3U);
  for (std::size_t page = 0; page < pages.size(); ++page) {
    ASSERT_GE(pages[page].size(), 2U);
    EXPECT_EQ(pages[page].back(), std::to_string(page + 1));
    for (std::size_t k = 0; k + 1 < pages[page].size(); ++k) read += pages[page][k];
  }
  std::string expected;
  for (const auto& line : lines) {
    if (!line.empty()) expected += ToUtf8(line.substr(line.find_first_not_of(' ')));
  }
  EXPECT_EQ(read, expected);
  const auto boxes = Read("-bbox");
  // In points: A4 is 595 wide and 842 high, the margins are 20 mm.
  const std::regex word(R"re(xMin="(.*?)" yMin="(.*?)" xMax="(.*?)" yMax="(.*?)")re");
  int words = 0;
  for (std::sregex_iterator at(boxes.begin(), boxes.end(), word), end; at != end; ++at, ++words) {
    EXPECT_GE(std::stod((*at)[1]), 55);
    EXPECT_GE(std::stod((*at)[2]), 50);
    EXPECT_LE(std::stod((*at)[3]), 541);
    EXPECT_LE(std::stod((*at)[4]), 825);
  }
  EXPECT_GT(words, 160);
}

}  // namespace
}  // namespace morvelle
