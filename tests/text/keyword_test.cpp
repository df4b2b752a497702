#include "text/keyword.hpp"

#include <gtest/gtest.h>

namespace nivaro {
namespace {

TEST(Keyword, IsFoundAnywhereInAnyCase) {
  const struct {
    std::string_view text, flag;
    bool exists;
  } cases[] = {
      {"Read MI Zpts == x", "read mi zpts", true},
      {"Read MID Zpts", "Read MI", true},
      {"Read MID Zpts", "Read MI Zpts", false},
      {"SET  D50", "set d50", false},  // blanks inside count
      {"Set D50", "D50   ", true},     // trailing ones do not
      {"BED CODE", " code", true},
      {"BEDCODE", " code", false},  // leading ones do
      {"Set", "Set D50", false},
      {"anything", "  ", true},
      {"M\xE9li\xE9", "m\xC9", false},  // no letter case outside the 26 letters
      {"[", "{", false},                // neighbours of the letters have none either
  };
  for (const auto& [text, flag, exists] : cases) {
    EXPECT_EQ(flagExists(text, flag), exists) << text << " / " << flag;
  }
}

TEST(Keyword, GivesTheTextBehindIt) {
  std::string_view rest;
  EXPECT_TRUE(flagExistsRet("Set Code Two code three  ", "CODE ", rest));
  EXPECT_EQ(rest, " Two code three");
  EXPECT_FALSE(flagExistsRet("Set", "CODE", rest));
  EXPECT_EQ(rest, "");
}

TEST(Keyword, ComparesBareTexts) {
  EXPECT_TRUE(asame("'abc'", " ABC"));
  EXPECT_FALSE(asameCs("'abc'", " ABC"));
  EXPECT_TRUE(asameCs(" \"a\tbc\" ", "abc"));
  EXPECT_TRUE(asame("' a '", "A"));  // blanks that quotes had covered go too
  EXPECT_FALSE(asame("a b", "ab"));
}

TEST(Keyword, KnowsCommandsThatReadAndWriteLayers) {
  EXPECT_TRUE(readGis("READ GIS Zpts ", "zpts  ") && readGis("Read MI Zpts", "Zpts"));
  EXPECT_FALSE(readGis("Read MID Zpts", "Zpts"));
  EXPECT_TRUE(writeGis("Write MI Check", "check") && writeGis("Write GIS Check", "check"));
  EXPECT_FALSE(writeGis("Read MI Check", "check"));
  EXPECT_TRUE(readRowCol("Read RowCol D50", "d50") && readRowCol("Read MID D50", "d50"));
  EXPECT_FALSE(readRowCol("Read MI D50", "d50"));
  EXPECT_TRUE(readGisAny("Read MID D50") && readRowColAny("read rowcol"));
  EXPECT_FALSE(readRowColAny("Read MI D50"));
}

TEST(Keyword, TellsNumbersFromWords) {
  const struct {
    std::string text;
    bool beginsWithNumber, isInteger;
  } cases[] = {
      {"  -3 4", true, false}, {".5", true, false},  {"7", true, true},    {"   ", true, false},
      {"", true, false},       {"+3", false, false}, {"a", false, false},  {"\t3", false, false},
      {" 012 ", true, true},   {"1.0", true, false}, {"1 2", true, false},
  };
  for (const auto& [text, beginsWithNumber, isInteger] : cases) {
    std::string line = text;
    EXPECT_EQ(numberLine(line), beginsWithNumber) << text;
    EXPECT_FALSE(line.starts_with(' ')) << text;
    line = text;
    EXPECT_EQ(positiveIntegerNumber(line), isInteger) << text;
    EXPECT_FALSE(line.starts_with(' ')) << text;
  }
}

}  // namespace
}  // namespace nivaro
