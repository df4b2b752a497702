// Each step of the algebra over lanes against the plain form, in its whole range.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "morphology/elementary.hpp"
#include "morphology/engine/capacity.hpp"
#include "morphology/random_domain.hpp"
#include "morphology/transport_capacity.hpp"

namespace nivaro {
namespace {

using Lanes = void (*)(const double*, double*, int);
using Exact = long double (*)(long double);

long double fifthRootOf(long double x) {
  return std::pow(x, 0.2L);
}
// To the power of 24.5, without the power function that is in question.
long double steepPower(long double x) {
  long double result = std::sqrt(x);
  for (int k = 0; k < 24; ++k) result *= x;
  return result;
}

double relativeError(double found, long double exact) {
  return static_cast<double>(std::abs((found - exact) / exact));
}

double largestError(double (*function)(double), Exact exact, const std::vector<double>& at) {
  double largest = 0.0;
  for (double x : at)
    if (const long double y = exact(x); y != 0.0L && std::abs(std::log(std::abs(y))) < 708.0L)
      largest = std::max(largest, relativeError(function(x), y));
  return largest;
}

double largestError(Lanes lanes, Exact exact, const std::vector<double>& at) {
  std::vector<double> found(at.size());
  lanes(at.data(), found.data(), static_cast<int>(at.size()));
  double largest = 0.0;
  for (std::size_t k = 0; k < at.size(); ++k)
    largest = std::max(largest, relativeError(found[k], exact(at[k])));
  return largest;
}

TEST(Functions, AreRightToHalfALastPlaceAndInLanesToTwo) {
  Dice dice(1);
  std::vector<double> positive = {std::numeric_limits<double>::min(),
                                  std::numeric_limits<double>::max(),
                                  std::sqrt(0.5),
                                  std::nextafter(std::sqrt(0.5), 0.0),
                                  std::nextafter(1.0, 0.0),
                                  std::nextafter(1.0, 2.0)};
  std::vector<double> any = {0.0, -700.0, 700.0};
  for (int k = 0; k < 200000; ++k) {
    positive.push_back(std::exp2(dice.real(-1021.0, 1023.0)));
    positive.push_back(dice.real(0.5, 2.0));
    any.push_back(dice.real(-700.0, 700.0));
    any.push_back(dice.real(-1.0, 1.0));
  }
  constexpr double half = 1.13e-16;  // of the last place, and a fiftieth
  EXPECT_LT(largestError(logarithm, std::log, positive), half);
  EXPECT_LT(largestError(decimalLogarithm, std::log10, positive), half);
  EXPECT_LT(largestError(exponential, std::exp, any), half);
  EXPECT_LT(largestError(cubeRoot, std::cbrt, positive), half);
  EXPECT_LT(largestError([](double x) { return power(x, 24.5); }, steepPower, positive), half);
  for (const double x : {0.0, 5e-324, 1e-310, std::numeric_limits<double>::infinity()})
    EXPECT_EQ(logarithm(x), std::log(x));
  for (const double x : {-1000.0, -745.0, -709.5, 709.5, 1000.0})
    EXPECT_EQ(exponential(x), std::exp(x));
  for (const Processor processor : supportedProcessors()) {
    const StepKernel& kernel = *kernelOf(processor);
    EXPECT_LT(largestError(kernel.logarithms, std::log, positive), 4.5e-16);
    EXPECT_LT(largestError(kernel.exponentials, std::exp, any), 4.5e-16);
    EXPECT_LT(largestError(kernel.fifthRoots, fifthRootOf, positive), 4.5e-16);
    double none = std::numeric_limits<double>::quiet_NaN(), found = 0.0;
    kernel.exponentials(&none, &found, 1);
    EXPECT_TRUE(std::isnan(found));
  }
}

// Where the lanes call a side ordinary they agree with the plain function: depths and speeds beyond all
// guards and caps.
TEST(TransportLanes, OrdinarySidesAsThePlainFunction) {
  const MorphologyParameters p = TestDomain(3, 3).parameters;
  const CapacityTerms terms = capacityTerms(p);
  Dice dice(7);
  const auto between = [&dice](double low, double high) {
    return std::exp(dice.real(std::log(low), std::log(high)));
  };
  int ordinary = 0;
  for (int k = 0; k < 20000; ++k) {
    const double h = between(0.126, 1000.0);
    // Now and then as fast as makes Z almost 1.2, where the profile is nothing over nothing.
    const double critical = p.fallVelocity / 0.4 / p.mixingCoefficient / (1.2 + 1e-7) * 18.0 *
                            std::log10(12.0 * h / p.currentRelatedRoughness) / std::sqrt(9.81);
    const double u = k % 100 == 0 ? critical : between(0.0011, 30.0);
    const double d50 = between(0.00006, 0.05);
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

}  // namespace
}  // namespace nivaro
