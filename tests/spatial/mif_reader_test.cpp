#include "spatial/mif_reader.hpp"

#include <array>
#include <cmath>
#include <random>
#include <sstream>

#include "messages/mif_header.hpp"
#include "platform/list_input.hpp"
#include "spatial/layer_fixture.hpp"
#include "spatial/real_fields.hpp"

namespace nivaro {
namespace {

using test::ProcessEnded;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(RealFields, AreReadAsListInputReadsThemIfTheyAreFinite) {
  double value = 0;
  for (const std::string_view text : {"nan", "inf", "1e999", "1x"})
    EXPECT_FALSE(readReals(text, {&value, 1})) << text;
  EXPECT_TRUE(readReals("1D-400", {&value, 1}));

  std::mt19937 random(6);
  constexpr std::string_view kCharacters = "0123459+-..eEdD,,/*  \t\"";
  for (int n = 0; n < 100000; ++n) {
    std::string text;
    for (auto length = random() % 10; length > 0; --length)
      text += kCharacters[random() % kCharacters.size()];
    std::array<double, 2> fast{}, listed{NAN, NAN};
    ListInput items(text);
    const bool listedAll = items.readAll(listed[0], listed[1]) == ReadStatus::Ok &&
                           std::isfinite(listed[0]) && std::isfinite(listed[1]);
    ASSERT_EQ(readReals(text, fast), listedAll) << text;
    if (!listedAll) continue;
    ASSERT_EQ(fast, listed) << text;
  }
}

struct MifReaderTest : test::LayerTest {
  // The next object, which must be there and have one section.
  void next() {
    ASSERT_TRUE(reader.objectsLeft(mif, mid));
    ASSERT_NE(reader.nextObject(mif, mid), nullptr) << console.output;
    ASSERT_TRUE(reader.readSection(mif)) << console.output;
  }

  // The message with which the run ends on this layer.
  void expectEnd(std::string_view objects, std::string_view message) {
    console.output.clear();
    openLayer(objects, "1\n2\n3\n");
    const auto readAll = [&] {
      while (const MifObject* object = reader.nextObject(mif, mid))
        for (int section = 0; section < object->sections; ++section) reader.readSection(mif);
    };
    EXPECT_THROW(readAll(), ProcessEnded) << objects;
    EXPECT_THAT(console.output, HasSubstr("\nNoXY: " + std::string(message)));
  }
};

TEST_F(MifReaderTest, ReadsEachKindOfObject) {
  openLayer(
      "POINT 1 2\n    Symbol (35,0,12)\n"
      "\tpoint\n3 4\n"
      "Multipoint 2\n5 6\n7 8\n"
      "Line 1 2 3 4\n    Pen (1,2,0)\n"
      "PLINE 3\n0 0\n1 0\n1 1\n    Smooth\n"
      "Pline Multiple 2\n  2\n0 0\n5 5\n  1\n9 9\n"
      "Region  2\n  4\n0 0\n9 0\n9 9\n0 0\n 4\n1 1\n2 1\n2 2\n1 1\n",
      "10\n20\n30\n40\n50\n60\n70\n");

  std::ostringstream sections;
  while (reader.objectsLeft(mif, mid)) {
    const MifObject* object = reader.nextObject(mif, mid);
    for (int section = 0; section < object->sections; ++section) {
      ASSERT_TRUE(reader.readSection(mif));
      sections << object->keyword << ' ' << reader.value();
      for (std::size_t k = 0; k < reader.x().size(); ++k)
        sections << (k == 0 ? ": " : ", ") << reader.x()[k] << ' ' << reader.y()[k];
      sections << '\n';
    }
  }
  // A closing copy stands behind each polygon of a region.
  EXPECT_EQ(sections.str(),
            "POINT 10: 1 2\nPOINT 20: 3 4\n"
            "MULTIPOINT 30: 5 6\nMULTIPOINT 30: 7 8\n"
            "LINE 40: 1 2, 3 4\nPLINE 50: 0 0, 1 0, 1 1\n"
            "PLINE MULTIPLE 60: 0 0, 5 5\nPLINE MULTIPLE 60: 9 9\n"
            "REGION 70: 0 0, 9 0, 9 9, 0 0, 0 0, 1 1, 2 1, 2 2, 1 1, 1 1\n");
  EXPECT_THAT(reader.polygonEnds(), ElementsAre(4, 9));
}

constexpr std::string_view kTriangle = "Region 1\n4\n0 0\n9 0\n9 9\n0 0\n";

TEST_F(MifReaderTest, ReadsPastTheStyleOfARegionButNotPastTheNextObject) {
  const std::string region(kTriangle);
  openLayer(region + "    Pen (1,2,0)\n    Brush (2,1)\n    Center 4 5\n" + region +
                "    Pen (1,2,0)\n\nPOINT 7 8\n" + region + "  center 1,2\n",
            "1\n2\n3\n4\n");

  next();
  next();
  EXPECT_EQ(reader.polygonEnds().size(), 1U);
  next();
  EXPECT_EQ(reader.value(), 3);
  EXPECT_THAT(reader.x(), ElementsAre(7));
  next();
  EXPECT_TRUE(mif.atEnd());
  EXPECT_EQ(console.output, "");
}

TEST_F(MifReaderTest, IgnoresRegionsOfTooFewPointsAndGoesOnBehindThem) {
  record->default_x = 5000;
  openLayer(
      "Region 1\n3\n4 5.5\n9 0\n9 9\n  Pen (1,2,0)\n  Center 1 1\nRegion 1\n3\n4 5.5\n9 0\n9 9\n"
      "Region 0\nRegion 1\n0\nPoint 1 2\n",
      "1\n2\n3\n4\n5\n");

  // Where there is no messages layer, or no vertex, the text tells the place. The header has 6 lines.
  const std::string inFile = " of file \"" + mif.path() + "\".\n";
  const std::pair<std::string, std::string> expected[] = {
      {"NoXY", "Its first vertex is 4., 5.5.\n"},
      {"XY", ""},
      {"NoXY", "Line 19" + inFile},
      {"NoXY", "Line 21" + inFile}};
  for (const auto& [tag, place] : expected) {
    console.output.clear();
    ASSERT_NE(reader.nextObject(mif, mid), nullptr);
    EXPECT_FALSE(reader.readSection(mif));
    EXPECT_EQ(console.output, "\n" + tag +
                                  ": WARNING 0318 - Insufficient points for Region object in mif "
                                  "file.  Region ignored.\n" +
                                  place);
    record->message_layer = 1;
  }
  next();
  EXPECT_EQ(reader.value(), 5);
}

TEST_F(MifReaderTest, WarnsOfOtherKindsAndKeepsTheFilesInStep) {
  openLayer("Text\n  \"Point of interest\"\n0 0 1 1\nRECT 0 0 1 1\nNONE\nPoint 1 1\n",
            "1\n2\n3\n4\n");

  for (const std::string_view line : {"Text", "RECT 0 0 1 1", "NONE"}) {
    console.output.clear();
    EXPECT_EQ(reader.nextObject(mif, mid), nullptr);
    EXPECT_EQ(console.output,
              "NoXY: WARNING - Object below ignored.  Only Points, Lines, Polylines & Regions "
              "used.\n" +
                  std::string(line) + "\n");
  }
  next();
  EXPECT_EQ(reader.value(), 4);
}

TEST_F(MifReaderTest, ReadsFilesThatOtherProgramsWrote) {
  openFiles(
      "VERSION 450\r\nCharset \"WindowsLatin1\"\r\nDelimiter \"\t\"\r\nUnique 1\r\nIndex 1\r\n"
      "CoordSys NonEarth Units \"m\" Bounds (0,0) (1,1)\r\nTransform 1,1,0,0\r\n"
      "Columns 2\r\n  Value Float\r\n  Name Char(9)\r\nDATA\r\n\r\n\r\n"
      "PLINE 2\r\n2512345.25\t6512345.5\r\n+1e3,1D3\r\n\r\n\r\nPoint .5 5.\r\n\r\n",
      "\r\n 1.5\t\"a, b\"\r\n\t\r\n");
  ASSERT_TRUE(reader.findObjectSection(mif));

  next();
  EXPECT_EQ(reader.value(), 1.5);
  EXPECT_THAT(reader.x(), ElementsAre(2512345.25, 1000));
  EXPECT_THAT(reader.y(), ElementsAre(6512345.5, 1000));
  EXPECT_THROW(reader.nextObject(mif, mid), ProcessEnded);  // an empty field before the tab

  openFiles("DATA\nPOINT 1 1\nPOINT 2 2\n", "7,\"x\"\n \n \t\n\n   ");
  ASSERT_TRUE(reader.findObjectSection(mif));
  next();
  EXPECT_FALSE(reader.objectsLeft(mif, mid));
}

TEST_F(MifReaderTest, ValueThatIsNoNumberIsNamedWithFileAndRecord) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"5\n,2\n", "Its first field is not a number: ,2"},
      {"5\n\n\"6\",2\n", "Its first field is not a number: \"6\",2"},
      {"5\nsand", "Its first field is not a number: sand"},
      {"5\n\n", "There is no such record."},
  };
  for (const auto& [records, reason] : cases) {
    console.output.clear();
    openLayer("Point 1 1\nPoint 2 2\n", records);
    next();
    EXPECT_THROW(reader.nextObject(mif, mid), ProcessEnded) << records;
    EXPECT_THAT(console.output, HasSubstr("\nNoXY: ERROR - Reading MID file.\nRecord 2 of file \"" +
                                          mid.path() + "\".\n" + std::string(reason) + "\n"));
  }
}

TEST_F(MifReaderTest, WhatCannotBeReadEndsTheRun) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"Collection 2\n",
       "ERROR 0303 - MIF \"Collection\" objects not supported.  Delete or disaggregate object.\n"},
      {"Region 10001\n",
       "ERROR 0304 - Exceeded maximum number of polygons in region below of 10000\nRegion 10001\n"},
      {"Region 1\n4\n0 0\n", "ERROR 0309 - Unexpected end of .mif file encountered.\n"},
      {"Point\n", "ERROR 0309 - Unexpected end of .mif file encountered.\n"},
      {"Pline 100001\n",
       "ERROR 0310 - Exceeded number of allowable nodes in a single polyline or region.\n"
       "             Requested  100001        Limit  100000\n"},
      {"Region 2\n2\n0 0\n1 1\n99997\n",
       "ERROR 0310 - Exceeded number of allowable nodes in a single polyline or region.\n"
       "             Requested  100001        Limit  100000\n"},
  };
  for (const auto& [objects, message] : cases) expectEnd(objects, message);

  const std::pair<std::string_view, std::string_view> badLines[] = {
      {"", "Region\n"},
      {"", "Pline x\n"},
      {"", "Pline -1\n"},
      {"Pline 2\n1 1\n", "2\nLine 9 of"},
      {"", "Point 1 nan\n"},
      {"", "Line 1 2 3\n"},
      {"Pline Multiple 2\n1\n0 0\n", "2.5\n"},
      {kTriangle, "Center 1\n"},
      {kTriangle, "Point 1\nLine 13 of"},
  };
  for (const auto& [before, shown] : badLines) {
    const std::string line(shown.substr(0, shown.find('\n') + 1));
    expectEnd(std::string(before) + line,
              "ERROR 0308 - Reading .mif file.  Erroneous line is:\n" + std::string(shown));
  }
}

TEST_F(MifReaderTest, ReadsObjectsUpToTheLimits) {
  std::string objects = "Pline 100000\n";
  for (int i = 0; i < 100000; ++i) objects += "1 2\n";
  objects += "Region 1\n99999\n";
  for (int i = 0; i < 99999; ++i) objects += "3 4\n";
  objects += "Region 10000\n";
  for (int i = 0; i < 10000; ++i) objects += "4\n0 0\n1 0\n1 1\n0 0\n";
  openLayer(objects, "1\n2\n3\n");

  next();
  EXPECT_EQ(reader.x().size(), 100000U);
  next();
  EXPECT_EQ(reader.x().size(), 100000U);
  EXPECT_THAT(reader.polygonEnds(), ElementsAre(99999));
  next();
  EXPECT_EQ(reader.x().size(), 50000U);
  EXPECT_EQ(reader.polygonEnds().back(), 49999);
}

TEST_F(MifReaderTest, LinesAreCutBehindAThousandCharacters) {
  openLayer("POINT" + std::string(995, ' ') + "1 2\n3 4\n", "1\n");
  next();
  EXPECT_THAT(reader.x(), ElementsAre(3));
}

TEST_F(MifReaderTest, ObjectsStartBehindTheFirstLineWithData) {
  openFiles("Columns 1\n  Metadata Float\nPoint 1 1\nData\n", "1\n");
  ASSERT_TRUE(reader.findObjectSection(mif));
  next();

  openFiles("Version 300\nPoint 1 1\n", "1\n");
  ASSERT_TRUE(reader.findObjectSection(mif));
  EXPECT_FALSE(reader.objectsLeft(mif, mid));
}

TEST_F(MifReaderTest, FileThatCannotBeReadIsReported) {
  console.answers = {""};
  EXPECT_FALSE(reader.findObjectSection(mif));
  EXPECT_TRUE(shown("\nNoXY: WARNING 0313 - Problems finding start of data in .mif file\n"));
  EXPECT_TRUE(console.answers.empty());  // it waited for the Enter key
  EXPECT_THROW(reader.nextObject(mif, mid), ProcessEnded);
  EXPECT_TRUE(shown("ERROR - Reading MIF file or premature end of file.\n"));

  std::string line = "as it was";
  findProjectionLine(mif, line, module.diagnostics);
  EXPECT_EQ(line, "as it was");
  EXPECT_TRUE(shown("\nNoXY: WARNING 0306 - Problems finding CoordSys line in .mif file\n"));
}

TEST_F(MifReaderTest, ProjectionLineIsFoundAndMadeComparable) {
  openFiles("Version 300\n  COORDSYS Earth Projection 8, 33, \"m\"\nData\n", "");
  std::string line;

  findProjectionLine(mif, line, module.diagnostics);
  EXPECT_EQ(normaliseHeaderLine(line + "\t'' "), "COORDSYSEARTHPROJECTION8,33,M");
  findProjectionLine(mif, line, module.diagnostics);
  EXPECT_EQ(line, "  COORDSYS Earth Projection 8, 33, \"m\"");
}

}  // namespace
}  // namespace nivaro
