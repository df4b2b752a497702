#include "interface/entry_points.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "control/spatial_target.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

// A 5 x 5 domain with still water, and a control of what a call changes.
class EntryPoints : public testing::Test {
 protected:
  static constexpr int kN = 5;
  static constexpr std::size_t kCells = 25;

  void SetUp() override {
    std::int32_t nextReal = 1;
    std::int32_t nextInteger = 1;
    t.module.fields.reserve(1, true, kN, kN, nextReal, nextInteger);
    real.assign(static_cast<std::size_t>(nextReal), 0.0);
    integer.assign(static_cast<std::size_t>(nextInteger), 1);
    setDefaults(t.module.fields.fields(1, {real.data(), integer.data()}, kN, kN));
    setDefaults(t.module.parameters.ofDomain(1));
    t.module.parameters.load(1);
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

  test::TestModule t;
  std::vector<double> real;
  std::vector<std::int32_t> integer;
  std::vector<Logical> wet = std::vector<Logical>(kCells, -1);
  std::vector<double> zero = std::vector<double>(kCells, 0.0);
  std::vector<double> zpts = std::vector<double>(kCells, 0.0);
  std::vector<double> zc = std::vector<double>(kCells, 2.0);
  std::vector<double> z2 = std::vector<double>(kCells, 0.0);
  std::vector<double> z1 = std::vector<double>(kCells, 0.0);
};

TEST_F(EntryPoints, StepSlumpsIntoTheHole) {
  runMorphology(t.module, call());

  // Four neighbours stand 1 m higher at 0.5 m: slope 1:0.5 is steeper than 1:1, and each slump of
  // 1 * (1 - 0.5) m is cut to the limit of 0.1 m.
  EXPECT_DOUBLE_EQ(zc[12], 3.0 - 4 * 0.1);
  EXPECT_DOUBLE_EQ(zc[11], 2.0 + 0.1);
  EXPECT_EQ(t.console.output, "");
}

TEST_F(EntryPoints, SmoothingComesBeforeInitialisationBeforeSkip) {
  MorphologyCall c = call();
  c.smoothing = c.initialisation = c.skip = true;
  runMorphology(t.module, c);
  EXPECT_EQ(t.console.output, "\nSmoothing Zpts based on ZC values in morphology areas...\n");
  EXPECT_EQ(zc[12], 3.0);
  EXPECT_EQ(integer[0], 0);  // outside the area

  t.console.output.clear();
  c.smoothing = false;
  runMorphology(t.module, c);
  EXPECT_EQ(t.console.output, "\nInitialising Morphological Variables...\n");

  t.console.output.clear();
  c.initialisation = false;
  runMorphology(t.module, c);
  EXPECT_EQ(t.console.output, "");
  EXPECT_EQ(zc[12], 3.0);
}

TEST_F(EntryPoints, DomainWithoutMorphologyIsLeftAlone) {
  std::int32_t nextReal = 1;
  std::int32_t nextInteger = 1;
  t.module.fields.reserve(1, false, kN, kN, nextReal, nextInteger);
  runMorphology(t.module, call());
  MorphologyCall c = call();
  c.smoothing = true;
  runMorphology(t.module, c);
  EXPECT_EQ(zc[12], 3.0);
  EXPECT_EQ(integer[0], 1);
}

TEST_F(EntryPoints, DomainWithoutAPlaceInTheWorkArraysEndsTheRun) {
  for (const std::int32_t domain : {0, 101, 2}) {
    MorphologyCall c = call();
    c.domain = domain;
    EXPECT_THROW(runMorphology(t.module, c), test::ProcessEnded);
  }
  std::int32_t nextReal = 2147483647;
  std::int32_t nextInteger = 7;
  EXPECT_THROW(reserveFields(t.module, {2, true, 5, 4}, nextReal, nextInteger), test::ProcessEnded);
  EXPECT_NE(
      t.console.output.find("domain 2 of 5 x 4 cells does not fit behind positions 2147483647 "
                            "and 7, which count from 1 in 4-byte integers"),
      std::string::npos)
      << t.console.output;
  EXPECT_NE(t.console.output.find("Should not be here - domain 101 is not in 1 to 100"),
            std::string::npos);
  EXPECT_NE(t.console.output.find("domain 2 has no fields: QVMOR_SETUP_S2 comes first"),
            std::string::npos);
}

}  // namespace
}  // namespace nivaro
