#include "spatial/mif_reader.hpp"

#include <iomanip>
#include <sstream>

#include "messages/mif_header.hpp"
#include "spatial/layer_fixture.hpp"

namespace nivaro {
namespace {

using test::ProcessEnded;
using testing::HasSubstr;

struct MifReaderTest : test::LayerTest {
  // What is left of the layer: a line for each section with the value, the vertices and the polygon
  // ends; "-" for what is ignored.
  std::string sections() {
    console.output.clear();
    std::ostringstream text;
    text << std::setprecision(15);
    while (reader.objectsLeft(mif, mid)) {
      const MifObject* object = reader.nextObject(mif, mid);
      for (int left = object == nullptr ? 1 : object->sections; left > 0; --left) {
        if (object == nullptr || !reader.readSection(mif)) {
          text << "-\n";
          continue;
        }
        text << object->keyword << ' ' << reader.value();
        for (std::size_t k = 0; k < reader.x().size(); ++k)
          text << (k == 0 ? ": " : ", ") << reader.x()[k] << ' ' << reader.y()[k];
        for (const std::int32_t end : reader.polygonEnds()) text << " /" << end;
        text << '\n';
      }
    }
    return text.str();
  }

  // The message with which the run ends on this layer.
  void expectEnd(const std::string& objects, const std::string& message) {
    openLayer(objects, "1\n2\n3\n");
    EXPECT_THROW(sections(), ProcessEnded) << objects;
    EXPECT_THAT(console.output, HasSubstr("\nNoXY: " + message));
  }
};

const std::string kTriangle = "Region 1\n4\n0 0\n9 0\n9 9\n0 0\n";

TEST_F(MifReaderTest, ReadsEachKindOfObjectAndPastItsStyle) {
  openLayer(
      "POINT 1 2\n    Symbol (35,0,12)\n"
      "\tpoint\n3 4\n"
      "Multipoint 2\n5 6\n7 8\n"
      "Line 1 2 3 4\n    Pen (1,2,0)\n"
      "PLINE 3\n0 0\n1 0\n1 1\n    Smooth\n"
      "Pline Multiple 2\n  2\n0 0\n5 5\n  1\n9 9\n"
      "Region  2\n  4\n0 0\n9 0\n9 9\n0 0\n 4\n1 1\n2 1\n2 2\n1 1\n"
      "    Pen (1,2,0)\n    Brush (2,1)\n    Center 4 5\n" +
          kTriangle + "    Pen (1,2,0)\n\nPOINT 7 8\n" + "POINT" + std::string(995, ' ') +
          "1 2\n3 4\n" +  // lines are cut behind 1000 characters
          kTriangle + "  center 1,2\n",
      "10\n20\n30\n40\n50\n60\n70\n80\n90\n100\n110\n");

  // A closing copy stands behind each polygon of a region.
  EXPECT_EQ(sections(),
            "POINT 10: 1 2\nPOINT 20: 3 4\n"
            "MULTIPOINT 30: 5 6\nMULTIPOINT 30: 7 8\n"
            "LINE 40: 1 2, 3 4\nPLINE 50: 0 0, 1 0, 1 1\n"
            "PLINE MULTIPLE 60: 0 0, 5 5\nPLINE MULTIPLE 60: 9 9\n"
            "REGION 70: 0 0, 9 0, 9 9, 0 0, 0 0, 1 1, 2 1, 2 2, 1 1, 1 1 /4 /9\n"
            "REGION 80: 0 0, 9 0, 9 9, 0 0, 0 0 /4\nPOINT 90: 7 8\nPOINT 100: 3 4\n"
            "REGION 110: 0 0, 9 0, 9 9, 0 0, 0 0 /4\n");
  EXPECT_TRUE(mif.atEnd());
  EXPECT_EQ(console.output, "");
}

TEST_F(MifReaderTest, IgnoresRegionsOfTooFewPointsAndGoesOnBehindThem) {
  const std::string fewPoints =
      "WARNING 0318 - Insufficient points for Region object in mif file.  Region ignored.\n";
  const std::string two = "Region 1\n3\n4 5.5\n9 0\n9 9\n  Pen (1,2,0)\n  Center 1 1\n";

  // Without a messages layer, or without a vertex, the text tells the place. The header has 6 lines.
  openLayer(two + "Region 0\nRegion 1\n0\nPoint 1 2\n", "1\n2\n3\n4\n");
  EXPECT_EQ(sections(), "-\n-\n-\nPOINT 4: 1 2\n");
  const std::string inFile = " of file \"" + mif.path() + "\".\n";
  EXPECT_EQ(console.output, "\nNoXY: " + fewPoints + "Its first vertex is 4., 5.5.\n" +
                                "\nNoXY: " + fewPoints + "Line 14" + inFile +
                                "\nNoXY: " + fewPoints + "Line 16" + inFile);

  record->default_x = 5000;
  record->message_layer = 1;
  openLayer(two, "1\n");
  sections();
  EXPECT_EQ(console.output, "\nXY: " + fewPoints);
}

TEST_F(MifReaderTest, WarnsOfOtherKindsAndKeepsTheFilesInStep) {
  openLayer("Text\n  \"Point of interest\"\n0 0 1 1\nRECT 0 0 1 1\nNONE\nPoint 1 1\n",
            "1\n2\n3\n4\n");
  EXPECT_EQ(sections(), "-\n-\n-\nPOINT 4: 1 1\n");
  const std::string warning =
      "NoXY: WARNING - Object below ignored.  Only Points, Lines, Polylines & Regions used.\n";
  EXPECT_EQ(console.output, warning + "Text\n" + warning + "RECT 0 0 1 1\n" + warning + "NONE\n");
}

TEST_F(MifReaderTest, ReadsFilesThatOtherProgramsWrote) {
  const std::string tabDelimited = "VERSION 450\r\nDelimiter \"\t\"\r\nColumns 2\r\nDATA\r\n\r\n";
  openFiles(
      tabDelimited + "PLINE 2\r\n2512345.25\t6512345.5\r\n+1e3,1D3\r\n\r\nPoint .5 5.\r\n\r\n",
      "\r\n 1.5\t\"a, b\"\r\n2\r\n");
  ASSERT_TRUE(reader.findObjectSection(mif));
  EXPECT_EQ(sections(), "PLINE 1.5: 2512345.25 6512345.5, 1000 1000\nPOINT 2: 0.5 5\n");

  openFiles(tabDelimited + "Point 1 1\r\n", "\t7\r\n");
  ASSERT_TRUE(reader.findObjectSection(mif));
  EXPECT_THROW(sections(), ProcessEnded);  // an empty field before the tab

  openFiles("Delimiter \" \"\nDATA\nPOINT 1 1\n", "6 8\n");
  ASSERT_TRUE(reader.findObjectSection(mif));
  EXPECT_EQ(sections(), "POINT 6: 1 1\n");

  openFiles("Delimiter \";\"\nData\nPoint 1 1\nPoint 2 2\n", "1,5\n1,5;2\n");
  ASSERT_TRUE(reader.findObjectSection(mif));
  EXPECT_THROW(sections(), ProcessEnded);
  EXPECT_TRUE(shown("\nRecord 2 of file \"" + mid.path() +
                    "\".\nIts fields are separated by \";\" instead of commas: 1,5;2\n"));

  openFiles("DATA\nPOINT 1 1\nPOINT 2 2\n", "7,\"x;y\"\n \n \t\n\n   ");
  ASSERT_TRUE(reader.findObjectSection(mif));
  EXPECT_EQ(sections(), "POINT 7: 1 1\n");
}

TEST_F(MifReaderTest, ValueThatIsNoNumberIsNamedWithFileAndRecord) {
  const std::pair<std::string_view, std::string> cases[] = {
      {"5\n,2\n", "Its first field is not a number: ,2"},
      {"5\n\n\"6\",2\n", "Its first field is not a number: \"6\",2"},
      {"5\nsand", "Its first field is not a number: sand"},
      {"5\n\n", "There is no such record."},
  };
  for (const auto& [records, reason] : cases) {
    openLayer("Point 1 1\nPoint 2 2\n", records);
    reader.nextObject(mif, mid);
    console.output.clear();
    EXPECT_THROW(reader.nextObject(mif, mid), ProcessEnded) << records;
    EXPECT_THAT(console.output, HasSubstr("\nNoXY: ERROR - Reading MID file.\nRecord 2 of file \"" +
                                          mid.path() + "\".\n" + reason + "\n"));
  }
}

TEST_F(MifReaderTest, WhatCannotBeReadEndsTheRun) {
  const std::string unexpectedEnd = "ERROR 0309 - Unexpected end of .mif file encountered.\n";
  const std::string tooManyNodes =
      "ERROR 0310 - Exceeded number of allowable nodes in a single polyline or region.\n"
      "             Requested  100001        Limit  100000\n";
  const std::pair<const char*, std::string> cases[] = {
      {"Collection 2\n",
       "ERROR 0303 - MIF \"Collection\" objects not supported.  Delete or disaggregate object.\n"},
      {"Region 10001\n",
       "ERROR 0304 - Exceeded maximum number of polygons in region below of 10000\nRegion 10001\n"},
      {"Region 10000\n", unexpectedEnd},
      {"Region 1\n4\n0 0\n", unexpectedEnd},
      {"Point\n", unexpectedEnd},
      {"Pline 100000\n", unexpectedEnd},
      {"Pline 100001\n", tooManyNodes},
      {"Region 1\n99999\n", unexpectedEnd},  // the closing copy counts
      {"Region 2\n2\n0 0\n1 1\n99997\n", tooManyNodes},
  };
  for (const auto& [objects, message] : cases) expectEnd(objects, message);

  const std::pair<std::string, std::string> badLines[] = {
      {"", "Region\n"},
      {"", "Region ,\n"},
      {"", "Pline x\n"},
      {"", "Pline -1\n"},
      {"", "Multipoint -1\n"},
      {"", "Pline Multiple -1\n"},
      {"Pline 2\n1 1\n", "2\nLine 9 of"},
      {"", "Point 1 nan\n"},
      {"", "Line 1 2 3\n"},
      {"Pline Multiple 2\n1\n0 0\n", "2.5\n"},
      {kTriangle, "Center 1\n"},
      {kTriangle, "Point 1\nLine 13 of"},
  };
  for (const auto& [before, shown] : badLines)
    expectEnd(before + shown.substr(0, shown.find('\n') + 1),
              "ERROR 0308 - Reading .mif file.  Erroneous line is:\n" + shown);
}

TEST_F(MifReaderTest, ObjectsStartBehindTheFirstLineWithData) {
  openFiles("Columns 1\n  Metadata Float\nPoint 1 1\nData\n", "1\n");
  ASSERT_TRUE(reader.findObjectSection(mif));
  EXPECT_EQ(sections(), "POINT 1: 1 1\n");

  openFiles("Version 300\nPoint 1 1\n", "1\n");
  ASSERT_TRUE(reader.findObjectSection(mif));
  EXPECT_EQ(sections(), "");
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

}  // namespace
}  // namespace nivaro
