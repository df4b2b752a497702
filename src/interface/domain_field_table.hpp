// Where the module's own fields of each domain lie in the host's work arrays.
#pragma once

#include <array>
#include <cstdint>

#include "morphology/fields.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// The host's two large arrays, by their first elements.
struct WorkArrays {
  double* real = nullptr;
  std::int32_t* integer = nullptr;
};

class DomainFieldTable {
 public:
  static constexpr std::int32_t kDomains = 100;
  static constexpr std::size_t kRealFields = 12;

  // Positions are counted from 1, as the host counts them.
  struct Row {
    std::array<std::int32_t, kRealFields> real{};  // in the order of reservation
    std::int32_t bedCode = 0;
    bool active = false;  // the stretches span the grid; else they are one element each
  };

  static constexpr bool isDomain(std::int32_t domain) { return domain >= 1 && domain <= kDomains; }

  // Reserves the fields of a domain from the given positions on and moves these past them. False,
  // and nothing done, where they would not lie between 1 and the largest position.
  bool reserve(std::int32_t domain, bool active, std::int32_t n, std::int32_t m,
               std::int32_t& nextReal, std::int32_t& nextInteger);

  const Row& row(std::int32_t domain) const { return rows_[index(domain)]; }
  bool isReserved(std::int32_t domain) const { return row(domain).bedCode >= 1; }

  // The domain's fields; 1 x 1 for a domain without morphology.
  SedimentFields fields(std::int32_t domain, const WorkArrays& work, std::int32_t n,
                        std::int32_t m) const;

  // What the dataset is written from: the latest bed change of the cells, and the work field for its
  // values at the corners.
  Grid<double> cellBedChange(std::int32_t domain, double* realWork, std::int32_t n,
                             std::int32_t m) const;
  Grid<double> cornerBedChange(std::int32_t domain, double* realWork, std::int32_t n,
                               std::int32_t m) const;

 private:
  static std::size_t index(std::int32_t domain) { return static_cast<std::size_t>(domain - 1); }

  std::array<Row, kDomains> rows_{};
};

}  // namespace nivaro
