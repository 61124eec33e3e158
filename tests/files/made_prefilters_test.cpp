
#include <cstdlib>

#include "app/messages/text.h"
#include "files/prefilter_file.h"
#include "tests/support/temp_folder.h"

namespace morvelle {
namespace {

const std::array<std::string, kSlotCount> kTypes = {"12", "8", "9", "22"};

int Make(const FileFolder& folder) {
  const auto command = "'" MORVELLE_MAKE_PREFILTERS "' '" + folder.Path().string() + "' '" +
                       (folder / "oe").string() + "' 2>" + (folder / "erreurs").string();
  return std::system(command.c_str());
}

TEST(MadePrefiltersTest, AWordListBecomesAFileOfWindowsText) {
  const FileFolder folder;
  folder.Write("a.txt", "# note\n[objet]\n\npromo €\n[expéditeur]\nx@y\n[objet]\ngratuit\n");
  ASSERT_EQ(Make(folder), 0);
  const auto words = ReadPrefilter(ReadFile(folder / "oe" / "a.oe"), kTypes);
  ASSERT_TRUE(words);
  EXPECT_EQ((*words)[0], std::vector<std::string>{"x@y"});
  EXPECT_EQ((*words)[1], (std::vector<std::string>{std::string("promo €"_cp), "gratuit"}));
}

TEST(MadePrefiltersTest, WhatAListCannotHoldIsAnError) {
  for (const auto* text : {"[objet]\nmot \n", "mot\n", "[objet]\n漢字\n", "[objet]\nEOF\n"}) {
    const FileFolder folder;
    folder.Write("a.txt", text);
    EXPECT_NE(Make(folder), 0) << text;
    EXPECT_FALSE(folder.Read("erreurs").empty());
  }
}

TEST(MadePrefiltersTest, TheShippedOnesAreWorthHaving) {
  for (const std::string name : {"asiatique", "anglais", "pseudos", "sexe"}) {
    const auto words =
        ReadPrefilter(ReadFile(MORVELLE_PREFILTERS "/Brisquet_" + name + ".oe"), kTypes);
    ASSERT_TRUE(words) << name;
    std::size_t count = 0;
    for (const auto& list : *words) count += list.size();
    EXPECT_GE(count, 100U) << name;
  }
}

}  // namespace
}  // namespace morvelle
