// The whole step: the engine against the plain form, and against a number derived by hand.
#include "morphology/engine/morphology_step.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <string>

#include "morphology/plain_step.hpp"
#include "morphology/random_domain.hpp"
#include "morphology/test_domain.hpp"
#include "morphology/transport_capacity.hpp"

namespace nivaro {
namespace {

// What a control file leaves out, and what a host may have left behind.
void spoil(Dice& dice, TestDomain& d) {
  auto& p = d.parameters;
  for (double* value : {&p.fallVelocity, &p.currentRelatedRoughness, &p.mixingLayerThickness,
                        &p.referenceLevel, &p.sandGrainDensity, &p.waterDensity})
    if (dice.chance(0.3)) *value = 0.0;
  const double noNumber = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  spoilFields(dice, d, 0.2, dice.oneOf({0.01, 0.1}),
              std::initializer_list<double>{noNumber, infinite, -infinite, 0.0, 1.0});
}

// Some grids are longer than a block of cells and a strip along the first index, some wider than one along
// the second; now and then the area is empty, or ends where a block ends.
TestDomain randomDomain(unsigned seed) {
  Dice dice(seed);
  const bool large = seed % 50 == 0, wide = seed % 100 == 0;
  const int n = wide ? dice.whole(515, 700) : large ? dice.whole(67, 150) : dice.whole(4, 20);
  TestDomain d = randomDomain(dice, n, large ? dice.whole(17, 90) : dice.whole(4, 12));
  d.area = {dice.whole(2, 3), dice.whole(2, 3), dice.whole(1, d.n - 1), dice.whole(1, d.m - 1)};
  if (large && dice.chance(0.5)) d.area.lastI = wide ? d.n - 1 : d.area.firstI + 63;
  if (seed % 3 == 0) spoil(dice, d);
  return d;
}

TestDomain stepped(TestDomain d, StepWorkspace& workspace) {
  morphologyStep(d.input(), d.area, workspace);
  return d;
}

TEST(MorphologyStep, AsThePlainOneOnEveryProcessor) {
  // Working memory that has served other domains.
  std::map<Processor, StepWorkspace> used;
  for (const Processor processor : supportedProcessors()) used.emplace(processor, processor);
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    const TestDomain start = randomDomain(seed);
    TestDomain expected = start;
    plainStep(expected.input(), expected.area);
    TestDomain portable = stepped(start, used.at(Processor::Portable));
    for (const Processor processor : supportedProcessors()) {
      const std::string what =
          "seed " + std::to_string(seed) + " on " + std::to_string(static_cast<int>(processor));
      StepWorkspace workspace(processor);
      TestDomain actual = stepped(start, used.at(processor)), again = stepped(start, workspace);
      ASSERT_NO_FATAL_FAILURE(expectSame(expected, actual, what, 1e-9));
      // In thousands of domains some cell settles so little that the digits of its adaptation cancel.
      if (seed <= 500) {
        ASSERT_NO_FATAL_FAILURE(expectSame(portable, actual, what, 1e-12));
      }
      ASSERT_NO_FATAL_FAILURE(expectSame(actual, again, what));
    }
  }
}

// Still water: no transport is computed, and every bit of limits, slumps and corners is the same.
TEST(MorphologyStep, SameBitsWhereNoTransportIsComputed) {
  for (unsigned seed = 1; seed <= 500; ++seed) {
    TestDomain expected = randomDomain(seed);
    for (auto* v : {&expected.v1, &expected.v2}) v->assign(expected.size, 0.0005);
    expected.parameters.velocityCentred = false;
    TestDomain actual = expected;
    StepWorkspace workspace;
    for (int time = 0; time < 2; ++time) {
      plainStep(expected.input(), expected.area);
      actual = stepped(actual, workspace);
    }
    ASSERT_NO_FATAL_FAILURE(expectSame(expected, actual, "seed " + std::to_string(seed)));
  }
}

TEST(MorphologyStep, SandThatAClosedEndStopsStaysInTheLastCell) {
  // A channel along the first index into a wall: v1 = 1 m/s up to the side of the last cell, which
  // meets capacity 0 at the wall. Its bed load settles whole, and of the suspended load qs the
  // share 1 - e^x with x = -K c ws dx / qs; with Q = (1 x 2 + 0 x 0) / 2 = 1, c = qs and x = -0.02
  // x 10. The side carries what it does between two equal cells of depth 2 m.
  TestDomain d(6, 3);
  const std::size_t last = 10;  // (5, 2)
  d.wet[11] = 0;
  d.v1.assign(d.size, 1.0);
  d.parameters.timeCentringFactor = 1.0;
  StepWorkspace workspace;
  d = stepped(d, workspace);

  const Transport q =
      transportCapacity(2.0, 1.0, grainTerms(0.0002, d.parameters), 0.0003, d.parameters);
  const double settled = q.bedLoad + (1.0 - std::exp(-0.2)) * q.suspended;
  EXPECT_NEAR(d.change[last], settled / 2650.0 / 0.6 / 10.0, 1e-15);
  EXPECT_NEAR(d.adaptation[last], 0.02, 1e-15);
}

}  // namespace
}  // namespace nivaro
