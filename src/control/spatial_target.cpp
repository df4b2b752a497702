#include "control/spatial_target.hpp"

#include <algorithm>

#include "text/keyword.hpp"

namespace nivaro {

namespace {

using F = SedimentFields;

constexpr SpatialTarget kTargets[] = {
    {"D50", "Morphology D50", &F::d50},
    {"D90", "Morphology D90", &F::d90},
    {"INSITU VOIDS", "Morphology insitu voids ratio", &F::inSituVoids},
    {"DEPOSITION VOIDS", "Morphology deposition voids ratio", &F::depositionVoids},
    {"BED LIMIT", "Morphology bed limit elevation", &F::bedLimit},
    {"BED CODE", "Morphology bed activity code", nullptr},
};

}  // namespace

void setDefaults(const SedimentFields& fields) {
  std::ranges::fill(fields.d50.cells(), 0.00016);
  std::ranges::fill(fields.d90.cells(), 0.00016);
  std::ranges::fill(fields.inSituVoids.cells(), 0.4);
  std::ranges::fill(fields.depositionVoids.cells(), 0.4);
  std::ranges::fill(fields.bedLimit.cells(), -99999.0);
  std::ranges::fill(fields.bedCode.cells(), 1);
}

const SpatialTarget* findSpatialTarget(std::string_view command) {
  if (!flagExists(command, "MORPHOLOGY")) return nullptr;
  for (const SpatialTarget& target : kTargets)
    if (flagExists(command, target.keyword)) return &target;
  return nullptr;
}

}  // namespace nivaro
