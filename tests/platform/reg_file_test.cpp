// The reader and the writer of `.reg` files: text in, whole file expected.

#include <gtest/gtest.h>

#include <ostream>

#include "app/messages/text.h"
#include "platform/reg_file_reader.h"
#include "platform/reg_file_text.h"
#include "platform/reg_file_writer.h"

namespace morvelle {

namespace {

constexpr std::string_view kFive = "Windows Registry Editor Version 5.00\r\n";
constexpr std::string_view kFour = "REGEDIT4\r\n";

std::string WholeFile(const RegistryTree& tree, const RegFileFormat& format) {
  RegFileContent content(tree, format);
  std::string file;
  for (auto piece = content.Next(); !piece.empty(); piece = content.Next()) file += piece;
  return file;
}

/// A file read and written back; nothing when its header is refused.
std::optional<std::string> RoundTrip(std::string_view bytes) {
  RegFileText text;
  if (!DecodeRegFile(bytes, text)) return std::nullopt;
  RegistryTree tree;
  ReadRegText(text.body, text.format.version, tree);
  return WholeFile(tree, text.format);
}

std::string Utf16(std::string_view utf8) {
  const auto wide = *Utf16FromUtf8(utf8);
  return "\xFF\xFE" + std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
}

std::string File(std::string_view header, std::string_view body) {
  return std::string(header).append("\r\n").append(body).append("\r\n");
}

struct Case {
  const char* what;
  std::string_view in;
  std::string_view out;  ///< The whole file behind the header and its empty line.
};

void PrintTo(const Case& given, std::ostream* out) { *out << given.what; }

class RegText : public testing::TestWithParam<Case> {};

TEST_P(RegText, IsWrittenBackAs) {
  const Case& given = GetParam();
  const std::string in = std::string(kFive) + std::string(given.in);
  const std::string out = File(kFive, given.out);
  EXPECT_EQ(RoundTrip(Utf16(in)), Utf16(out));
  EXPECT_EQ(RoundTrip(Utf16(out)), Utf16(out)) << "what was written is not read as it was meant";
  EXPECT_EQ(RoundTrip("\xEF\xBB\xBF" + in), "\xEF\xBB\xBF" + out);
}

constexpr Case kCases[] = {
    {"every plain form",
     "[HKEY_CURRENT_USER\\A]\n@=\"d\"\n\"s\"=\"a\\\\b\\\"c\\n\"\n\"n\"=dword:1F\n\"b\"=hex:1,fF\n",
     "[HKEY_CURRENT_USER\\A]\r\n@=\"d\"\r\n\"s\"=\"a\\\\b\\\"c\\\\n\"\r\n\"n\"=dword:0000001f\r\n"
     "\"b\"=hex:01,ff\r\n"},
    {"other roots, unknown types, letter case and order",
     "\r\n[HKEY_USERS\\S-1-5\\b]\r\"z\"=hex(80000001):00\r\"a\"=hex(b):01,02,\r[hkey_users\\s-1-5\\"
     "A]\r[Else]\r",
     "[HKEY_USERS\\S-1-5\\b]\r\n\"z\"=hex(80000001):00\r\n\"a\"=hex(b):01,02\r\n\r\n"
     "[HKEY_USERS\\S-1-5\\A]\r\n\r\n[Else]\r\n"},
    {"strings that only bytes can hold",
     "[A\\B]\r\n\"odd\"=hex(1):61\r\n\"open\"=hex(1):61,00\r\n\"none\"=hex(1):\r\n"
     "\"in\"=hex(1):61,00,00,00,62,00,00,00\r\n\"plain\"=hex(1):61,00,00,00\r\n"
     "\"line\"=\"a\r\nb\"\r\n\"alone\"=hex(1):00,d8,00,00\r\n\"dword\"=hex(4):01,00\r\n"
     "\"four\"=hex(4):01,00,00,00\r\n",
     "[A\\B]\r\n\"odd\"=hex(1):61\r\n\"open\"=hex(1):61,00\r\n\"none\"=hex(1):\r\n"
     "\"in\"=hex(1):61,00,00,00,62,00,00,00\r\n\"plain\"=\"a\"\r\n"
     "\"line\"=hex(1):61,00,0d,00,0a,00,62,00,00,00\r\n\"alone\"=hex(1):00,d8,00,00\r\n"
     "\"dword\"=hex(4):01,00\r\n\"four\"=dword:00000001\r\n"},
    {"characters beyond the code page", "[A\\Ж]\n\"Ж\"=\"Привет 😀\"\n",
     "[A\\Ж]\r\n\"Ж\"=\"Привет 😀\"\r\n"},
    {"hexadecimal lines go on, past blank lines and comments",
     "[A\\B]\n\"a\"=hex(2):61,\\ ; why\n\n  ; c\n  00,\\\n 00,00 ; end\n\"b\"=hex:\\\n  01\n",
     "[A\\B]\r\n\"a\"=hex(2):61,00,00,00\r\n\"b\"=hex:01\r\n"},
    {"damaged lines are passed over, kept as remarks, and the rest is read",
     "before\n[A\\B]\n\"big\"=dword:123456789\n\"x\"=hex:0g\n\"y\"=hex:01,\\\n\"z\"=dword:2\n"
     "\"open\"=\"abc\n\"t\"=\"u\"x\n\"k\"=\"v\" ; c\n\"w\" = hex:\n[A\\C\n\"lost\"=dword:1\n[ "
     "A]\n[A\\D ]x\n",
     ";before\r\n[A\\B]\r\n;\"big\"=dword:123456789\r\n;\"x\"=hex:0g\r\n;\"y\"=hex:01,\\\r\n"
     "\"z\"=dword:00000002\r\n;\"open\"=\"abc\r\n;\"t\"=\"u\"x\r\n\"k\"=\"v\"\r\n\"w\"=hex:\r\n\r\n"
     ";[A\\C\r\n;\"lost\"=dword:1\r\n;[ A]\r\n[A\\D ]\r\n"},
    {"remarks keep their places",
     "; head\n\n[A\\B]\n; of a\n\"a\"=dword:1\n# of b\n\"b\"=dword:2\n\n; of C\n[A\\C]\n",
     "; head\r\n[A\\B]\r\n; of a\r\n\"a\"=dword:00000001\r\n# of b\r\n\"b\"=dword:00000002\r\n\r\n"
     "; of C\r\n[A\\C]\r\n"},
    {"later values replace earlier ones, a key may come twice",
     "[A\\B]\n\"a\"=dword:1\n[A\\C]\n[a\\b]\n\"A\"=dword:2\n\"c\"=dword:3\n",
     "[A\\B]\r\n\"A\"=dword:00000002\r\n\"c\"=dword:00000003\r\n\r\n[A\\C]\r\n"},
    {"deleted values", "[A\\B]\n\"a\"=dword:1\n\"b\"=-\n\"a\"=-\n\"b\"=dword:2\n@=-\n",
     "[A\\B]\r\n\"a\"=-\r\n\"b\"=dword:00000002\r\n@=-\r\n"},
    {"a deleted key, what stands under the directive is ignored",
     "[A\\B]\n\"a\"=dword:1\n[A\\B\\C]\n[-a\\b\\]\n\"x\"=dword:1\n[A\\D]\n[-A]\n",
     "[-a\\b]\r\n\r\n;\"x\"=dword:1\r\n[A\\D]\r\n\r\n;[-A]\r\n"},
    {"a deleted key that is given again", "[-A\\B]\n[A\\C]\n[A\\B\\D]\n[A\\B]\n",
     "[A\\C]\r\n\r\n[-A\\B]\r\n\r\n[A\\B\\D]\r\n\r\n[A\\B]\r\n"},
    {"lines break behind column 77",
     "[A\\B]\n\"0123456789\"=hex:00,01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10,11,12,13,14,"
     "15,16,17,18,19,1a,1b,1c,1d,1e,1f,20,21,22,23,24,25,26,27,28,29,2a,2b,2c,2d,2e,2f,30,31\n",
     "[A\\B]\r\n"
     "\"0123456789\"=hex:00,01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10,11,12,13,\\\r\n"
     "  14,15,16,17,18,19,1a,1b,1c,1d,1e,1f,20,21,22,23,24,25,26,27,28,29,2a,2b,2c,\\\r\n"
     "  2d,2e,2f,30,31\r\n"},
    {"a comma with nothing behind it ends the bytes, unless more of them follow",
     "[A\\B]\n\"a\"=hex:01,\n\"b\"=hex:02,\n 03,\n\"c\"=hex:04, ; c\n  5\n\"d\"=hex:06,\nadd\n",
     "[A\\B]\r\n\"a\"=hex:01\r\n;\"b\"=hex:02,\r\n; 03,\r\n;\"c\"=hex:04, ; c\r\n;  5\r\n"
     "\"d\"=hex:06\r\n;add\r\n"},
    {"a file cut short", "[A\\B]\r\n\"a\"=hex(2):01,02,\\\r\n ",
     "[A\\B]\r\n; Morvelle, valeur sans fin : \"a\"=hex(2):01,02\r\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, RegText, testing::ValuesIn(kCases));

TEST(RegFile, Version4IsSingleByte) {
  const std::string body(
      "[A\\\xC9t\xE9]\r\n\"n\"=\"\x80\x81\"\r\n\"m\"=hex(7):61,e9,00,00\r\n"
      "\"e\"=hex(2):80,00\r\n\"s\"=hex(1):e9\r\n");
  EXPECT_EQ(RoundTrip(File(kFour, body)), File(kFour, body));
  RegFileText text;
  ASSERT_TRUE(DecodeRegFile(File(kFour, body), text));
  RegistryTree tree;
  ReadRegText(text.body, 4, tree);
  PathCursor cursor(tree);
  const auto* key = cursor.Find(tree.Top(), u"A\\Été");
  ASSERT_NE(key, nullptr);
  EXPECT_EQ(RegistryTree::FindValue(*key, u"e")->data, std::string("\xAC\x20\0\0", 4));
}

TEST(RegFile, Version5ThatIsNoUtf8IsWindows1252) {
  const std::string one = File(kFive, "[A\\B]\r\n\"n\"=\"\xE9\"\r\n\"w\"=hex(1):16,04,00,00\r\n");
  EXPECT_EQ(RoundTrip(one), one);
  const std::string marked = "\xEF\xBB\xBF" + one;
  EXPECT_EQ(RoundTrip(marked), marked);
  // é stays é although the text that is written would be UTF-8 as well.
  RegistryTree tree;
  RegFileText text;
  ASSERT_TRUE(DecodeRegFile(File(kFive, "[A\\B]\r\n"), text));
  PathCursor cursor(tree);
  auto* key = cursor.Create(tree.Top(), u"A\\B", RegistryTree::Placing::InOrder);
  tree.SetValue(*key, u"n", 1, std::string("\xC3\0\xA9\0\0\0", 6));
  const auto bytes = WholeFile(tree, text.format);
  RegFileText again;
  ASSERT_TRUE(DecodeRegFile(bytes, again));
  EXPECT_NE(again.body.find(u"\"n\"=\"Ã©\""), std::u16string_view::npos);
}

TEST(RegFile, APieceStaysWhileTheNextOneIsMade) {
  // A first piece as long as one gets, then a short one.
  const std::string list = "[A]\r\n\"v\"=\"" + std::string(1U << 18U, 'x') + "\"\r\n\r\n; fin\r\n";
  const auto bodies = {list, std::string("; a\r\n"), std::string()};
  for (const auto& body : bodies) {
    for (const auto& file :
         {File(kFive, body), File(kFour, body), "\xEF\xBB\xBF" + File(kFive, body),
          Utf16(File(kFive, body)), File(kFive, body + "; \xC3\xA9\r\n")}) {
      RegFileText text;
      ASSERT_TRUE(DecodeRegFile(file, text));
      RegistryTree tree;
      ReadRegText(text.body, text.format.version, tree);
      RegFileContent content(tree, text.format);
      std::string found;
      for (auto piece = content.Next(); !piece.empty();) {
        const auto next = content.Next();
        found += piece;
        piece = next;
      }
      EXPECT_EQ(found, WholeFile(tree, text.format));
    }
  }
}

TEST(RegFile, TellsWhetherItsEndIsThere) {
  const auto seems = [](std::string_view tail) {
    RegistryTree tree;
    const auto text = u"[A\\B]\r\n\"a\"=dword:00000001\r\n" + ToUtf16(tail);
    const auto end = ReadRegText(text, 5, tree);
    PathCursor cursor(tree);
    const auto* value = RegistryTree::FindValue(*cursor.Find(tree.Top(), u"A\\B"), u"b");
    return std::string(end.incomplete ? "cut " : "") + (end.closed ? "closed " : "") +
           (end.lastKey != nullptr ? ToUtf8(FromUtf16Lossy(end.lastKey->name->text)) : "") +
           (value != nullptr ? " b" + std::to_string(value->data.size()) : "");
  };
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", "B"},
      {"\r\n", "closed B"},
      {"\r\n\r", "closed B"},
      {"\r\n\"b\"=hex:01\r\n\r\n", "B b1"},
      {"\r\n[A\\C]\r\n", "C"},
      {"\r\n[A\\C", "cut closed B"},
      {"\r\n[-A\\C]\r\n", ""},
      {"[A\\C\r\n", "B"},
      {"\"b\"=\"x\"", "B b4"},
      {"\"b\"=\"x", "cut B"},
      {"\"b\"=\"x\r\ny\r\n", "cut B"},
      {"\"b", "cut B"},
      {"\"b\"=d", "cut B"},
      {"@", "cut B"},
      {"\"b\"=dword:0000000", "cut B b4"},
      {"\"b\"=dword:00000001", "B b4"},
      {"\"b\"=hex:01,0", "cut B b2"},
      {"\"b\"=hex:01,02,\\", "cut B b2"},
      {"\"b\"=hex:01,\\\r\n\r\n  ", "cut B b1"},
      {"\"b\"=hex:01,\r\n", "B b1"},
      {"\x1A", "B"},
      {"; b", "B"},
  };
  for (const auto& [tail, wanted] : cases) EXPECT_EQ(seems(tail), wanted) << tail;
}

TEST(RegFile, AKeyNeverBecomesADeletion) {
  for (const std::string_view line :
       {"[\\-HKEY_CURRENT_USER\\Software]", "[\\ A\\B]", "[-\\ A\\B]"}) {
    const auto once = RoundTrip(File(kFour, std::string(line) + "\r\n\"n\"=\"x\"\r\n"));
    EXPECT_EQ(once, File(kFour, ";" + std::string(line) + "\r\n;\"n\"=\"x\"\r\n"));
    EXPECT_EQ(RoundTrip(*once), once);
  }
}

TEST(RegFile, RefusesAnotherHeader) {
  for (const std::string_view bytes :
       {"", " ", "regedit4\r\n", "REGEDIT4 \r\n", "REGEDIT44", "\nREGEDIT4", "REGEDIT5\r\n",
        "Windows Registry Editor Version 5.0\r\n", "Windows registry Editor Version 5.00\r\n",
        "[HKEY_CURRENT_USER]", "\xEF\xBB\xBFREGEDIT4\r\n", "\xFE\xFF", "\xFF\xFE"}) {
    EXPECT_FALSE(RoundTrip(bytes)) << bytes;
  }
  EXPECT_FALSE(RoundTrip(Utf16("REGEDIT4\r\n")));
  for (const std::string_view bytes : {"REGEDIT4", "REGEDIT4\n[A]", "\t REGEDIT4\r[A]"}) {
    EXPECT_TRUE(RoundTrip(bytes)) << bytes;
  }
  const auto whole = File(kFive, "[A\\\xC3\xA9]\r\n");
  for (const auto& one : {whole, Utf16(whole)}) {
    const auto head = one.find('W');
    auto blanks = one;
    // What was UTF-16 stays so without its mark.
    blanks.replace(0, head, head == 2 ? std::string_view(" \0\t\0", 4) : " \t");
    EXPECT_EQ(RoundTrip(blanks), one.substr(head)) << testing::PrintToString(one);
  }
}

TEST(RegFile, RefusesKeysBeyondTheLimitsOfTheRegistry) {
  const std::string name(256, 'n');
  std::string deep = "[A";
  for (int level = 0; level < 100000; ++level) deep += "\\x";
  const std::string longName = "[A\\" + name + "]";
  EXPECT_EQ(RoundTrip(std::string(kFive) + longName + "\n" + deep + "]\n[A\\B]\n"),
            File(kFive, ";" + longName + "\r\n;" + deep + "]\r\n[A\\B]\r\n"));
}

}  // namespace

}  // namespace morvelle
