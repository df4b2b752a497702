// A domain of some size, its work arrays, and control files that are read for it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "interface/entry_points.hpp"
#include "support/test_module.hpp"

namespace nivaro::test {

// The fields begin at some position in arrays of -1, which end 99 elements behind them.
struct ControlTest : ModuleTest {
  ControlTest(std::int32_t n_, std::int32_t m_, std::int32_t firstPosition_)
      : n(n_), m(m_), firstPosition(firstPosition_) {
    reserve(1, true);
  }

  void reserve(std::int32_t domain, bool active) {
    std::int32_t nextReal = firstPosition;
    std::int32_t nextInteger = firstPosition;
    module.fields.reserve(domain, active, n, m, nextReal, nextInteger);
    real.assign(static_cast<std::size_t>(nextReal + 99), -1.0);
    integer.assign(static_cast<std::size_t>(nextInteger + 99), -1);
  }

  void readFile(std::string_view name, std::int32_t domain = 1) {
    console.output.clear();
    readControlFile(module, {.controlFile = folder.path(name),
                             .domain = domain,
                             .lastDomain = 3,
                             .n = n,
                             .m = m,
                             .grid = grid,
                             .work = {real.data(), integer.data()}});
  }

  void read(std::string_view content, std::int32_t domain = 1) {
    folder.write("run.mcf", content);
    readFile("run.mcf", domain);
  }

  const MorphologyParameters& options() { return module.parameters.ofDomain(1); }

  std::int32_t n;
  std::int32_t m;
  std::int32_t firstPosition;
  GridDescription grid;
  std::vector<double> real;
  std::vector<std::int32_t> integer;
};

}  // namespace nivaro::test
