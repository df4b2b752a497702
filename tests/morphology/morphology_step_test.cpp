// The whole step: against the plain transcription, under mirroring and transposition, and at rest.
#include "morphology/morphology_step.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "morphology/processors.hpp"
#include "morphology/reference_step.hpp"
#include "morphology/test_domain.hpp"
#include "morphology/transport_capacity.hpp"

namespace nivaro {
namespace {

class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}

  double real(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine_);
  }
  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
  bool chance(double share) { return real(0.0, 1.0) < share; }

  template <typename T>
  T oneOf(std::initializer_list<T> values) {
    return values.begin()[whole(0, static_cast<int>(values.size()) - 1)];
  }
  void fill(std::vector<double>& field, double low, double high) {
    for (double& value : field) value = real(low, high);
  }

 private:
  std::mt19937 engine_;
};

// Water 1 to 3 m deep over a rough bed, flow of a main direction with eddies.
void fillFlowAndBed(Dice& dice, TestDomain& d) {
  dice.fill(d.level, -0.2, 0.2);
  for (auto* depth : {&d.zc, &d.z1, &d.z2}) dice.fill(*depth, 1.0, 3.0);
  const double spread = dice.oneOf({0.0, 0.3, 1.5});
  for (auto* v : {&d.v1, &d.v2}) {
    const double mean = dice.oneOf({-1.0, 0.0, 1.0});
    dice.fill(*v, mean - spread, mean + spread);
  }
}

void fillFields(Dice& dice, TestDomain& d) {
  for (auto* field :
       {&d.zpts, &d.previous, &d.applied, &d.change, &d.concentration, &d.adaptation, &d.spare})
    dice.fill(*field, -0.1, 0.1);
  for (auto* voids : {&d.inSituVoids, &d.depositionVoids}) dice.fill(*voids, 0.2, 0.6);
  const double coarse = dice.oneOf({0.0002, 0.0003, 0.0006, 0.003, 0.02});
  for (std::size_t k = 0; k < d.size; ++k) {
    d.d50[k] = dice.chance(0.6) ? 0.00015 : coarse;
    d.d90[k] = d.d50[k] * dice.oneOf({1.0, 1.5});
    d.bedLimit[k] = dice.oneOf({-99999.0, -99999.0, -d.zc[k], dice.real(-3.0, -1.0)});
    d.bedCode[k] = dice.oneOf({1, 1, 1, 1, 1, 1, 3, 2, 0, -1, -2});
    d.wet[k] = dice.chance(0.85) ? dice.oneOf({-1, 1}) : dice.oneOf({0, 2});
    d.flow[k] = dice.oneOf({-1, 1, 0, 2});
  }
}

// Fields that are the same everywhere, and patches without sand, are passed over in ways of their own.
void levelFields(Dice& dice, TestDomain& d) {
  const bool grains = dice.chance(0.4), voids = dice.chance(0.3);
  for (auto* field : {&d.d50, &d.d90})
    if (grains) field->assign(d.size, field->front());
  for (auto* field : {&d.inSituVoids, &d.depositionVoids})
    if (voids) field->assign(d.size, field->front());
  if (dice.chance(0.3)) d.bedLimit.assign(d.size, dice.oneOf({-99999.0, -1.5}));
  if (!dice.chance(0.3)) return;
  const int firstI = dice.whole(1, d.n), firstJ = dice.whole(1, d.m),
            lastJ = dice.whole(firstJ, d.m);
  for (int j = firstJ; j <= lastJ; ++j)
    for (int i = firstI; i <= d.n; ++i) d.grid(d.bedCode)(i, j) = dice.oneOf({0, 0, 0, 0, 2, -2});
}

void fillOptions(Dice& dice, TestDomain& d) {
  auto& p = d.parameters;
  p.velocityCentred = dice.chance(0.5);
  p.cellSidesHigh = dice.chance(0.5);
  p.timeCentringFactor = dice.real(0.0, 1.0);
  p.concentrationFactor = dice.oneOf({1.0, 9.0});
  p.slumpSlope = dice.oneOf({1.0, 10.0, 40.0});
  p.bedChangeLimit = dice.oneOf({0.1, 1e9});
  d.settings = {dice.real(5.0, 20.0),  dice.real(1.0, 10.0), dice.real(1.0, 10.0),
                dice.real(1.0, 100.0), dice.chance(0.5),     dice.real(0.5, 1.2)};
  d.area.firstI = dice.whole(2, 3);
  d.area.firstJ = dice.whole(2, 3);
  d.area.lastI = dice.whole(1, d.n - 1);  // now and then the area is empty
  d.area.lastJ = dice.whole(1, d.m - 1);
}

// What a control file leaves out, and what a host may have left behind.
void spoil(Dice& dice, TestDomain& d) {
  auto& p = d.parameters;
  for (double* value : {&p.fallVelocity, &p.currentRelatedRoughness, &p.mixingLayerThickness,
                        &p.referenceLevel, &p.sandGrainDensity, &p.waterDensity})
    if (dice.chance(0.3)) *value = 0.0;
  const double noNumber = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  for (auto& [name, field] : d.reals())
    if (dice.chance(0.1))
      (*field)[static_cast<std::size_t>(dice.whole(0, static_cast<int>(d.size) - 1))] =
          dice.oneOf({noNumber, infinite, -infinite, 0.0, 1.0});
}

TestDomain randomDomain(unsigned seed) {
  Dice dice(seed);
  // Some grids are longer than a block of cells and a strip along the first index, some wider than one
  // along the second.
  const bool large = seed % 50 == 0, wide = seed % 200 == 0;
  TestDomain d(wide    ? dice.whole(515, 700)
               : large ? dice.whole(60, 150)
                       : dice.whole(4, 20),
               large ? dice.whole(17, 90) : dice.whole(4, 12));
  fillFlowAndBed(dice, d);
  fillFields(dice, d);
  levelFields(dice, d);
  fillOptions(dice, d);
  if (seed % 3 == 0) spoil(dice, d);
  return d;
}

// Of what the sweeps compute: equal up to 1e-9 of the value or of the field's floor.
struct Tolerance {
  double relative;
  double floor;
};

bool isClose(double a, double b, Tolerance tolerance) {
  if (isSame(a, b)) return true;
  const double scale = std::max({std::abs(a), std::abs(b), tolerance.floor});
  return std::abs(a - b) <= tolerance.relative * scale;
}

// Levels are sums in which digits cancel; 1e-4 m is a hundredth of what one step moves where sand
// moves at all. Concentrations and adaptations are compared as they are.
void expectClose(TestDomain& expected, TestDomain& actual, double relative,
                 const std::string& what) {
  const auto actualReals = actual.reals();
  std::size_t next = 0;
  for (const auto& [name, field] : expected.reals()) {
    const double floor = name == "concentration" || name == "adaptation" ? 0.0 : 1e-4;
    const auto& other = *actualReals[next++].second;
    for (std::size_t k = 0; k < expected.size; ++k)
      ASSERT_TRUE(isClose((*field)[k], other[k], {relative, floor}))
          << what << ", " << name << "[" << k << "]: " << (*field)[k] << ", got " << other[k];
  }
  ASSERT_EQ(expected.bedCode, actual.bedCode) << what;
}

void step(TestDomain& d) {
  StepScratch scratch;
  morphologyStep(d.input(), d.area, scratch);
}

// Grids wider than a strip and a piece come in between.
TEST(MorphologyStep, AsThePlainTranscriptionOnEveryProcessor) {
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    TestDomain expected = randomDomain(seed);
    const TestDomain start = expected;
    reference::step(expected.input(), expected.area);
    for (const Processor processor : supportedProcessors()) {
      TestDomain actual = start;
      StepScratch scratch(processor);
      morphologyStep(actual.input(), actual.area, scratch);
      ASSERT_NO_FATAL_FAILURE(expectClose(
          expected, actual, 1e-9,
          "seed " + std::to_string(seed) + " on " + std::to_string(static_cast<int>(processor))));
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
    for (int time = 0; time < 2; ++time) {
      reference::step(expected.input(), expected.area);
      step(actual);
    }
    ASSERT_NO_FATAL_FAILURE(expectSame(expected, actual, "seed " + std::to_string(seed)));
  }
}

TEST(MorphologyStep, ProcessorsAgreeAndRepeatThemselves) {
  for (unsigned seed = 1; seed <= 500; ++seed) {
    const TestDomain start = randomDomain(seed);
    TestDomain portable = start;
    StepScratch first(Processor::Portable);
    morphologyStep(portable.input(), portable.area, first);
    for (const Processor processor : supportedProcessors()) {
      StepScratch scratch(processor);
      TestDomain once = start, again = start;
      morphologyStep(once.input(), once.area, scratch);
      morphologyStep(again.input(), again.area, scratch);
      ASSERT_NO_FATAL_FAILURE(expectClose(portable, once, 1e-12, "seed " + std::to_string(seed)));
      ASSERT_NO_FATAL_FAILURE(expectSame(once, again, "seed " + std::to_string(seed)));
    }
  }
}

TEST(MorphologyStep, UniformFlowChangesNothing) {
  TestDomain d(7, 6);
  d.v1.assign(d.size, 0.7);
  d.v2.assign(d.size, -0.3);
  d.bedLimit[20] = 0.0;
  const auto bed = d.zc;
  step(d);

  EXPECT_EQ(d.zc, bed);
  EXPECT_EQ(d.change, TestDomain::Reals(d.size, 0.0));
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
  step(d);

  const Transport q =
      transportCapacity(2.0, 1.0, grainTerms(0.0002, d.parameters), 0.0003, d.parameters);
  const double settled = q.bedLoad + (1.0 - std::exp(-0.2)) * q.suspended;
  EXPECT_NEAR(d.change[last], settled / 2650.0 / 0.6 / 10.0, 1e-15);
  EXPECT_NEAR(d.adaptation[last], 0.02, 1e-15);
}

// The domain with both indices reversed and the velocities turned with them. Elements on sides and
// corners lie above their cell, so they shift by one; what would fall off the grid stays.
TestDomain mirrored(TestDomain d) {
  TestDomain out = d;
  const auto to = out.reals();
  std::size_t next = 0;
  for (const auto& [name, field] : d.reals()) {
    const bool onFirst = name == "v1" || name == "z1" || name == "zpts";
    const bool onSecond = name == "v2" || name == "z2" || name == "zpts";
    const double sign = name == "v1" || name == "v2" ? -1.0 : 1.0;
    const auto source = d.grid(*field);
    const auto target = out.grid(*to[next++].second);
    for (int j = 1; j <= d.m - (onSecond ? 1 : 0); ++j)
      for (int i = 1; i <= d.n - (onFirst ? 1 : 0); ++i)
        target(d.n + 1 - i - (onFirst ? 1 : 0), d.m + 1 - j - (onSecond ? 1 : 0)) =
            sign * source(i, j);
  }
  return out;
}

TestDomain transposed(TestDomain d) {
  TestDomain out(d.m, d.n);
  std::swap(d.v1, d.v2);
  std::swap(d.z1, d.z2);
  std::swap(d.settings.slumpDistanceFirst, d.settings.slumpDistanceSecond);
  const auto to = out.reals();
  std::size_t next = 0;
  for (const auto& [name, field] : d.reals()) {
    const auto target = out.grid(*to[next++].second);
    for (int j = 1; j <= d.m; ++j)
      for (int i = 1; i <= d.n; ++i) target(j, i) = d.grid(*field)(i, j);
  }
  for (int j = 1; j <= d.m; ++j)
    for (int i = 1; i <= d.n; ++i) {
      Grid(out.wet.data(), d.m, d.n)(j, i) = Grid(d.wet.data(), d.n, d.m)(i, j);
      out.grid(out.bedCode)(j, i) = d.grid(d.bedCode)(i, j);
    }
  out.area = {d.area.firstJ, d.area.firstI, d.area.lastJ, d.area.lastI};
  out.settings = d.settings;
  out.parameters = d.parameters;
  return out;
}

void expectSameBed(const TestDomain& expected, const TestDomain& actual, unsigned seed) {
  double largest = 0.0;
  for (std::size_t k = 0; k < expected.size; ++k) {
    ASSERT_NEAR(expected.zc[k], actual.zc[k], 1e-9) << "seed " << seed << ", cell " << k;
    largest = std::max(largest, std::abs(expected.change[k]));
  }
  EXPECT_GT(largest, 1e-6) << "nothing moved";
}

// Where flow keeps one direction, everything is wet, eroded and deposited sand have the same voids
// and velocities are not centred, no direction is preferred: docs/numerics.md says why not
// elsewhere.
TEST(MorphologyStep, FlowReversedGivesTheMirroredBed) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Dice dice(seed);
    TestDomain d(9, 8);
    fillFlowAndBed(dice, d);
    for (auto* v : {&d.v1, &d.v2}) dice.fill(*v, 0.4, 1.2);
    for (double& limit : d.bedLimit) limit = dice.oneOf({-99999.0, -1.5});
    d.parameters.slumpSlope = 10.0;
    d.settings.timeStep = 20.0;
    TestDomain reversed = mirrored(d);

    step(d);
    step(reversed);
    expectSameBed(d, mirrored(reversed), seed);
  }
}

// Of flow in all directions with dry cells, as long as no flow passes toward a dry cell.
TEST(MorphologyStep, TransposedFieldsGiveTheTransposedBed) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Dice dice(seed);
    TestDomain d(9, 8);
    fillFlowAndBed(dice, d);
    for (auto* v : {&d.v1, &d.v2}) dice.fill(*v, -1.2, 1.2);
    fillFields(dice, d);
    d.flow.assign(d.size, 0);
    d.parameters.slumpSlope = 10.0;
    d.parameters.velocityCentred = seed % 3 == 0;
    d.settings = {10.0, 7.0, 4.0, 20.0, seed % 2 == 0, 0.9};
    TestDomain turned = transposed(d);

    step(d);
    step(turned);
    TestDomain back = transposed(turned);
    expectSameBed(d, back, seed);
  }
}

}  // namespace
}  // namespace nivaro
