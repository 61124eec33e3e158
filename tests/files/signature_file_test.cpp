#include "files/signature_file.h"

#include <gtest/gtest.h>

namespace morvelle {
namespace {

std::string Shown(const std::optional<Signature>& signature) {
  if (!signature) return "(damaged)";
  return signature->file + "|" + signature->name + "|" + signature->text + "|" +
         std::to_string(signature->type);
}

TEST(SignatureFileTest, FourLinesWithTheNumberAsItIsPrinted) {
  EXPECT_EQ(SignatureText({"C:\\s.txt", "Perso", "Bien, à toi", 1}),
            "C:\\s.txt\r\nPerso\r\nBien, à toi\r\n 1 \r\n");
  EXPECT_EQ(SignatureText({"", "", "", -3}), "\r\n\r\n\r\n-3 \r\n");
}

TEST(SignatureFileTest, FieldsEndAtCommasAndQuotes) {
  EXPECT_EQ(Shown(ReadSignature("C:\\s.txt\r\nPerso, suite\r\n\"a, b\" c\r\n 1 \r\n")),
            "C:\\s.txt|Perso|a, b|1");
  EXPECT_EQ(Shown(ReadSignature("\r\n  \"sans fin\r\nBonjour, Zoé\r\n-2 ")),
            "|sans fin|Bonjour|-2");
}

TEST(SignatureFileTest, ATextOfSeveralLinesIsKeptWhole) {
  for (const std::string text : {"Bien, à toi\r\n\r\n\"Zoé\"", "Bien, à toi\nZoé", "\"Zoé\"\r, fin",
                                 "\nZoé, fin", "Bises, Zoé\r\n", "Bises, Zoé\r", "a, b\r\n\r"}) {
    const auto signature = ReadSignature(SignatureText({"", "Perso", text, 1}));
    ASSERT_TRUE(signature);
    EXPECT_EQ(signature->text, text);
    EXPECT_EQ(signature->type, 1);
  }
}

TEST(SignatureFileTest, WithoutFourLinesOrANumberItIsDamaged) {
  for (const auto* content :
       {"", "\r\nPerso\r\n 1 \r\n", "\r\nPerso\r\ntexte\r\nun\r\n", "\r\nPerso\r\ntexte\r\n\r\n",
        "\r\nPerso\r\ntexte\r\n99999999999\r\n"}) {
    EXPECT_EQ(Shown(ReadSignature(content)), "(damaged)") << content;
  }
}

}  // namespace
}  // namespace morvelle
