#include "output/check_layer.hpp"

#include <array>
#include <vector>

#include "control/spatial_target.hpp"
#include "interface/entry_points.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kColumnBlock =
    "Columns 12\n  n Integer\n  m Integer\n  Grid_Ref Char(13)\n  Code Integer\n  ZC Float\n"
    "  Domain_Index Integer\n  mor_d50 Float\n  mor_d90 Float\n  mor_IVR Float\n  mor_DVR Float\n"
    "  mor_Bed_Limit_Z Float\n  mor_Bed_Code Integer\nData\n\n";

const std::string kEarth =
    "Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n"
    "CoordSys Earth Projection 8, 33, \"m\"\n";

// Two domains of 4 x 4 elements, of which (3, 3) to (4, 4) are written.
struct CheckLayerTest : test::ModuleTest {
  static constexpr int kN = 4;

  CheckLayerTest() {
    module.gisSettings.checkLayerPrefix = folder.path("run   ");
    module.gisSettings.checkLayerHeaderSource = "CoordSys Earth Projection 8, 33, \"m\"  ";
    std::int32_t nextReal = 1;
    std::int32_t nextInteger = 1;
    for (const int domain : {1, 2, 3})
      module.fields.reserve(domain, true, kN, kN, nextReal, nextInteger);
    real.assign(static_cast<std::size_t>(nextReal), 0.0);
    integer.assign(static_cast<std::size_t>(nextInteger), 0);
    for (const int domain : {1, 2, 3}) setDefaults(module.fields.fields(domain, work(), kN, kN));
    console.output.clear();
  }

  WorkArrays work() { return {real.data(), integer.data()}; }

  void write(int domain, int lastDomain, bool values = true) {
    writeCheckLayer(module, {.cells = {.domain = domain,
                                       .lastDomain = lastDomain,
                                       .code = {code.data(), kN, kN},
                                       .depth = {depth.data(), kN, kN},
                                       .range = range,
                                       .firstOffset = firstOffset,
                                       .secondOffset = 8,
                                       .frame = frame},
                             .writeValues = values,
                             .work = work()});
  }

  // Position of element (i, j).
  static std::size_t at(int i, int j) { return static_cast<std::size_t>((j - 1) * kN + i - 1); }

  std::string objects() const {
    const std::string text = folder.read("run_mor_check.mif");
    return text.substr(text.find("Data\n\n") + 6);
  }
  std::string records() const { return folder.read("run_mor_check.mid"); }

  std::vector<double> real;
  std::vector<std::int32_t> integer;
  std::array<std::int32_t, kN * kN> code{};
  std::array<double, kN * kN> depth{};
  Area range{.firstI = 3, .firstJ = 3, .lastI = 4, .lastJ = 4};
  std::int32_t firstOffset = 1;
  CellFrame frame{.x0 = 1000.0, .y0 = 2000.0, .stepA = 8.0, .stepB = 6.0};  // 10 m cells
};

TEST_F(CheckLayerTest, CellIsASquareOfTheTurnedGridWithItsRecord) {
  code[at(3, 4)] = -7;
  depth[at(3, 4)] = 12.5;
  SedimentFields fields = module.fields.fields(1, work(), kN, kN);
  fields.d50(3, 4) = 0.00025;
  fields.d90(3, 4) = 1.5;
  fields.inSituVoids(3, 4) = 0.35;
  fields.depositionVoids(3, 4) = 12.0;
  fields.bedCode(3, 4) = 2;

  write(1, 1);

  // Corner (a, b) lies at (1000 + 8 a - 6 b, 2000 + 6 a + 8 b); a = 1, 2 and b = 0, 1 here.
  EXPECT_EQ(folder.read("run_mor_check.mif"), kEarth + kColumnBlock +
                                                  "Region  1\n"
                                                  "  5\n"
                                                  "       1010.000       2020.000\n"
                                                  "       1002.000       2014.000\n"
                                                  "       1008.000       2006.000\n"
                                                  "       1016.000       2012.000\n"
                                                  "       1010.000       2020.000\n"
                                                  "    Pen (1,2,0)\n"
                                                  "    Brush (1,0,16777215)\n");
  EXPECT_EQ(records(),
            "     2,    10,\"2,10\",-7,     -12.500,1,  0.000250,  1.500000,0.350,*****,"
            "-99999.000,   2\n");
  EXPECT_TRUE(shown("...Closed File Unit:2003\n"));
}

TEST_F(CheckLayerTest, CellsRunAlongTheSecondIndexFirstAndDomainsFollowEachOther) {
  code.fill(1);
  code[at(4, 3)] = 0;
  firstOffset = 123456;
  module.fields.fields(1, work(), kN, kN).d90(3, 4) = 0.0002;
  write(1, 2);
  code.fill(0);
  code[at(4, 4)] = 5;
  write(2, 2, false);

  EXPECT_EQ(
      records(),
      R"(123457,     9,"123457,9",1,       0.000,1,  0.000160,  0.000160,0.400,0.400,-99999.000,   1
123457,    10,"123457,10",1,       0.000,1,  0.000160,  0.000200,0.400,0.400,-99999.000,   1
123458,    10,"123458,10",1,       0.000,1,  0.000160,  0.000160,0.400,0.400,-99999.000,   1
123458,    10,"123458,10",5,       0.000,2,  0.000000,  0.000000,0.000,0.000,     0.000,   0
)");
  // Corner (0, 0) is the origin, and neighbours share their corners.
  const std::string squares = objects();
  EXPECT_THAT(squares, StartsWith("Region  1\n  5\n       1002.000       2014.000\n"
                                  "        994.000       2008.000\n"
                                  "       1000.000       2000.000\n"));
  // (4, 4): a = 1, 2 and b = 1, 2, twice.
  const std::string last =
      "       1004.000       2028.000\n        996.000       2022.000\n"
      "       1002.000       2014.000\n       1010.000       2020.000\n"
      "       1004.000       2028.000\n    Pen (1,2,0)\n    Brush (1,0,16777215)\n";
  EXPECT_THAT(squares, EndsWith(last + "Region  1\n  5\n" + last));
  EXPECT_THAT(folder.read("run_mor_check.mif"), HasSubstr(kEarth + kColumnBlock));
}

TEST_F(CheckLayerTest, DomainWithoutMorphologyHasZerosAndALaterOneWithoutALayerWritesNothing) {
  code[at(3, 3)] = 1;
  write(2, 2);
  EXPECT_EQ(console.output, "");

  std::int32_t nextReal = 1;
  std::int32_t nextInteger = 1;
  module.fields.reserve(1, false, kN, kN, nextReal, nextInteger);
  write(1, 1);
  EXPECT_THAT(records(), EndsWith(",  0.000000,  0.000000,0.000,0.000,     0.000,   0\n"));
}

TEST_F(CheckLayerTest, BlankSourceWarnsAndGivesPlaneCoordinatesAroundTheCellsOfAllDomains) {
  module.gisSettings.checkLayerHeaderSource = "    ";
  console.answers = {""};
  const auto expectBounds = [&](const std::string& bounds) {
    EXPECT_THAT(folder.read("run_mor_check.mif"),
                StartsWith("Version 300\nCharset \"WindowsLatin1\"\nDelimiter \",\"\n"
                           "CoordSys NonEarth Units \"m\" Bounds (" +
                           bounds + ")\nColumns 12\n"));
  };
  // Domain 1 has no cell. Its first row gives the bounds an extent: corners (0, 0) to (2, 1).
  range.lastI = 2;
  frame.x0 = 0.0;
  write(1, 3);
  expectBounds("         -6.000,       2000.000) (         16.000,       2020.000");
  EXPECT_TRUE(
      shown("\n\nNoXY: WARNING 0307 - No MI Projection or mif header file  found.\n"
            "               Non-Earth Coordinates will be used.  [miWriteMifHeader]\n"
            "\nPress Enter to Continue\n"))
      << console.output;

  // Corners (0, 0), (2, 0), (0, 2), (2, 2): (1000, 2000), (1016, 2012), (988, 2016), (1004, 2028).
  range.lastI = 4;
  frame.x0 = 1000.0;
  write(2, 3);
  expectBounds("        988.000,       2000.000) (       1016.000,       2028.000");
  frame.x0 = 1100.0;
  frame.y0 = 2050.0;
  write(3, 3);
  expectBounds("        988.000,       2000.000) (       1116.000,       2078.000");
  for (const std::int32_t domain : {1, 2}) write(domain, 2);  // another layer
  expectBounds("       1088.000,       2050.000) (       1116.000,       2078.000");
}

TEST_F(CheckLayerTest, BoundsThatCannotBeReadEndTheRun) {
  const std::pair<std::string, bool> cases[] = {
      {"CoordSys Earth Projection 1, 104 Bounds (-180, -90) (180, 90)", true},
      {"CoordSys Earth Projection 1, 104", true},
      {"CoordSys Bounds (-180 x", false},
      {"CoordSys bounds (-180, -90) 180 90", false},
      {"CoordSys Bounds () ()", false},
      {"CoordSys Bounds (1,,) (3, 4)", false},
      {"CoordSys Bounds (1, 2) (3)", false},
  };
  for (const auto& [line, isFine] : cases) {
    SCOPED_TRACE(line);
    module.gisSettings.checkLayerHeaderSource = line;
    console.output.clear();
    EXPECT_EQ(test::exitCodeOf([&] { write(1, 1); }), isFine ? -1 : 1);
    EXPECT_EQ(shown("\nERROR 0311 - Could not read XY Bounds in MI Projection Line.\n"), !isFine);
    if (isFine) {
      EXPECT_THAT(folder.read("run_mor_check.mif"), HasSubstr("\n" + line + "\nColumns"));
    }
  }
}

TEST_F(CheckLayerTest, HeaderOfAFileIsCopiedUpToItsColumns) {
  folder.write("header.mif",
               "Version 450  \r\nCoordSys NonEarth Units \"m\" Bounds (-1, -2) ( 3,4.5 )\r\n"
               "Unique 1\r\nCOLUMNS 1\r\n  v Float\r\n");
  Unit* out = module.files.find(module.files.openFile(folder.path("out.mif"), "O ", 1));
  Bounds bounds;
  MifHeaderWriter(module.files, module.diagnostics, module.termination)
      .miWriteMifHeader(*out, {.headerFile = folder.path("header.mif")}, 0, bounds);
  out->flush();

  EXPECT_EQ(folder.read("out.mif"),
            "Version 450\nCoordSys NonEarth Units \"m\" Bounds (-1, -2) ( 3,4.5 )\nUnique 1\n");
  EXPECT_EQ((std::array{bounds.xMin, bounds.yMin, bounds.xMax, bounds.yMax}),
            (std::array{-1.0, -2.0, 3.0, 4.5}));
  EXPECT_EQ(record->log_unit, module.logUnit) << "the log of the call was for the call";
}

}  // namespace
}  // namespace nivaro
