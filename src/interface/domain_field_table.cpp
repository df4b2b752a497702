#include "interface/domain_field_table.hpp"

#include <limits>

namespace nivaro {

namespace {

// The real fields in the order in which they are reserved.
enum RealField : std::size_t {
  kD50,
  kD90,
  kInSituVoids,
  kDepositionVoids,
  kBedLimit,
  kPreviousChange,
  kAppliedChange,
  kCellChange,
  kConcentration,
  kAdaptation,
  kSpare,
  kCornerChange,
};

// Whether stretches from a position on, and the position behind them, can be counted.
bool fits(std::int32_t position, std::int64_t cells, std::size_t stretches) {
  const std::int64_t room = std::numeric_limits<std::int32_t>::max() - std::int64_t{position};
  return position >= 1 && cells <= room / static_cast<std::int64_t>(stretches);
}

// Positions are counted from 1.
Grid<double> gridAt(double* work, std::int32_t position, std::int32_t n, std::int32_t m) {
  return {work + (position - 1), n, m};
}

}  // namespace

bool DomainFieldTable::reserve(std::int32_t domain, bool active, std::int32_t n, std::int32_t m,
                               std::int32_t& nextReal, std::int32_t& nextInteger) {
  const std::int64_t cells = active ? std::int64_t{n} * m : 1;
  if (active && (n < 0 || m < 0)) return false;
  if (!fits(nextReal, cells, kRealFields) || !fits(nextInteger, cells, 1)) return false;

  const auto size = static_cast<std::int32_t>(cells);
  Row& row = rows_[index(domain)];
  row.active = active;
  for (std::int32_t& position : row.real) {
    position = nextReal;
    nextReal += size;
  }
  row.bedCode = nextInteger;
  nextInteger += size;
  return true;
}

SedimentFields DomainFieldTable::fields(std::int32_t domain, const WorkArrays& work, std::int32_t n,
                                        std::int32_t m) const {
  const Row& row = this->row(domain);
  if (!row.active) n = m = 1;
  const auto field = [&](RealField f) { return gridAt(work.real, row.real[f], n, m); };
  return {.previousChange = field(kPreviousChange),
          .appliedChange = field(kAppliedChange),
          .cellChange = field(kCellChange),
          .concentration = field(kConcentration),
          .adaptation = field(kAdaptation),
          .spare = field(kSpare),
          .d50 = field(kD50),
          .d90 = field(kD90),
          .inSituVoids = field(kInSituVoids),
          .depositionVoids = field(kDepositionVoids),
          .bedLimit = field(kBedLimit),
          .bedCode = {work.integer + (row.bedCode - 1), n, m}};
}

Grid<double> DomainFieldTable::cellBedChange(std::int32_t domain, double* realWork, std::int32_t n,
                                             std::int32_t m) const {
  return gridAt(realWork, row(domain).real[kCellChange], n, m);
}

Grid<double> DomainFieldTable::cornerBedChange(std::int32_t domain, double* realWork,
                                               std::int32_t n, std::int32_t m) const {
  return gridAt(realWork, row(domain).real[kCornerChange], n, m);
}

}  // namespace nivaro
