// The options of every domain, and the set that the computation reads at the moment.
#pragma once

#include <array>
#include <cstdint>

#include "interface/domain_field_table.hpp"
#include "morphology/parameters.hpp"

namespace nivaro {

class ParameterTable {
 public:
  // Until a host loads a domain the current set holds the defaults.
  ParameterTable() { setDefaults(current_); }

  MorphologyParameters& ofDomain(std::int32_t domain) {
    return domains_[static_cast<std::size_t>(domain - 1)];
  }

  void load(std::int32_t domain) { current_ = ofDomain(domain); }
  const MorphologyParameters& current() const { return current_; }

 private:
  std::array<MorphologyParameters, DomainFieldTable::kDomains> domains_{};
  MorphologyParameters current_;
};

}  // namespace nivaro
