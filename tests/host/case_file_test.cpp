#include "case_file.hpp"

#include <gmock/gmock.h>

#include <string>

#include "support/temp_folder.hpp"

namespace host {
namespace {

using nivaro::test::TempFolder;
using testing::ElementsAre;
using testing::HasSubstr;

// Line numbers matter below: the tests name them.
constexpr const char* kCase = R"(name = "reach"
[grid]
columns = 40
rows = 3
cell_size = 5
[bed]
level = 2.0
slope = [-0.001, 0.0]
[[bed.profile]]
depths = [[0, 0], [10.5, 1.5]]
[roughness]
manning = 0.03
[boundary]
west = { discharge = 12 }
east = { level = 1.0 }
[initial]
depth = 1.0
[time]
duration_h = 2
morphology_step_s = 60
output_every_h = 0.75
[morphology]
control_file = "sand.mcf"
)";

std::string replaced(std::string text, const std::string& old, const std::string& with) {
  return text.replace(text.find(old), old.size(), with);
}

// The complaint about a case, blank when it reads well.
std::string complaint(const TempFolder& folder, const std::string& text) {
  folder.write("sand.mcf", "");
  folder.write("case.toml", text);
  try {
    readCase(folder.path(""));
    return "";
  } catch (const CaseError& error) {
    return error.what();
  }
}

TEST(CaseFile, HoldsWhatTheFileSays) {
  const TempFolder folder;
  ASSERT_EQ(complaint(folder, kCase + std::string("[map]\norigin = [4e5, 5e6]\nangle = 90\n"
                                                  "coord_sys = 'CoordSys Earth'\n[messages]\n"
                                                  "label_height = 2\nlabel_width = 30\n"
                                                  "spacing = 4\n")),
            "");
  const Case model = readCase(folder.path(""));

  EXPECT_EQ(model.grid.columns, 40);
  EXPECT_EQ(model.grid.cellSize, 5);
  EXPECT_DOUBLE_EQ(*model.bed.elevation(10.5, 0), 2.0 - 0.0105 - 1.5);
  EXPECT_EQ(model.flow.edges[static_cast<std::size_t>(Edge::West)].value, 12);
  EXPECT_EQ(model.flow.edges[static_cast<std::size_t>(Edge::East)].kind,
            EdgeCondition::Kind::Level);
  EXPECT_EQ(model.flow.edges[static_cast<std::size_t>(Edge::North)].kind,
            EdgeCondition::Kind::Wall);
  EXPECT_THAT(model.time.outputHours, ElementsAre(0.75, 1.5, 2.0));
  EXPECT_TRUE(model.water.isDepth);
  EXPECT_EQ(model.coordSys, "CoordSys Earth");
  EXPECT_NEAR(model.grid.toMap(0, 10).first, 4e5 - 10, 1e-6);
  EXPECT_NEAR(model.grid.toMap(30, 0).second, 5e6 + 30, 1e-6);
  EXPECT_EQ(model.labels->spacing, 4);
}

TEST(CaseFile, WhatIsWrongIsNamedWithItsLineAndWhatIsExpected) {
  const struct {
    const char* old;
    const char* with;
    const char* complaint;
  } cases[] = {
      {"rows = 3\n", "", ":2: the key \"grid.rows\" is missing; expected a whole number"},
      {"rows = 3", "rows = 3.5", ":4: grid.rows: expected a whole number of 1 or more."},
      {"cell_size = 5", "cell_size = -5", ":5: grid.cell_size: expected a number above 0 (m)."},
      {"rows = 3\n", "rows = 3\nangle = 0\n",
       ":5: unknown key \"grid.angle\"; known here: cell_size, columns, origin, rows."},
      {"[10.5, 1.5]", "[10.5]", ":10: bed.profile.depths: expected a list of pairs of numbers"},
      {"[10.5, 1.5]", "[0, 1.5]", ":10: bed.profile.depths: expected distances that increase."},
      {"level = 2.0\n", "level = 2.0\nraster = \"bed.asc\"\n",
       ":6: [bed]: expected exactly one of \"level\" or \"raster\"."},
      {"level = 2.0", "raster = \"bed.asc\"", ":7: bed.raster: there is no file"},
      {"{ discharge = 12 }", "12", ":14: boundary.west: expected a table [boundary.west]."},
      {"duration_h = 2", "duration_h = inf", ":19: time.duration_h: expected a number above 0"},
      {"sand.mcf", "mud.mcf", ":23: morphology.control_file: there is no file"},
      {"\"reach\"", "\"../reach\"", ":1: name: expected letters, digits, - and _ only"},
      {"[roughness]", "[roughness", ":11: "},
      {"[bed]", "[map]\norigin = [4e5, 5e6]\ncoord_sys = \"UTM\"\n[bed]",
       ":8: map.coord_sys: expected a line that begins with CoordSys"},
  };
  for (const auto& [old, with, text] : cases) {
    const TempFolder folder;
    EXPECT_THAT(complaint(folder, replaced(kCase, old, with)),
                HasSubstr(folder.path("case.toml") + text));
  }
}

TEST(Bed, ARasterCountsFromTheNorthAndLeavesCellsWithoutDataOut) {
  const TempFolder folder;
  const std::string file = folder.write("bed.asc",
                                        "ncols 3\nnrows 2\nxllcenter 11\nyllcenter 21\n"
                                        "cellsize 2\nNODATA_value -9\n"
                                        "1 2 -9\n4 5 6\n");
  BedShape shape;
  shape.raster = readRaster(file);

  EXPECT_EQ(shape.elevation(12.1, 22.1), 2.0);  // north row
  EXPECT_EQ(shape.elevation(15.9, 20.1), 6.0);
  EXPECT_EQ(shape.elevation(15.9, 23.9), std::nullopt);
  EXPECT_EQ(shape.elevation(0, 0), 4.0);  // outside: the nearest

  const GridFrame grid{3, 2, 2.0, 10, 20};
  const BedArrays bed = bedArrays(shape, grid);
  EXPECT_EQ(bed.code(4, 5), 0);
  EXPECT_EQ(bed.code(3, 5), 1);
  EXPECT_EQ(bed.code(3, 6), 0);  // margin
  EXPECT_EQ(bed.zc(3, 4), -5.0);
  EXPECT_EQ(bed.z2(3, 3), -4.5);
  EXPECT_EQ(bed.zpts(3, 3), -(4.0 + 5.0 + 1.0 + 2.0) / 4);

  folder.write("bed.asc", "ncols 3\nnrows 2\ncellsize 2\n1 2 3\n4 5\n");
  EXPECT_THAT([&] { readRaster(file); }, testing::ThrowsMessage<std::runtime_error>(
                                             HasSubstr(":5: expected 6 numbers, found 5.")));
}

}  // namespace
}  // namespace host
