// A table of cells through to the cells, and its rows by both ways of reading them. Sections: "grid",
// "command" (integer field), "table".
#include <cmath>
#include <limits>

#include "control/cell_table.hpp"
#include "fuzz/grid_input.hpp"
#include "platform/list_input.hpp"
#include "spatial/real_fields.hpp"

namespace nivaro::fuzz {
namespace {

// The fast ways of reading give what the general one gives.
void requireSameByListInput(std::string_view line) {
  constexpr std::int32_t kNone = std::numeric_limits<std::int32_t>::min();
  const double noReal = std::numeric_limits<double>::quiet_NaN();
  CellRow general{.first = kNone, .second = kNone, .value = noReal};
  const bool isRow =
      ListInput(line).readAll(general.first, general.second, general.value) == ReadStatus::Ok &&
      general.first != kNone && general.second != kNone && std::isfinite(general.value);
  CellRow fast;
  if (std::min(general.first, general.second) == kNone) return;  // "no index", also when it is read
  require(readCellRow(line, fast) == isRow, "a row is a row by list-directed input");
  if (isRow)
    require(fast.first == general.first && fast.second == general.second &&
                sameBits(fast.value, general.value),
            "a row has the numbers of list-directed input");

  double x = noReal;
  double y = noReal;
  const bool arePoint =
      ListInput(line).readAll(x, y) == ReadStatus::Ok && std::isfinite(x) && std::isfinite(y);
  double point[2] = {0.0, 0.0};
  require(readReals(line, point) == arePoint, "reals are read by list-directed input");
  if (arePoint)
    require(sameBits(point[0], x) && sameBits(point[1], y),
            "reals are those of list-directed input");
}

bool mayBeSet(std::int32_t element, std::int32_t bound) {
  return element >= 2 && element <= bound;
}

}  // namespace

void tryInput(const Archive& input, const Folder& folder) {
  const std::string_view table = input.text("table");
  for (const std::string_view line : linesOf(table)) requireSameByListInput(line);

  FuzzModule run;
  Module& module = run.module;
  GridInput domain(module, input.text("grid"));
  folder.write("cells.mid", table);
  module.files.initFileUnits(2000);
  const SedimentFields fields = domain.fields(module);
  const bool integers = Numbers(input.text("command")).flag();
  const SpatialTarget& target =
      *findSpatialTarget(integers ? "MORPHOLOGY BED CODE" : "MORPHOLOGY D50");
  completes([&] {
    module.spatialCommands.run({.source = SpatialSource::ReadMid,
                                .target = target,
                                .value = "cells.mid",
                                .folder = "",
                                .controlLine = "",
                                .place = ""},
                               fields, domain.grid, 0);
  });

  const auto inBounds = [&](std::int32_t i, std::int32_t j) {
    return mayBeSet(i, domain.grid.firstRowBound) && mayBeSet(j, domain.grid.secondRowBound);
  };
  requireUntouchedElsewhere(fields.d50, GridInput::kUntouched, inBounds);
  requireUntouchedElsewhere(fields.bedCode, -7, inBounds);
  for (const double value : fields.d50.cells()) require(std::isfinite(value), "values are finite");
}

}  // namespace nivaro::fuzz
