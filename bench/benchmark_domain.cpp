#include "benchmark_domain.hpp"

#include <algorithm>
#include <cmath>
#include <random>

namespace nivaro::bench {

Domain::Domain(const Shape& shape) : n_(shape.size) {
  const auto cells = static_cast<std::size_t>(n_) * static_cast<std::size_t>(n_);
  for (Reals* field : {&level_, &v2_, &v1_, &zpts_, &zc_, &z2_, &z1_, &previous_, &applied_,
                       &change_, &concentration_, &adaptation_, &spare_})
    field->assign(cells, 0.0);
  d50_.assign(cells, 0.0002);
  d90_.assign(cells, 0.0003);
  inSituVoids_.assign(cells, 0.4);
  depositionVoids_.assign(cells, 0.45);
  bedLimit_.assign(cells, -99999.0);
  wet_.assign(cells, -1);
  flow_.assign(cells, 0);
  code_.assign(cells, 1);

  setDefaults(parameters_);
  parameters_.fallVelocity = 0.02;
  parameters_.currentRelatedRoughness = 0.05;
  parameters_.mixingLayerThickness = 0.1;
  parameters_.referenceLevel = 0.05;
  parameters_.velocityCentred = shape.velocityCentred;

  std::size_t k = 0;
  for (int j = 0; j < n_; ++j)
    for (int i = 0; i < n_; ++i) fillCell(shape, i, j, k++);
}

// Dunes of 50 by 70 cells under eddies of a few hundred, with noise on everything, and islands.
void Domain::fillCell(const Shape& shape, int i, int j, std::size_t k) {
  std::minstd_rand dice(static_cast<unsigned>(k) + 1);
  const auto within = [&dice](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(dice);
  };
  const double x = i * 6.2832 / 50.0;
  const double y = j * 6.2832 / 70.0;
  zc_[k] = 3.0 + std::sin(x) * std::cos(y) + within(-0.05, 0.05);
  z2_[k] = zc_[k] + within(-0.02, 0.02);
  z1_[k] = zc_[k] + within(-0.02, 0.02);
  zpts_[k] = zc_[k];
  level_[k] = within(-0.02, 0.02);
  v2_[k] = 0.5 * std::cos(x / 3.0 + y / 2.0) + within(-0.05, 0.05);
  v1_[k] = 0.7 * std::sin(x / 2.0 - y / 3.0) + within(-0.05, 0.05);
  if (shape.variedGrains) {
    d50_[k] = within(0.00015, 0.0006);
    d90_[k] = d50_[k] * within(1.2, 2.0);
  }
  if (std::sin(x / 4.0 + 1.0) * std::sin(y / 5.0 + 2.0) + 0.02 * within(-1.0, 1.0) > 0.6)
    wet_[k] = 0;
  if (!isActive(shape.active, i, j)) code_[k] = 0;
}

bool Domain::isActive(ActiveCells active, int i, int j) const {
  constexpr double kShare = 0.05;
  if (active == ActiveCells::All) return true;
  const double middle = n_ / 2.0;
  if (active == ActiveCells::Band)
    return std::abs(j - middle - 0.1 * n_ * std::sin(i * 6.2832 / n_)) <= 0.5 * kShare * n_;
  return std::max(std::abs(i - middle), std::abs(j - middle)) <= 0.5 * std::sqrt(kShare) * n_;
}

StepInput Domain::input() {
  const auto reals = [this](Reals& field) { return Grid<double>(field.data(), n_, n_); };
  const auto integers = [this](Integers& field) {
    return Grid<std::int32_t>(field.data(), n_, n_);
  };
  return {{integers(wet_), integers(flow_), reals(level_), reals(v2_), reals(v1_)},
          {reals(zpts_), reals(zc_), reals(z2_), reals(z1_)},
          {reals(previous_), reals(applied_), reals(change_), reals(concentration_),
           reals(adaptation_), reals(spare_), reals(d50_), reals(d90_), reals(inSituVoids_),
           reals(depositionVoids_), reals(bedLimit_), integers(code_)},
          {10.0, 10.0, 10.0, 1.0, false, 0.0},
          parameters_};
}

std::size_t Domain::activeCells() const {
  std::size_t count = 0;
  for (std::size_t k = 0; k < wet_.size(); ++k) count += wet_[k] != 0 && code_[k] != 0 ? 1 : 0;
  return count;
}

}  // namespace nivaro::bench
