#include "control/spatial_command.hpp"

#include <algorithm>
#include <vector>

#include "control/control_fixture.hpp"
#include "files/path.hpp"

namespace nivaro {
namespace {

constexpr double kUntouched = 0.00016;  // the default of D50

// A grid of 4 cells along the first index by 3 along the second, 10 m each, in fields of 8 x 7 with
// two elements around; between two guards of 100 elements that nothing may write.
struct SpatialCommand : test::ControlTest {
  static constexpr int kN = 8;
  static constexpr int kM = 7;
  static constexpr std::int32_t kFirst = 101;

  SpatialCommand() : ControlTest(kN, kM, kFirst) {
    grid = {
        .frame =
            {.x0 = 100.0, .y0 = 200.0, .dx = 10.0, .dy = 10.0, .firstBound = 4, .secondBound = 3},
        .firstRowBound = 6,
        .secondRowBound = 5};
  }

  // Its name is no command to add.
  void writeLayer(const std::string& objects, const std::string& records) const {
    folder.write("added layer.mif",
                 "Version 300\nDelimiter \",\"\nColumns 1\n  v Float\nData\n\n" + objects);
    folder.write("added layer.mid", records);
  }

  // As the module places a file in the control file's folder.
  std::string addFolderName(std::string_view name) const {
    return addFolder(folder.path(""), name);
  }

  bool guardsAreWhole() const {
    const auto whole = [](const auto& values) {
      const auto untouched = [](auto v) { return v == -1; };
      return std::all_of(values.begin(), values.begin() + 100, untouched) &&
             std::all_of(values.end() - 100, values.end(), untouched);
    };
    return whole(real) && whole(integer);
  }

  const double& d50(int i, int j) const {
    return real[static_cast<std::size_t>(kFirst - 1 + (j - 1) * kN + i - 1)];
  }
  std::int32_t code(int i, int j) const {
    return integer[static_cast<std::size_t>(kFirst - 1 + (j - 1) * kN + i - 1)];
  }
  std::ptrdiff_t cellsSet() const {
    return kN * kM - std::count(&d50(1, 1), &d50(1, 1) + kN * kM, kUntouched);
  }
};

constexpr const char* kTwoCells = "Region 1\n 5\n100 200\n110 200\n110 220\n100 220\n100 200\n";

TEST_F(SpatialCommand, LayerObjectsGiveTheirValuesToTheCells) {
  // The left column's two lower cells; then a point in cell (2, 3) and a line up the middle column.
  writeLayer(std::string(kTwoCells) + "    Pen (1,2,0)\n    Center 105 210\nPoint 125 215\n" +
                 "Pline 2\n115 199\n115 241\n",
             "0.001\n0.002\n0.003\n");
  read("Read MI Morphology D50 == added layer.MIF\n");

  EXPECT_EQ(d50(3, 3), 0.001);
  EXPECT_EQ(d50(4, 3), 0.001);
  EXPECT_EQ(d50(4, 5), 0.002);
  for (int i = 3; i <= 6; ++i) EXPECT_EQ(d50(i, 4), 0.003);
  EXPECT_EQ(cellsSet(), 7);
  const std::string name = addFolderName("added layer");
  EXPECT_TRUE(shown("\n\nMorphology D50 spatially set using " + name + "\n")) << console.output;
  EXPECT_TRUE(log().starts_with("\nMorphology D50 spatially set using " + name));
  EXPECT_TRUE(
      shown("...MIF REGION (     6 vertices /  1 polygons) assigned 0.001 to     2 cells\n"));
  EXPECT_TRUE(shown("...Closed File Unit:2003\n...Closed File Unit:2004\n")) << "both files";
  EXPECT_TRUE(guardsAreWhole());
}

TEST_F(SpatialCommand, RegionsAddWhereTheCommandSaysSo) {
  writeLayer(std::string(kTwoCells) + kTwoCells + "Point 105 205\n", "1\n2\n9\n");
  read("Set Morphology D50 == 10\nRead MI ADD Morphology D50 == added layer\n");

  EXPECT_EQ(d50(4, 3), 13.0);
  EXPECT_EQ(d50(3, 3), 9.0) << "points set";
}

TEST_F(SpatialCommand, TableRowsSetCellsAndLaterRowsWin) {
  grid.firstRowOffset = 10;  // row index 10 is field element 2
  grid.secondRowOffset = 1;
  folder.write("cells.csv",
               "10, 1, 0.001\r\n"
               "13\t2\t1D-3 and more\r\n"
               "14,+3,.5\r\n"
               "\r\n"
               "14 3 2*.25\r\n"
               "  \r\n\r\n");
  read("Read MID Morphology D50 == cells.CSV\n");

  EXPECT_EQ(d50(2, 2), 0.001);
  EXPECT_EQ(d50(5, 3), 0.001);
  EXPECT_EQ(d50(6, 4), 0.25);
  EXPECT_EQ(cellsSet(), 3);
  EXPECT_FALSE(shown("WARNING"));
  EXPECT_TRUE(shown("Morphology D50 spatially set using " + addFolderName("cells.CSV") + "\n"));
  EXPECT_TRUE(shown("...Closed File Unit:2003\n"));
}

TEST_F(SpatialCommand, TableRowsOutsideTheGridAreSkippedWithOneWarning) {
  grid.firstRowOffset = grid.secondRowOffset = 2;  // indices are field elements
  folder.write("cells.mid", "1 2 9\n2 1 9\n7 2 9\n2 6 9\n-2147483648 2147483647 9\n6 5 2.9");
  read("Read MID Morphology Bed Code == cells.mid\nSlump Slope == 2\n");

  EXPECT_EQ(code(6, 5), 2) << "truncated, and read although its line has no end";
  EXPECT_EQ(std::count(integer.begin(), integer.end(), 9), 0);
  EXPECT_TRUE(shown(
      "\nNoXY: WARNING - Some/all values from last Read MID command are outside the 2D grid.\n"
      "5 of the rows, the first of them row 1, of file \"" +
      folder.path("cells.mid")))
      << console.output;
  EXPECT_EQ(options().slumpSlope, 2.0) << "the run goes on";
}

TEST_F(SpatialCommand, RowsThatCannotBeReadEndTheRun) {
  for (const char* row : {"3", "3,3", "3,3,", "3,3,,", "3,,1", ",3,1", "3.0,3,1", "3,3,x",
                          "3,3,'1'", "a,b,c", "3,3,nan", "3,3,1e999", "3,3,/", "99999999999,3,1"}) {
    SCOPED_TRACE(row);
    folder.write("cells.mid", std::string("3 3 1\n") + row + "\n4 4 4\n");
    EXPECT_THROW(read("Read MID Morphology D50 == cells.mid\n"), test::ProcessEnded);
    EXPECT_TRUE(shown("\n\nNoXY: ERROR - Reading line 2 of .mid file\nFile \"" +
                      folder.path("cells.mid") + "\"\nNot two integers and a number: " + row))
        << console.output;
  }
  folder.write("cells.mid", "3 3 2147483647.5\n3 3 -2147483648.5\n3 3 -2147483649\n");
  EXPECT_THROW(read("Read MID Morphology Bed Code == cells.mid\n"), test::ProcessEnded);
  EXPECT_TRUE(shown("Its value is beyond the integers of 4 bytes: 3 3 -2147483649"));
}

TEST_F(SpatialCommand, BoundsBeyondTheFieldWriteNothingOutsideIt) {
  grid.frame.firstBound = grid.frame.secondBound = 1000;
  grid.firstRowBound = grid.secondRowBound = 1000;
  grid.firstRowOffset = grid.secondRowOffset = 2;
  writeLayer(
      "Region 1\n 5\n-5000 -5000\n5000 -5000\n5000 5000\n-5000 5000\n-5000 -5000\n"
      "Pline 2\n-900 -800\n900 1000\nPoint 165 265\nPoint 85 185\nPoint 135 255\nRegion 0\n",
      "1\n1\n1\n1\n3\n1\n");
  folder.write("cells.mid", "9 2 1\n2 8 1\n1000 1000 1\n8 7 5\n");
  for (const bool active : {true, false}) {
    reserve(1, active);
    read(
        "Read MI Morphology D50 == added layer\nRead MI Morphology Bed Code == added layer\n"
        "Read MID Morphology D50 == cells.mid\nRead MID Morphology Bed Code == cells.mid\n");
    EXPECT_TRUE(guardsAreWhole()) << active;
    EXPECT_EQ(shown("are outside the 2D grid"), active);
    EXPECT_EQ(shown(" cells\n"), active);
    EXPECT_TRUE(shown("WARNING 0318")) << "what is wrong with the layer is told in any case";
    if (!active) continue;
    EXPECT_EQ(d50(8, 7), 5.0);
    EXPECT_EQ(d50(8, 6), 3.0);
    EXPECT_EQ(d50(7, 7), 1.0) << "the line";
    EXPECT_EQ(d50(2, 2), 1.0) << "a point in the cell before the first still reaches the field";
  }
}

}  // namespace
}  // namespace nivaro
