#include "morphology_coupling.hpp"

#include <algorithm>

#include "number_format.hpp"

namespace host {

namespace {

// This host has one 2D domain.
constexpr std::int32_t kDomain = 1;

// Fields of the module in the real work array, in the order in which they are reserved.
enum ModuleField : std::size_t { kBedLimit = 4, kAppliedChange = 6, kCellChange = 7 };

IndexArea wholeModel(const GridFrame& grid) {
  return {grid.firstI(), grid.firstJ(), grid.lastI(), grid.lastJ()};
}

// A case without a map has plain metres, with bounds around its cells.
std::string coordSysOf(const Case& model) {
  if (!model.coordSys.empty()) return model.coordSys;
  const GridFrame& grid = model.grid;
  const auto [x, y] = grid.toMap(grid.originX, grid.originY);
  const auto text = [](double value) { return fixed(value, 3); };
  return "CoordSys NonEarth Units \"m\" Bounds (" + text(x) + "," + text(y) + ") (" +
         text(x + grid.columns * grid.cellSize) + "," + text(y + grid.rows * grid.cellSize) + ")";
}

// Messages without a place stand in a list left of the model, from its upper corner down.
void openMessagesLayer(const ModuleLibrary& module, const Case& model) {
  const GridFrame& grid = model.grid;
  const MessageLabels& labels = *model.labels;
  const auto [x, y] = grid.toMap(grid.originX - labels.height - labels.width,
                                 grid.originY + grid.rows * grid.cellSize);
  module.openMessagesLayer(x, y, labels.height, labels.width, labels.spacing);
}

// Cells with their centre in the case's area.
IndexArea areaOf(const MorphologyArea& limits, const GridFrame& grid) {
  IndexArea area{grid.lastI() + 1, grid.lastJ() + 1, grid.firstI() - 1, grid.firstJ() - 1};
  forEachCell(grid, [&](int i, int j) {
    const double x = grid.x(j);
    const double y = grid.y(i);
    if (x < limits.lowX || x > limits.highX || y < limits.lowY || y > limits.highY) return;
    area = {std::min(area.firstI, i), std::min(area.firstJ, j), std::max(area.lastI, i),
            std::max(area.lastJ, j)};
  });
  if (area.lastI < area.firstI) throw CaseError("morphology: no cell lies in the given area.");
  return area;
}

class Stopwatch {
 public:
  double seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace

MorphologyCoupling::MorphologyCoupling(const ModuleLibrary& module, const Case& model,
                                       const std::string& prefix, BedArrays& bed, const Mesh& mesh)
    : module_(module),
      grid_(model.grid),
      settings_(model.flow),
      bed_(bed),
      mesh_(mesh),
      model_(wholeModel(grid_)),
      area_(areaOf(model.area, grid_)),
      flow_{Field<nivaro_logical>(grid_, 0), Field<nivaro_logical>(grid_, 0),
            Field<double>(grid_, 0.0), Field<double>(grid_, 0.0), Field<double>(grid_, 0.0)} {
  module_.initialise(model.name, prefix, coordSysOf(model));
  if (model.labels) openMessagesLayer(module_, model);
  module_.setDataset(static_cast<std::int32_t>(mesh_.pointI.size()),
                     static_cast<std::int32_t>(mesh_.elements.size()), settings_.dryDepth);

  // A host with fields of its own in the work arrays would reserve behind them; this one starts at
  // position 1. The arrays must be there before the control file writes defaults into them.
  std::int32_t nextReal = 1;
  std::int32_t nextInteger = 1;
  module_.reserve(kDomain, grid_, nextReal, nextInteger);
  work_.real.assign(static_cast<std::size_t>(nextReal - 1), 0.0);
  work_.integer.assign(static_cast<std::size_t>(nextInteger - 1), 0);
  module_.readControlFile(model.controlFile.string(), kDomain, kDomain, grid_, work_);
  module_.writeCheckLayer(kDomain, kDomain, grid_, model_, bed_, work_);

  module_.loadDomain(kDomain);
  module_.compute(MorphologyCall::Smoothing, kDomain, grid_, area_, 0, flow_, bed_, work_);
  module_.compute(MorphologyCall::Initialisation, kDomain, grid_, area_, 0, flow_, bed_, work_);
  module_.writeDatasetHeader(model.name);
  balance_.bedVolumeAtStart = balance_.bedVolumeAtEnd = bedVolume();
  if (!model.labels) return;
  watch_.emplace(grid_, bed_, moduleField(kBedLimit));
  module_.deliver({"CHECK - Check layer and messages of " + model.name, "Log " + prefix + ".mlf"});
}

void MorphologyCoupling::step(Flow& flow, double seconds) {
  takeFlow(flow);
  const double stored = flow.storedVolume();

  const Stopwatch watch;
  module_.loadDomain(kDomain);
  module_.compute(MorphologyCall::Step, kDomain, grid_, area_, seconds, flow_, bed_, work_);
  effort_.seconds += watch.seconds();

  account();
  followAtOutflowEdges();
  hours_ += seconds / 3600;
  if (watch_) tell(watch_->afterStep(bed_, moduleField(kCellChange), flow.level(), hours_));
  flow.followBed(stored);
}

void MorphologyCoupling::writeRecord(const Flow& flow, double hours) {
  takeFlow(flow);
  module_.writeFlags(kDomain, kDomain, hours, grid_, model_, flow_, bed_);
  module_.writeValues(kDomain, kDomain, grid_, model_, mesh_.pointI, mesh_.pointJ, work_);
}

void MorphologyCoupling::finish() {
  module_.closeDataset();
  if (watch_) tell(watch_->extremes(bed_, hours_));
}

void MorphologyCoupling::tell(const std::vector<PlacedMessage>& messages) const {
  for (const auto& [message, x, y] : messages) {
    const auto [mapX, mapY] = grid_.toMap(x, y);
    module_.deliver(message, mapX, mapY);
  }
}

const double* MorphologyCoupling::moduleField(std::size_t field) const {
  return work_.real.data() + field * work_.integer.size();
}

// The module's depth at a side between two wet cells is the mean level above the side's bed. With
// the velocity taken as discharge over that same depth, velocity times depth is the discharge of
// the flow, whatever depth the flow itself used there.
void MorphologyCoupling::takeFlow(const Flow& flow) {
  const auto& level = flow.level();
  const auto velocity = [&](double q, double levels, double sideBed) {
    const double depth = 0.5 * levels + sideBed;
    return depth > flow.dryDepth() ? q / depth : 0.0;
  };
  for (int j = grid_.firstJ() - 1; j <= grid_.lastJ() + 1; ++j) {
    for (int i = grid_.firstI() - 1; i <= grid_.lastI() + 1; ++i) {
      flow_.wet(i, j) = logical(flow.isWet(i, j));
      flow_.level(i, j) = level(i, j);
      flow_.v1(i, j) = velocity(flow.q1()(i, j), level(i, j) + level(i + 1, j), bed_.z1(i, j));
      flow_.v2(i, j) = velocity(flow.q2()(i, j), level(i, j) + level(i, j + 1), bed_.z2(i, j));
    }
  }
  // A wet cell that sends water into a dry one lets its sand out that way too. All other dry
  // neighbours are walls and banks: closed.
  forEachCell(grid_, [&](int i, int j) {
    const bool front = (!flow.isWet(i + 1, j) && flow.q1()(i, j) > 0) ||
                       (!flow.isWet(i - 1, j) && flow.q1()(i - 1, j) < 0) ||
                       (!flow.isWet(i, j + 1) && flow.q2()(i, j) > 0) ||
                       (!flow.isWet(i, j - 1) && flow.q2()(i, j - 1) < 0);
    flow_.flowing(i, j) = logical(flow.isWet(i, j) && front);
  });
}

// Outside an edge with a given level the bed goes up and down with the last cell inside. A bed that
// stood still there would be a sill under a bed that sinks, and the module's centred differences
// carry the disturbance of such a sill upstream as ripples of two cells. At an inflow edge the bed
// stands still: the sand that enters is what the flow carries over the bed of the start.
void MorphologyCoupling::followAtOutflowEdges() {
  const auto follow = [&](int i, int j, int outI, int outJ, double& side) {
    const double before = 2 * side - bed_.zc(outI, outJ);  // of the cell inside, when side was set
    bed_.zc(outI, outJ) += bed_.zc(i, j) - before;
    side = 0.5 * (bed_.zc(i, j) + bed_.zc(outI, outJ));
  };
  const auto given = [&](Edge edge) {
    return settings_.edges[static_cast<std::size_t>(edge)].kind == EdgeCondition::Kind::Level;
  };
  for (int i = grid_.firstI(); i <= grid_.lastI(); ++i) {
    const int west = grid_.firstJ();
    const int east = grid_.lastJ();
    if (given(Edge::West)) follow(i, west, i, west - 1, bed_.z2(i, west - 1));
    if (given(Edge::East)) follow(i, east, i, east + 1, bed_.z2(i, east));
  }
  for (int j = grid_.firstJ(); j <= grid_.lastJ(); ++j) {
    const int south = grid_.firstI();
    const int north = grid_.lastI();
    if (given(Edge::South)) follow(south, j, south - 1, j, bed_.z1(south - 1, j));
    if (given(Edge::North)) follow(north, j, north + 1, j, bed_.z1(north, j));
  }
}

template <typename Visit>
void MorphologyCoupling::forEachAreaCell(Visit visit) const {
  for (int j = area_.firstJ; j <= area_.lastJ; ++j) {
    for (int i = area_.firstI; i <= area_.lastI; ++i) {
      const std::size_t k = static_cast<std::size_t>(j - 1) * static_cast<std::size_t>(grid_.n()) +
                            static_cast<std::size_t>(i - 1);
      // The module changes the bed of cells with an activity code above 0.
      if (work_.integer[k] > 0) visit(i, j, k);
    }
  }
}

void MorphologyCoupling::account() {
  const std::size_t size = work_.integer.size();
  forEachAreaCell([&](int i, int j, std::size_t k) {
    balance_.addTransport(work_.real[kCellChange * size + k], grid_.cellArea());
    balance_.addSlumping(work_.real[kAppliedChange * size + k], grid_.cellArea());
    if (work_.integer[k] % 2 != 0 && flow_.wet(i, j)) ++effort_.cellSteps;
  });
  ++effort_.steps;
  balance_.bedVolumeAtEnd = bedVolume();
}

double MorphologyCoupling::bedVolume() const {
  double sum = 0;
  forEachAreaCell([&](int i, int j, std::size_t) { sum -= bed_.zc(i, j); });
  return sum * grid_.cellArea();
}

}  // namespace host
