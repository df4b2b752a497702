#include "output/check_layer.hpp"

#include <array>
#include <vector>

#include "control/spatial_target.hpp"
#include "interface/entry_points.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

using testing::StartsWith;

// Three domains of 4 x 4 elements, of which (3, 3) to (4, 4) are written.
struct CheckLayerTest : test::ModuleTest {
  static constexpr int kN = 4;

  CheckLayerTest() {
    module.gisSettings.checkLayerPrefix = folder.path("run   ");
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

  void write(int domain, int lastDomain) {
    writeCheckLayer(module, {.cells = {.domain = domain,
                                       .lastDomain = lastDomain,
                                       .code = {code.data(), kN, kN},
                                       .depth = {depth.data(), kN, kN},
                                       .range = range,
                                       .firstOffset = 1,
                                       .secondOffset = 8,
                                       .frame = frame},
                             .writeValues = true,
                             .work = work()});
  }

  std::vector<double> real;
  std::vector<std::int32_t> integer;
  std::array<std::int32_t, kN * kN> code{};
  std::array<double, kN * kN> depth{};
  Area range{.firstI = 3, .firstJ = 3, .lastI = 4, .lastJ = 4};
  CellFrame frame{.x0 = 1000.0, .y0 = 2000.0, .stepA = 8.0, .stepB = 6.0};  // 10 m cells
};

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

}  // namespace
}  // namespace nivaro
