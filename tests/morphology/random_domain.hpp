// Domains with all that a step may meet, the same for the same seed.
#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <random>
#include <vector>

#include "morphology/test_domain.hpp"

namespace nivaro {

class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}

  double real(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine_);
  }
  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
  bool chance(double share) { return real(0.0, 1.0) < share; }

  template <typename List>
  auto oneOf(const List& values) {
    return std::data(values)[whole(0, static_cast<int>(std::size(values)) - 1)];
  }
  template <typename T>
  T oneOf(std::initializer_list<T> values) {
    return oneOf<std::initializer_list<T>>(values);
  }
  void fill(std::vector<double>& field, double low, double high) {
    for (double& value : field) value = real(low, high);
  }

 private:
  std::mt19937 engine_;
};

// Water 1 to 3 m deep over a rough bed, flow of a main direction with eddies; at some sides it rests, to
// the last bit. No two flow alike: whether equal transports erode or settle would be a matter of rounding.
inline void fillFlowAndBed(Dice& dice, TestDomain& d) {
  dice.fill(d.level, -0.2, 0.2);
  for (auto* depth : {&d.zc, &d.z1, &d.z2}) dice.fill(*depth, 1.0, 3.0);
  const double spread = dice.oneOf({0.01, 0.3, 1.5});
  for (auto* v : {&d.v1, &d.v2}) {
    const double mean = dice.oneOf({-1.0, 0.0, 1.0});
    dice.fill(*v, mean - spread, mean + spread);
    const double resting = dice.oneOf({0.0, 0.0, 0.2, 0.9});
    for (double& value : *v)
      if (dice.chance(resting)) value = dice.oneOf({0.0, -0.0});
  }
}

inline void fillFields(Dice& dice, TestDomain& d) {
  for (auto* field :
       {&d.zpts, &d.previous, &d.applied, &d.change, &d.concentration, &d.adaptation, &d.spare})
    dice.fill(*field, -0.1, 0.1);
  for (auto* voids : {&d.inSituVoids, &d.depositionVoids}) dice.fill(*voids, 0.2, 0.6);
  const double coarse = dice.oneOf({0.0002, 0.0003, 0.0006, 0.003, 0.02});
  for (std::size_t k = 0; k < d.size; ++k) {
    d.d50[k] = dice.chance(0.6) ? 0.00015 : coarse;
    d.d90[k] = d.d50[k] * dice.oneOf({1.0, 1.5});
    d.bedLimit[k] = dice.oneOf({-99999.0, -99999.0, -d.zc[k], dice.real(-3.0, -1.0)});
    d.bedCode[k] = dice.oneOf({1, 1, 1, 1, 1, 1, 3, 2, 0, -1, -2, INT32_MIN});
    d.wet[k] = dice.chance(0.85) ? dice.oneOf({-1, 1}) : dice.oneOf({0, 2});
    d.flow[k] = dice.oneOf({-1, 1, 0, 2});
  }
}

// Fields that are the same everywhere, and patches without sand or bed, are passed over in ways of their own.
inline void levelFields(Dice& dice, TestDomain& d) {
  const bool grains = dice.chance(0.4), voids = dice.chance(0.3);
  for (auto* field : {&d.d50, &d.d90})
    if (grains) field->assign(d.size, field->front());
  for (auto* field : {&d.inSituVoids, &d.depositionVoids})
    if (voids) field->assign(d.size, field->front());
  // Cells outside the area may differ.
  if (dice.chance(0.5)) std::fill_n(d.d50.begin(), d.n, 0.02);
  if (dice.chance(0.3)) d.bedLimit.assign(d.size, dice.oneOf({-99999.0, -1.5}));
  if (!dice.chance(d.n > 60 ? 0.8 : 0.3)) return;
  const int blockStart = dice.whole(2, 3) + 64 * dice.whole(0, (d.n - 3) / 64);
  const int firstI = dice.chance(0.5) ? blockStart : dice.whole(1, d.n);
  const int firstJ = dice.whole(1, d.m), lastJ = dice.whole(firstJ, d.m);
  const bool noBeds = dice.chance(0.5);
  for (int j = firstJ; j <= lastJ; ++j)
    for (int i = firstI; i <= d.n; ++i)
      d.grid(d.bedCode)(i, j) = dice.oneOf({0, 0, 0, 0, noBeds ? 0 : 2, -2});
}

inline void fillOptions(Dice& dice, TestDomain& d) {
  auto& p = d.parameters;
  p.velocityCentred = dice.chance(0.5);
  p.cellSidesHigh = dice.chance(0.5);
  p.timeCentringFactor = dice.real(0.0, 1.0);
  p.concentrationFactor = dice.oneOf({1.0, 9.0, -1.0});
  p.slumpSlope = dice.oneOf({1.0, 10.0, 40.0});
  p.bedChangeLimit = dice.oneOf({0.1, 1e9});
  d.settings = {dice.real(5.0, 20.0),  dice.real(1.0, 10.0), dice.real(1.0, 10.0),
                dice.real(1.0, 100.0), dice.chance(0.5),     dice.real(0.5, 1.2)};
}

inline TestDomain randomDomain(Dice& dice, int n, int m) {
  TestDomain d(n, m);
  fillFlowAndBed(dice, d);
  fillFields(dice, d);
  levelFields(dice, d);
  fillOptions(dice, d);
  return d;
}

// Odd numbers in that share of the cells of that share of the fields.
template <typename List>
void spoilFields(Dice& dice, TestDomain& d, double fields, double cells, const List& oddNumbers) {
  for (auto& [name, field] : d.reals()) {
    if (!dice.chance(fields)) continue;
    for (double& value : *field)
      if (dice.chance(cells)) value = dice.oneOf(oddNumbers);
  }
}

}  // namespace nivaro
