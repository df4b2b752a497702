#include "model.hpp"

#include <utility>

#include "inputs.hpp"
#include "interface/entry_points.hpp"
#include "interface/start_up.hpp"

namespace nivaro::bench {
namespace {

constexpr int kRim = 2;  // field elements around the grid's cells on each side

}  // namespace

Model::Model(int cells, std::string prefix, Console& console)
    : cells_(cells), n_(cells + 2 * kRim), prefix_(std::move(prefix)), console_(console) {
  realWork_ = std::make_unique_for_overwrite<double[]>(DomainFieldTable::kRealFields * size());
  integerWork_ = std::make_unique_for_overwrite<std::int32_t[]>(size());
}

std::size_t Model::size() const {
  return static_cast<std::size_t>(n_) * static_cast<std::size_t>(n_);
}

void Model::fillCells(PointOrder order) {
  code_.assign(size(), 1);
  active_.assign(size(), -1);
  level_.resize(size());
  depth_.resize(size());
  for (std::size_t k = 0; k < size(); ++k) {
    depth_[k] = static_cast<double>(k * 7919 % 30011) * 0.001 - 3.0;
    level_[k] = 0.01 * static_cast<double>(k % 97);
  }
  for (std::size_t k = 0; k < DomainFieldTable::kRealFields * size(); ++k)
    realWork_[k] = 0.001 * static_cast<double>(k % 1013);
  listPoints(order);
}

void Model::start() {
  module_.reset();
  record_ = std::make_unique<MessageRecord>();
  module_.emplace(console_, process_, *record_);
  startUp(*module_, {.simulationName = "bench",
                     .outputPrefix = prefix_,
                     .logPrefix = prefix_,
                     .gis = {.checkLayerPrefix = prefix_,
                             .checkLayerHeaderSource = "CoordSys NonEarth Units \"m\""}});
  module_->dataset.setSettings({.flagDepthThreshold = 0.1,
                                .numData = static_cast<std::int32_t>(pointI_.size()),
                                .numCells = cells_ * cells_});
  std::int32_t nextReal = 1;
  std::int32_t nextInteger = 1;
  module_->fields.reserve(1, true, n_, n_, nextReal, nextInteger);
}

void Model::readControlFile(const std::string& path) {
  nivaro::readControlFile(*module_, {.controlFile = path,
                                     .domain = 1,
                                     .lastDomain = 1,
                                     .n = n_,
                                     .m = n_,
                                     .grid = {.frame = {.x0 = kOriginX,
                                                        .y0 = kOriginY,
                                                        .dx = kCellSize,
                                                        .dy = kCellSize,
                                                        .firstBound = cells_,
                                                        .secondBound = cells_},
                                              .firstRowBound = cells_ + kRim,
                                              .secondRowBound = cells_ + kRim},
                                     .work = work()});
}

void Model::listPoints(PointOrder order) {
  pointI_.clear();
  pointJ_.clear();
  for (std::int32_t a = kRim; a <= cells_ + kRim; ++a) {
    for (std::int32_t b = kRim; b <= cells_ + kRim; ++b) {
      pointI_.push_back(order == PointOrder::AlongFirstIndex ? b : a);
      pointJ_.push_back(order == PointOrder::AlongFirstIndex ? a : b);
    }
  }
}

void Model::writeTimeRecord() {
  const DomainTurn turn{.domain = 1, .lastDomain = 1};
  module_->dataset.writeFlags(turn,
                              {.time = 1.0,
                               .code = {code_.data(), n_, kAnyDimension},
                               .active = {active_.data(), n_, kAnyDimension},
                               .depthTerm1 = {level_.data(), n_, kAnyDimension},
                               .depthTerm2 = {depth_.data(), n_, kAnyDimension}},
                              cellRange());
  nivaro::writeDatasetValues(*module_, {.turn = turn,
                                        .writeValues = true,
                                        .nx = n_,
                                        .range = cellRange(),
                                        .pointI = pointI_,
                                        .pointJ = pointJ_,
                                        .realWork = realWork_.get()});
}

void Model::writeCheckLayer() {
  nivaro::writeCheckLayer(*module_,
                          {.cells = {.code = {code_.data(), n_, kAnyDimension},
                                     .depth = {depth_.data(), n_, kAnyDimension},
                                     .range = cellRange(),
                                     .frame = {.x0 = kOriginX, .y0 = kOriginY, .stepA = kCellSize}},
                           .writeValues = true,
                           .work = work()});
}

Area Model::cellRange() const {
  return {kRim + 1, kRim + 1, cells_ + kRim, cells_ + kRim};
}

}  // namespace nivaro::bench
