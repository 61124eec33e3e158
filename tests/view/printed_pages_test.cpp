#include "platform/printed_pages_wx.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "app/messages/text.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

constexpr std::string_view kAccents = "               Été œuvre €"_cp;

/// A listing printed to a PDF file by the desktop's printing, and read back by another program.
class PrintedPagesTest : public testing::Test {
 protected:
  void Print(const std::vector<std::string>& lines) {
    wxPrintData data;
    data.SetPaperId(wxPAPER_A4);
    data.SetPrintMode(wxPRINT_MODE_FILE);
    data.SetFilename((folder_ / "pages.pdf").string());
    wxPrintDialogData choices(data);
    wxPrinter printer(&choices);
    PrintedPages pages("Essai", lines);
    ASSERT_TRUE(printer.Print(nullptr, &pages, false)) << wxPrinter::GetLastError();
    ASSERT_TRUE(std::filesystem::exists(folder_ / "pages.pdf"));
  }
  std::string Read(const std::string& options) {
    const auto text = (folder_ / "pages.txt").string();
    const auto command =
        "pdftotext " + options + " '" + (folder_ / "pages.pdf").string() + "' '" + text + "'";
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

  TempFolder folder_;
};

TEST_F(PrintedPagesTest, EveryLineIsThereWithThePageNumberBelow) {
  std::vector<std::string> lines = {"     MAIL", "", std::string(kAccents)};
  for (int k = 0; k < 150; ++k) lines.push_back(std::string(25, ' ') + "mot" + std::to_string(k));
  Print(lines);
  std::vector<std::string> read;
  const auto pages = Pages();
  EXPECT_GE(pages.size(), 3U);
  for (std::size_t page = 0; page < pages.size(); ++page) {
    ASSERT_GE(pages[page].size(), 2U);
    EXPECT_EQ(pages[page].back(), std::to_string(page + 1));
    read.insert(read.end(), pages[page].begin(), pages[page].end() - 1);
  }
  std::vector<std::string> expected;
  for (const auto& line : lines) {
    if (!line.empty()) expected.push_back(ToUtf8(line.substr(line.find_first_not_of(' '))));
  }
  EXPECT_EQ(read, expected);
}

TEST_F(PrintedPagesTest, NothingRunsOffThePaper) {
  const auto longWord = [] {
    std::string word;
    for (int k = 0; k < 600; ++k) word += static_cast<char>('a' + k % 26);
    return word;
  }();
  Print({std::string(25, ' ') + longWord, "fin"});
  std::string joined;
  for (const auto& line : Pages().at(0)) joined += line;
  EXPECT_EQ(joined, longWord + "fin1");
  const auto boxes = Read("-bbox");
  // In points: A4 is 595 wide and 842 high, the margins are 20 mm.
  const std::regex word(R"(xMin="([\d.]+)" yMin = "([\d.]+)" xMax = "([\d.]+)" yMax =
                            "([\d.]+)") ");
      int words = 0;
  for (std::sregex_iterator at(boxes.begin(), boxes.end(), word), end; at != end; ++at, ++words) {
    EXPECT_GE(std::stod((*at)[1]), 55);
    EXPECT_GE(std::stod((*at)[2]), 50);
    EXPECT_LE(std::stod((*at)[3]), 541);
    EXPECT_LE(std::stod((*at)[4]), 810);
  }
  EXPECT_GT(words, 8);
}

}  // namespace
}  // namespace morvelle
