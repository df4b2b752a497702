// Steps on arrays that end, or begin, at pages that nobody may touch, and that are read-only where a
// step may only read; with numbers of every kind.
#include <gtest/gtest.h>

#include <cfenv>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "morphology/bed_rebuild.hpp"
#include "morphology/engine/morphology_step.hpp"
#include "morphology/random_domain.hpp"
#include "morphology/test_domain.hpp"
#include "support/guarded_array.hpp"

namespace nivaro {
namespace {

using test::Edge;
using test::GuardedArray;

using Limits = std::numeric_limits<double>;
constexpr double kOddNumbers[] = {Limits::quiet_NaN(),
                                  Limits::infinity(),
                                  -Limits::infinity(),
                                  Limits::denorm_min(),
                                  -1e-310,
                                  0.0,
                                  -0.0,
                                  -1.0,
                                  1e-200,
                                  1e200,
                                  Limits::max(),
                                  Limits::lowest()};

// The area is as large as it may be, and empty where the grid is too small.
TestDomain spoiledDomain(Dice& dice, int n, int m, double share) {
  TestDomain d = randomDomain(dice, n, m);
  spoilFields(dice, d, 1.0, share, kOddNumbers);
  MorphologyParameters& p = d.parameters;
  for (double* option :
       {&p.fallVelocity, &p.currentRelatedRoughness, &p.waveRelatedRoughness,
        &p.mixingLayerThickness, &p.referenceLevel, &p.mixingCoefficient, &p.sandGrainDensity,
        &p.waterDensity, &p.timeCentringFactor, &p.slumpSlope, &p.slumpBedChangeLimit,
        &p.bedChangeLimit, &p.concentrationFactor, &d.settings.cellSize,
        &d.settings.slumpDistanceSecond, &d.settings.slumpDistanceFirst, &d.settings.timeStep,
        &d.settings.raiseFactor})
    if (share > 0.0 && dice.chance(0.1)) *option = dice.oneOf(kOddNumbers);
  return d;
}

// The arrays of a domain, each between pages of its own.
class GuardedDomain {
 public:
  // Arrays of these names may be written.
  GuardedDomain(TestDomain& d, Edge edge, const std::set<std::string>& writable)
      : domain_(d), wet_(d.wet, edge), flow_(d.flow, edge), bedCode_(d.bedCode, edge) {
    wet_.makeReadOnly();
    flow_.makeReadOnly();
    if (!writable.contains("bed code")) bedCode_.makeReadOnly();
    for (const auto& [name, field] : d.reals()) {
      reals_.emplace_back(*field, edge);
      if (!writable.contains(name)) reals_.back().makeReadOnly();
    }
  }

  // With the arrays in the order of TestDomain::reals.
  StepInput input() const {
    const auto real = [this](std::size_t k) { return grid(reals_[k]); };
    return {{grid(wet_), grid(flow_), real(0), real(1), real(2)},
            {real(3), real(4), real(5), real(6)},
            {real(7), real(8), real(9), real(10), real(11), real(12), real(13), real(14), real(15),
             real(16), real(17), grid(bedCode_)},
            domain_.settings,
            domain_.parameters};
  }

  TestDomain result() const {
    TestDomain d = domain_;
    std::size_t next = 0;
    for (const auto& [name, field] : d.reals()) *field = reals_[next++].copy();
    d.bedCode = bedCode_.copy();
    return d;
  }

  bool isAloneWritten() const {
    for (const auto& field : reals_)
      if (!field.isAloneWritten()) return false;
    return bedCode_.isAloneWritten();
  }

 private:
  template <typename T>
  Grid<T> grid(const GuardedArray<T>& array) const {
    return {array.data(), domain_.n, domain_.m};
  }

  TestDomain& domain_;
  std::vector<GuardedArray<double>> reals_;
  GuardedArray<Logical> wet_, flow_;
  GuardedArray<std::int32_t> bedCode_;
};

// Grids without a cell of their own, longer than a block, wider than a strip.
constexpr struct {
  int n, m;
} kSizes[] = {{1, 1}, {1, 4}, {2, 2},  {3, 3},   {3, 9},   {9, 3},
              {4, 4}, {8, 9}, {17, 5}, {67, 19}, {131, 4}, {515, 4}};

template <typename Compute>
void expectGuarded(TestDomain& d, const std::set<std::string>& writable, const Compute& compute,
                   const std::string& what) {
  TestDomain expected = d;
  compute(expected.input());
  for (const Edge edge : test::kEdges) {
    const GuardedDomain guarded(d, edge, writable);
    compute(guarded.input());
    TestDomain actual = guarded.result();
    ASSERT_TRUE(guarded.isAloneWritten()) << what;
    ASSERT_NO_FATAL_FAILURE(expectSame(expected, actual, what));
  }
}

TEST(GuardedStep, TouchesNothingElseAndWritesWhatItMay) {
  const std::set<std::string> ofStep = {"zpts",          "zc",         "z2",   "z1", "P", "A", "C",
                                        "concentration", "adaptation", "spare"};
  const std::set<std::string> ofSmoothing = {"zpts", "z2", "z1", "bed limit", "bed code"};
  const int rounding = std::fegetround();
  std::vector<Processor> processors = supportedProcessors();
  processors.push_back(Processor::Plain);
  unsigned seed = 0;
  for (const auto& [n, m] : kSizes)
    for (const double spoiled : {0.0, 0.01, 0.2, 1.0})
      for (const Processor processor : processors) {
        Dice dice(++seed);
        TestDomain d = spoiledDomain(dice, n, m, spoiled);
        const std::string what = std::to_string(n) + " x " + std::to_string(m) + ", spoiled " +
                                 std::to_string(spoiled) + ", on " +
                                 std::to_string(static_cast<int>(processor));
        StepWorkspace workspace(processor);
        ASSERT_NO_FATAL_FAILURE(expectGuarded(
            d, ofStep, [&](const StepInput& in) { morphologyStep(in, d.area, workspace); }, what));
        ASSERT_NO_FATAL_FAILURE(expectGuarded(
            d, ofSmoothing, [&](const StepInput& in) { smoothBed(in, d.area); }, what));
      }
  EXPECT_EQ(std::fegetround(), rounding);
  EXPECT_EQ(fegetexcept(), 0) << "numbers that are none would stop the host";
}

}  // namespace
}  // namespace nivaro
