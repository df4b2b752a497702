#include "interface/entry_points.hpp"

#include <functional>
#include <utility>
#include <vector>

#include "control/spatial_target.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

// A 5 x 5 domain with still water, and a control of what a call changes.
struct EntryPoints : test::ModuleTest {
  static constexpr int kN = 5;
  static constexpr std::size_t kCells = 25;

  EntryPoints() {
    std::int32_t nextReal = 1;
    std::int32_t nextInteger = 1;
    module.fields.reserve(1, true, kN, kN, nextReal, nextInteger);
    real.assign(static_cast<std::size_t>(nextReal), 0.0);
    integer.assign(static_cast<std::size_t>(nextInteger), 1);
    setDefaults(module.fields.fields(1, {real.data(), integer.data()}, kN, kN));
    setDefaults(module.parameters.ofDomain(1));
    module.parameters.load(1);
    zc[12] = 3.0;  // a hole in the middle of a bed at depth 2: its walls slump
  }

  MorphologyCall call() {
    const auto view = [](auto& values) { return Grid(values.data(), kN, kN); };
    return {.flow = {.wet = view(wet),
                     .flow = view(wet),
                     .waterLevel = view(zero),
                     .v2 = view(zero),
                     .v1 = view(zero)},
            .bed = {.zpts = view(zpts), .zc = view(zc), .z2 = view(z2), .z1 = view(z1)},
            .settings = {.cellSize = 0.5,
                         .slumpDistanceSecond = 0.5,
                         .slumpDistanceFirst = 0.5,
                         .timeStep = 1.0},
            .area = {2, 2, 4, 4},
            .work = {real.data(), integer.data()},
            .domain = 1};
  }

  std::vector<double> real;
  std::vector<std::int32_t> integer;
  std::vector<Logical> wet = std::vector<Logical>(kCells, -1);
  std::vector<double> zero = std::vector<double>(kCells, 0.0);
  std::vector<double> zpts = std::vector<double>(kCells, 0.0);
  std::vector<double> zc = std::vector<double>(kCells, 2.0);
  std::vector<double> z2 = std::vector<double>(kCells, 0.0);
  std::vector<double> z1 = std::vector<double>(kCells, 0.0);
};

TEST_F(EntryPoints, SmoothingComesBeforeInitialisationBeforeSkipBeforeTheStep) {
  MorphologyCall c = call();
  c.smoothing = c.initialisation = c.skip = true;
  runMorphology(module, c);
  EXPECT_EQ(console.output, "\nSmoothing Zpts based on ZC values in morphology areas...\n");
  EXPECT_EQ(integer[0], 0);  // outside the area

  console.output.clear();
  c.smoothing = false;
  runMorphology(module, c);
  c.initialisation = false;
  runMorphology(module, c);
  EXPECT_EQ(console.output, "\nInitialising Morphological Variables...\n");
  EXPECT_EQ(zc[12], 3.0);

  // Four neighbours stand 1 m higher at 0.5 m: slope 1:0.5 is steeper than 1:1, and each slump of
  // 1 * (1 - 0.5) m is cut to the limit of 0.1 m.
  console.output.clear();
  runMorphology(module, call());
  EXPECT_DOUBLE_EQ(zc[12], 3.0 - 4 * 0.1);
  EXPECT_DOUBLE_EQ(zc[11], 2.0 + 0.1);
  EXPECT_EQ(console.output, "");
}

TEST_F(EntryPoints, DomainWithoutMorphologyIsLeftAlone) {
  std::int32_t nextReal = 1;
  std::int32_t nextInteger = 1;
  module.fields.reserve(1, false, kN, kN, nextReal, nextInteger);
  runMorphology(module, call());
  MorphologyCall c = call();
  c.smoothing = true;
  runMorphology(module, c);
  EXPECT_EQ(zc[12], 3.0);
  EXPECT_EQ(integer[0], 1);

  // Its points hold zeros, whatever stands where fields would be: no corner is computed.
  module.dataset.open(folder.path("run.dat"));
  real.assign(real.size(), 5.0);
  const std::vector<std::int32_t> point{2};
  writeDatasetValues(module, {.turn = {},
                              .writeValues = true,
                              .nx = kN,
                              .range = {2, 2, 4, 4},
                              .pointI = point,
                              .pointJ = point,
                              .realWork = real.data()});
  EXPECT_EQ(folder.bytes("run.dat"), std::string(4, '\0'));
  EXPECT_EQ(real, std::vector<double>(real.size(), 5.0));
}

TEST_F(EntryPoints, WorkspaceIsOpenUntilTheLastDomainHasReadItsControlFile) {
  const std::string file = folder.write("a.mcf", "");
  module.workspace.open(folder.path("a.wor"), "a");
  for (const std::int32_t lastDomain : {2, 1}) {
    readControlFile(module, {.controlFile = file,
                             .domain = 1,
                             .lastDomain = lastDomain,
                             .n = kN,
                             .m = kN,
                             .work = {real.data(), integer.data()}});
    EXPECT_EQ(module.units.find(2002) != nullptr, lastDomain == 2);
  }
}

TEST_F(EntryPoints, DomainWithoutAPlaceInTheWorkArraysEndsTheRun) {
  const auto showsAtItsEnd = [&](std::string_view text, auto run) {
    console.output.clear();
    return test::exitCodeOf(run) != -1 && console.shows(text);
  };
  MorphologyCall c = call();
  for (const auto& [domain, text] :
       {std::pair(0, "Should not be here QVMORPHOLOGY - domain 0 is not in 1 to 100"),
        std::pair(101, "Should not be here QVMORPHOLOGY - domain 101 is not in 1 to 100"),
        std::pair(2, "domain 2 has no fields: QVMOR_SETUP_S2 comes first")}) {
    c.domain = domain;
    EXPECT_TRUE(showsAtItsEnd(text, [&] { runMorphology(module, c); })) << console.output;
  }
  ControlFileCall file{};
  DatasetValuesCall values;
  CheckLayerCall cells{}, outside{};
  outside.cells.domain = -1;
  file.domain = values.turn.domain = cells.cells.domain = 2;
  values.writeValues = cells.writeValues = true;
  std::int32_t nextReal = 2147483647, nextInteger = 7;
  const std::pair<const char*, std::function<void()>> calls[] = {
      {"QVMOR_RDINPF - domain 2 has no fields", [&] { readControlFile(module, file); }},
      {"QVMOR_WRSMSF_DAT_RESULTS - domain 2 has no fields",
       [&] { writeDatasetValues(module, values); }},
      {"QVMOR_WRMIFF - domain 2 has no fields", [&] { writeCheckLayer(module, cells); }},
      {"QVMOR_WRMIFF - domain -1 is", [&] { writeCheckLayer(module, outside); }},
      {"QVMOR_SETUP_S2 - domain 2 of 5 x 4 cells does not fit behind positions 2147483647 and 7, "
       "which count from 1 in 4-byte integers",
       [&] {
         reserveFields(module, {2, true, 5, 4}, nextReal, nextInteger);
       }},
  };
  for (const auto& [text, run] : calls)
    EXPECT_TRUE(showsAtItsEnd("Should not be here " + std::string(text), run)) << console.output;

  values.writeValues = cells.writeValues = false;  // zeros are wanted, which need no place
  EXPECT_EQ(test::exitCodeOf([&] {
              writeDatasetValues(module, values);
              writeCheckLayer(module, cells);
            }),
            -1);
}

}  // namespace
}  // namespace nivaro
