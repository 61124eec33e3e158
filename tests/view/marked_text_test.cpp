#include "view/marked_text.h"

#include <gtest/gtest.h>

#include <map>

#include "app/messages/text.h"

namespace morvelle {
namespace {

/// A font in which the star is 7 wide, a blank 4, an em space 14 and so on.
int WidthOf(const wxString& text) {
  const std::map<wxUint32, int> widths = {
      {'*', 7}, {' ', 4}, {0x2002, 8}, {0x2003, 14}, {0x2009, 3}};
  int width = 0;
  for (const wxUniChar character : text) {
    const auto found = widths.find(character.GetValue());
    width += found == widths.end() ? 1 : found->second;
  }
  return width;
}

TEST(MarkedText, NamesStandInOneColumnWhateverTheMarkerAndTheFont) {
  const MarkedText marked(WidthOf);
  const auto active = marked.Show("*\t000 Nom");
  const auto idle = marked.Show(" \t000 Nom");
  EXPECT_TRUE(active.StartsWith("*"));
  EXPECT_TRUE(active.EndsWith("000 Nom"));
  EXPECT_TRUE(idle.EndsWith("000 Nom"));
  EXPECT_FALSE(active.Contains("\t"));
  EXPECT_EQ(WidthOf(active), WidthOf(idle));
  EXPECT_EQ(marked.Show("* 000 Nom"), active) << "the list has a blank where the menus have a tab";
}

TEST(MarkedText, ATextWithoutMarkerStaysAndControlCharactersAreBlanks) {
  const MarkedText marked(WidthOf);
  EXPECT_EQ(marked.Show("00A Publicit\u00E9s"_cp), wxString::FromUTF8("00A Publicit\u00E9s"));
  EXPECT_TRUE(marked.Show("*\t000 a\tb\rc").EndsWith("000 a b c"));
  EXPECT_EQ(marked.Show(""), "");
  EXPECT_EQ(marked.Show("*"), "*");
}

}  // namespace
}  // namespace morvelle
