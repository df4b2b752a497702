// A small domain that owns its arrays, all wet and flat to begin with; the kinds of processor that a test
// can run on this machine.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "morphology/engine/kernel.hpp"
#include "morphology/fields.hpp"

namespace nivaro {

struct TestDomain {
  using Reals = std::vector<double>;

  TestDomain(int n_, int m_)
      : n(n_), m(m_), area{2, 2, n_ - 1, m_ - 1}, size(static_cast<std::size_t>(n_ * m_)) {
    for (auto& [name, field] : reals()) field->assign(size, 0.0);
    zc = z1 = z2 = zpts = Reals(size, 2.0);
    d50.assign(size, 0.0002);
    d90.assign(size, 0.0003);
    inSituVoids = depositionVoids = Reals(size, 0.4);
    bedLimit.assign(size, -99999.0);
    setDefaults(parameters);
    parameters.fallVelocity = 0.02;
    parameters.currentRelatedRoughness = 0.05;
    parameters.mixingLayerThickness = 0.1;
    parameters.referenceLevel = 0.05;
    settings = {10.0, 10.0, 10.0, 1.0, false, 0.0};
  }

  // Every array of reals by name, for filling, turning and comparing.
  std::vector<std::pair<std::string, Reals*>> reals() {
    return {{"level", &level},
            {"v2", &v2},
            {"v1", &v1},
            {"zpts", &zpts},
            {"zc", &zc},
            {"z2", &z2},
            {"z1", &z1},
            {"P", &previous},
            {"A", &applied},
            {"C", &change},
            {"concentration", &concentration},
            {"adaptation", &adaptation},
            {"spare", &spare},
            {"D50", &d50},
            {"D90", &d90},
            {"in-situ voids", &inSituVoids},
            {"deposition voids", &depositionVoids},
            {"bed limit", &bedLimit}};
  }

  Grid<double> grid(Reals& field) const { return {field.data(), n, m}; }
  Grid<const double> grid(const Reals& field) const { return {field.data(), n, m}; }
  Grid<std::int32_t> grid(std::vector<std::int32_t>& field) const { return {field.data(), n, m}; }

  StepInput input() {
    return {{grid(wet), grid(flow), grid(level), grid(v2), grid(v1)},
            {grid(zpts), grid(zc), grid(z2), grid(z1)},
            {grid(previous), grid(applied), grid(change), grid(concentration), grid(adaptation),
             grid(spare), grid(d50), grid(d90), grid(inSituVoids), grid(depositionVoids),
             grid(bedLimit), grid(bedCode)},
            settings,
            parameters};
  }

  int n;
  int m;
  Area area;
  std::size_t size;
  Reals level, v2, v1, zpts, zc, z2, z1;
  Reals previous, applied, change, concentration, adaptation, spare;
  Reals d50, d90, inSituVoids, depositionVoids, bedLimit;
  std::vector<Logical> wet = std::vector<Logical>(size, -1);
  std::vector<Logical> flow = std::vector<Logical>(size, 0);
  std::vector<std::int32_t> bedCode = std::vector<std::int32_t>(size, 1);
  StepSettings settings;
  MorphologyParameters parameters;
};

// Those that have a kernel.
inline std::vector<Processor> supportedProcessors() {
  std::vector<Processor> result;
  for (const auto& [name, processor] : kProcessors)
    if (kernelOf(processor) != nullptr) result.push_back(processor);
  return result;
}

// Bit for bit, save that which not-a-number it is does not matter.
inline bool isSame(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// Bit for bit, or where `relative` says so up to that part of the value, or of the floor of its field. Levels
// are sums in which digits cancel; 1e-4 m is a hundredth of what one step moves where sand moves at all.
// Concentrations and adaptations are compared as they are.
inline void expectSame(TestDomain& expected, TestDomain& actual, const std::string& what,
                       double relative = 0.0) {
  const auto actualReals = actual.reals();
  std::size_t next = 0;
  for (const auto& [name, field] : expected.reals()) {
    const double floor = name == "concentration" || name == "adaptation" ? 0.0 : 1e-4;
    const auto& other = *actualReals[next++].second;
    for (std::size_t k = 0; k < expected.size; ++k) {
      const double a = (*field)[k], b = other[k];
      const double most = relative * std::max({std::abs(a), std::abs(b), floor});
      ASSERT_TRUE(isSame(a, b) || (relative > 0.0 && std::abs(a - b) <= most))
          << what << ", " << name << "[" << k << "]: " << a << ", got " << b;
    }
  }
  ASSERT_EQ(expected.bedCode, actual.bedCode) << what;
}

}  // namespace nivaro
