// Each step of the algebra over lanes against the plain form, in its whole range.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "morphology/carry_lanes.hpp"
#include "morphology/deposition.hpp"
#include "morphology/processors.hpp"
#include "morphology/step_data.hpp"
#include "morphology/test_domain.hpp"
#include "morphology/transport_capacity.hpp"
#include "morphology/transport_lanes.hpp"

namespace nivaro {
namespace {

using Function = void (*)(const double*, double*, int);

// The largest relative difference from the library's function, which is right to half a last place.
double largestError(Function lanes, double (*exact)(double), const std::vector<double>& at) {
  std::vector<double> found(at.size());
  lanes(at.data(), found.data(), static_cast<int>(at.size()));
  double largest = 0.0;
  for (std::size_t k = 0; k < at.size(); ++k) {
    const double value = exact(at[k]);
    largest = std::max(largest, std::abs(found[k] - value) / std::abs(value));
  }
  return largest;
}

TEST(LanesMath, LogarithmIsWithinTwoLastPlaces) {
  std::mt19937 dice(1);
  std::uniform_real_distribution<double> exponent(-1021.0, 1023.0), nearOne(0.5, 2.0);
  std::vector<double> at = {std::numeric_limits<double>::min(),
                            std::numeric_limits<double>::max(),
                            std::sqrt(0.5),
                            std::nextafter(std::sqrt(0.5), 0.0),
                            std::nextafter(1.0, 0.0),
                            std::nextafter(1.0, 2.0)};
  for (int k = 0; k < 200000; ++k) at.push_back(std::exp2(exponent(dice)));
  for (int k = 0; k < 200000; ++k) at.push_back(nearOne(dice));
  for (const Processor processor : supportedProcessors())
    EXPECT_LT(largestError(stepKernel(processor).logarithms, std::log, at), 4.5e-16);
}

TEST(LanesMath, ExponentialIsWithinTwoLastPlaces) {
  std::mt19937 dice(1);
  std::uniform_real_distribution<double> wide(-700.0, 700.0), narrow(-1.0, 1.0);
  std::vector<double> at = {0.0, -700.0, 700.0};
  for (int k = 0; k < 200000; ++k) at.push_back(wide(dice));
  for (int k = 0; k < 200000; ++k) at.push_back(narrow(dice));
  for (const Processor processor : supportedProcessors())
    EXPECT_LT(largestError(stepKernel(processor).exponentials, std::exp, at), 4.5e-16);
}

TEST(LanesMath, FifthRootIsWithinTwoLastPlaces) {
  std::mt19937 dice(1);
  std::uniform_real_distribution<double> exponent(-1000.0, 1000.0), nearOne(0.5, 2.0);
  std::vector<double> at = {1.0, std::nextafter(1.0, 0.0), std::sqrt(0.5), 1e-300};
  for (int k = 0; k < 200000; ++k) at.push_back(std::exp2(exponent(dice)));
  for (int k = 0; k < 200000; ++k) at.push_back(nearOne(dice));
  const auto exact = [](double x) {
    return static_cast<double>(std::pow(static_cast<long double>(x), 0.2L));
  };
  for (const Processor processor : supportedProcessors())
    EXPECT_LT(largestError(stepKernel(processor).fifthRoots, exact, at), 4.5e-16);
}

TEST(LanesMath, ExponentialOfNoNumberIsNone) {
  for (const Processor processor : supportedProcessors()) {
    const double at = std::numeric_limits<double>::quiet_NaN();
    double found = 0.0;
    stepKernel(processor).exponentials(&at, &found, 1);
    EXPECT_TRUE(std::isnan(found));
  }
}

MorphologyParameters sand() {
  return TestDomain(3, 3).parameters;
}

// Where the lanes call a side ordinary they agree with the plain function: depths and speeds beyond all
// guards and caps.
TEST(TransportLanes, OrdinarySidesAsThePlainFunction) {
  const MorphologyParameters p = sand();
  const CapacityTerms terms = capacityTerms(p);
  std::mt19937 dice(7);
  std::uniform_real_distribution<double> logDepth(std::log(0.126), std::log(1000.0)),
      logSpeed(std::log(0.0011), std::log(30.0)), logGrain(std::log(0.00006), std::log(0.05));
  int ordinary = 0;
  for (int k = 0; k < 20000; ++k) {
    const double h = std::exp(logDepth(dice));
    const double u = std::exp(logSpeed(dice));
    const double d50 = std::exp(logGrain(dice));
    const double d90 = 1.7 * d50;
    const DepthLanes<Real2> depth = depthLanes(all<Real2>(h), terms);
    const Real2 speed = all<Real2>(u);
    const CapacityLanes<Real2> q =
        capacityLanes(depth, suspensionLanes(depth, speed, 1.0 / speed, terms), speed,
                      grainLanes(all<Real2>(d50), all<Real2>(d90), terms));
    if (q.ordinary[0] == 0) continue;
    ++ordinary;
    const Transport plain = transportCapacity(h, u, grainTerms(d50, p), d90, p);
    // The floor of T leaves 1e-12 of its digits, the exponents of Z = 25 as much.
    ASSERT_NEAR(q.suspended[0], plain.suspended, 3e-11 * std::abs(plain.suspended))
        << h << " " << u;
    ASSERT_NEAR(q.bedLoad[0], plain.bedLoad, 3e-11 * std::abs(plain.bedLoad)) << h << " " << u;
  }
  // The fastest flows meet the cap of 100 kg/(m s), which is left to the plain function.
  EXPECT_GT(ordinary, 15000);
}

TEST(TransportLanes, DepositionAsThePlainFunction) {
  TestDomain d(3, 3);
  const StepInput input = d.input();
  const StepData step = stepData(input, d.area);
  std::mt19937 dice(7);
  std::uniform_real_distribution<double> share(0.0, 1.0), size(-30.0, 5.0);
  for (int k = 0; k < 20000; ++k) {
    const double inflow = std::exp(size(dice));
    const double equilibrium = k % 10 == 0 ? 0.0 : inflow * share(dice);
    const double discharge = k % 7 == 0 ? -1.0 : share(dice);
    const Deposition plain =
        deposition({inflow, equilibrium, discharge, 1.0, discharge, 1.0}, 10.0, 0.02, 1.0);
    const SettlingLanes<Real2> s = settlingLanes(step, MaskOf<Real2>{-1, -1}, all<Real2>(inflow),
                                                 all<Real2>(equilibrium), all<Real2>(discharge));
    // 1 - (qe / qi)^0.2 has lost what the power has before its point.
    const double lost = 1e-15 * plain.concentration * 0.02 / (inflow - equilibrium);
    ASSERT_NEAR(s.concentration[0], plain.concentration, 1e-15 * plain.concentration);
    ASSERT_NEAR(s.adaptation[0], plain.adaptation, 1e-14 * plain.adaptation + lost);
    ASSERT_NEAR(s.deposited[0], plain.deposited, 1e-14 * inflow);
  }
}

}  // namespace
}  // namespace nivaro
