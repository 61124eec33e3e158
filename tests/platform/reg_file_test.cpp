// The reader and the writer of `.reg` files: text in, whole file expected.

#include <gtest/gtest.h>

#include "app/messages/text.h"
#include "platform/reg_file_reader.h"
#include "platform/reg_file_text.h"
#include "platform/reg_file_writer.h"
#include "tests/support/text_cases.h"

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

class RegText : public testing::TestWithParam<TextCase> {};

TEST_P(RegText, IsWrittenBackAs) {
  const std::string in = std::string(kFive) + GetParam().in;
  // The whole file behind the header's empty line; whatever is written ends its lines so.
  std::string written;
  for (const char unit : GetParam().out) written += unit == '\n' ? "\r\n" : std::string(1, unit);
  const std::string out = File(kFive, written);
  EXPECT_EQ(RoundTrip(Utf16(in)), Utf16(out));
  EXPECT_EQ(RoundTrip(Utf16(out)), Utf16(out)) << "what was written is not read as it was meant";
  EXPECT_EQ(RoundTrip("\xEF\xBB\xBF" + in), "\xEF\xBB\xBF" + out);
}

INSTANTIATE_TEST_SUITE_P(Cases, RegText, testing::ValuesIn(TextCases(MORVELLE_REG_CASES)));

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
      {"\r\n\"b\"=hex:01\r\n\r\n", "B b1"},
      {"\r\n[A\\C]\r\n", "C"},
      {"\r\n[A\\C", "cut closed B"},
      {"\r\n[-A\\C]\r\n", ""},
      {"[A\\C\r\n", "B"},
      {"\"b\"=\"x\"", "B b4"},
      {"\"b\"=\"x", "cut B"},
      {"\"b\"=\"x\r\ny\r\n", "cut B"},
      {"\"b", "cut B"},
      {"@", "cut B"},
      {"\"b\"=dword:0000000", "cut B b4"},
      {"\"b\"=hex:01,0", "cut B b2"},
      {"\"b\"=hex:01,02,\\", "cut B b2"},
      {"\"b\"=hex:01,\\\r\n\r\n  ", "cut B b1"},
      {"\"b\"=hex:01,\r\n", "B b1"},
      {"\x1A", "B"},
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
