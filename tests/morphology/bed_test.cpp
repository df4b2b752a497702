// What shapes the bed besides transport: limits, slumping, rebuild, smoothing.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "morphology/bed_rebuild.hpp"
#include "morphology/morphology_step.hpp"
#include "morphology/processors.hpp"
#include "morphology/slumping.hpp"
#include "morphology/step_data.hpp"
#include "morphology/test_domain.hpp"

namespace nivaro {
namespace {

const double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// Of a 3 x 3 grid; the area is the middle cell alone.
constexpr std::size_t kMiddle = 4;

TEST(BedChange, IsCentredInTimeAndLimited) {
  struct Case {
    double factor, computed, previous, applied;
  };
  const Case cases[] = {
      {1.0, 0.25, 0.0, 0.1},             // beyond the limit of 0.1
      {1.0, -0.25, 0.0, -0.1},           //
      {0.5, 0.0, 0.1, 0.05},             // half of the previous change goes on
      {1.0, kNoNumber, 0.0, kNoNumber},  // no limit hides it
  };
  for (const auto& [factor, computed, previous, applied] : cases) {
    for (const Processor processor : supportedProcessors()) {
      TestDomain d(3, 3);
      d.parameters.timeCentringFactor = factor;
      d.change[kMiddle] = computed;
      d.previous[kMiddle] = previous;
      const StepInput input = d.input();
      StepScratch scratch(processor);
      StepData step = stepData(input, d.area);
      step.map = scratch.blockMap(1, 1);
      step.map.blocks[0] = kCarriesSand;
      stepKernel(processor).limitAndRaiseRow(step, 2);

      EXPECT_TRUE(isSame(d.change[kMiddle], applied)) << computed;
      EXPECT_TRUE(isSame(d.previous[kMiddle], applied)) << computed;
      EXPECT_TRUE(isSame(d.zc[kMiddle], 2.0 - applied)) << computed;
    }
  }
}

// All rows of the area, as a step takes them.
void slump(TestDomain& d) {
  for (int j = d.area.firstJ; j <= d.area.lastJ; ++j)
    addSlumping(d.input(), d.area, {d.area.firstI, j}, d.area.lastI - d.area.firstI + 1);
}

// Two cells of the area side by side along the first index, 1 m apart: the left one lies `step`
// lower than the right one, whose depth is 2.
struct SlumpCase {
  std::string name;
  double step;
  double limit;  // slump bed change limit
  double slope;
  Logical leftWet;
  std::int32_t leftCode, rightCode;
  double bedLimit;  // of the left cell
  double height;
};

TEST(Slumping, Cases) {
  const SlumpCase cases[] = {
      // 2 (1 - (1/2) / 1) = 1
      {"unlimited", 2.0, 9.0, 1.0, -1, 1, 1, -99.0, 1.0},
      {"limited", 2.0, 0.1, 1.0, -1, 1, 1, -99.0, 0.1},
      {"stable", 0.9, 9.0, 1.0, -1, 1, 1, -99.0, 0.0},
      {"just stable", 1.0, 9.0, 1.0, -1, 1, 1, -99.0, 0.0},
      // 0.75 (1 - (1/0.75) / 2) = 0.25
      {"flatter slope", 0.75, 9.0, 2.0, -1, 1, 1, -99.0, 0.25},
      {"level", 0.000009, 9.0, 1e9, -1, 1, 1, -99.0, 0.0},
      {"dry cell", 2.0, 9.0, 1.0, 0, 1, 1, -99.0, 0.0},
      {"even code", 2.0, 9.0, 1.0, -1, 2, 1, -99.0, 1.0},
      {"no bed", 2.0, 9.0, 1.0, -1, 0, 1, -99.0, 0.0},
      {"neighbour's code does not count", 2.0, 9.0, 1.0, -1, 1, 0, -99.0, 1.0},
      {"limit at the neighbour's bed", 2.0, 9.0, 1.0, -1, 1, 1, -2.0, 0.0},
      {"limit below the neighbour's bed", 2.0, 9.0, 1.0, -1, 1, 1, -2.5, 1.0},
  };
  for (const auto& c : cases) {
    TestDomain d(4, 3);
    const std::size_t left = 5, right = 6;
    d.settings.slumpDistanceFirst = 1.0;
    d.parameters.slumpSlope = c.slope;
    d.parameters.slumpBedChangeLimit = c.limit;
    d.zc[left] = 2.0 + c.step;
    d.wet[left] = c.leftWet;
    d.wet[right] = 0;  // a wet cell pulls from a dry one
    d.bedCode[left] = c.leftCode;
    d.bedCode[right] = c.rightCode;
    d.bedLimit[left] = c.bedLimit;
    slump(d);

    EXPECT_DOUBLE_EQ(d.applied[left], c.height) << c.name;
    EXPECT_DOUBLE_EQ(d.applied[right], -c.height) << c.name;
  }
}

TEST(Slumping, NoSandIsLostOverTheRim) {
  TestDomain d(5, 6);
  d.settings.slumpDistanceFirst = 0.5;
  d.settings.slumpDistanceSecond = 0.25;
  for (std::size_t k = 0; k < d.size; ++k) d.zc[k] = 2.0 + static_cast<double>(k * k % 7);
  slump(d);

  double inArea = 0.0;
  for (int j = 2; j <= 5; ++j)
    for (int i = 2; i <= 4; ++i) inArea += d.grid(d.applied)(i, j);
  EXPECT_NEAR(inArea, 0.0, 1e-12);
}

TEST(Rebuild, MeansOverMovableBedsOrTheHigherBed) {
  TestDomain d(4, 4);
  d.zc = {9, 9, 9, 9,  //
          9, 3, 1, 9,  // (2, 2) and (3, 2)
          9, 5, 7, 9,  // (2, 3) and (3, 3)
          9, 9, 9, 9};
  d.zpts.assign(d.size, -1.0);
  d.bedCode = {0, 0, 0,  0,  //
               0, 1, 1,  0,  //
               0, 1, -1, 0,  // odd but not above 0
               0, 0, 0,  0};
  const auto bed = d.input().bed;

  rebuildCornersAndSides(d.input(), d.area);
  EXPECT_EQ(bed.z1(2, 2), 2.0);     // mean of 3 and 1
  EXPECT_EQ(bed.z2(2, 2), 4.0);     // mean of 3 and 5
  EXPECT_EQ(bed.z1(2, 3), 2.0);     // one of the two has no movable bed: as before
  EXPECT_EQ(bed.zpts(2, 2), 3.0);   // mean of 3, 1 and 5
  EXPECT_EQ(bed.zpts(1, 1), 3.0);   // of the rim, one cell counts
  EXPECT_EQ(bed.zpts(3, 3), -1.0);  // none counts: as before

  d.parameters.cellSidesHigh = true;
  rebuildCornersAndSides(d.input(), d.area);
  EXPECT_EQ(bed.z1(2, 2), 1.0);
  EXPECT_EQ(bed.z2(2, 2), 3.0);
  EXPECT_EQ(bed.zpts(2, 2), 3.0);
}

TEST(Smoothing, ConfinesCodesAndLowersLimits) {
  TestDomain d(4, 3);
  d.bedLimit[5] = -1.0;  // above the bed at -2
  d.bedLimit[6] = -3.0;
  smoothBed(d.input(), d.area);

  EXPECT_EQ(d.bedCode, (std::vector<std::int32_t>{0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(d.bedLimit[5], -2.0);
  EXPECT_EQ(d.bedLimit[6], -3.0);
}

TEST(Smoothing, AnAreaThatFillsTheGridKeepsItsCodes) {
  TestDomain d(4, 3);
  const auto before = d.bedCode;
  smoothBed(d.input(), {1, 1, 4, 3});

  EXPECT_EQ(d.bedCode, before);
}

}  // namespace
}  // namespace nivaro
