#include "flow.hpp"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr double kGravity = 9.81;

// Below this relative depth the logarithmic law loses its meaning; friction then stays as it is.
constexpr double kLowestLogArgument = 10.0;

// A cell along an edge with what the edge's condition needs: the cell inside, the way inward, and
// the side that the water crosses.
struct EdgeCell {
  int i, j;
  Axis axis;
  int inward;  // 1 where inward is the increasing index, else -1
  int sideI, sideJ;

  int shiftedI(int cells) const { return axis == Axis::Y ? i + cells * inward : i; }
  int shiftedJ(int cells) const { return axis == Axis::X ? j + cells * inward : j; }
};

}  // namespace

double Roughness::resistance(double depth) const {
  if (kind == Kind::Manning) return value * value / (depth * depth * depth * std::cbrt(depth));
  const double chezy = 18 * std::log10(std::max(12 * depth / value, kLowestLogArgument));
  return 1 / (chezy * chezy * depth * depth * depth);
}

Flow::Flow(const GridFrame& grid, const FlowSettings& settings, const BedArrays& bed)
    : grid_(grid),
      settings_(settings),
      bed_(bed),
      level_(grid, 0.0),
      q1_(grid, 0.0),
      q2_(grid, 0.0),
      next1_(grid, 0.0),
      next2_(grid, 0.0),
      active_(grid, 0),
      open1_(grid, 0),
      open2_(grid, 0) {
  forEachCell(grid_, [&](int i, int j) {
    if (bed_.code(i, j) == 0) return;
    active_(i, j) = 1;
    open1_(i, j) = bed_.code(i + 1, j) != 0;
    open2_(i, j) = bed_.code(i, j + 1) != 0;
  });
  openEdges();
  fill([](double, double) { return -1e9; });
}

template <typename Visit>
void Flow::forEachEdgeCell(Edge edge, Visit visit) const {
  const bool low = edge == Edge::West || edge == Edge::South;
  const int inward = low ? 1 : -1;
  if (edge == Edge::West || edge == Edge::East) {
    const int j = low ? grid_.firstJ() : grid_.lastJ();
    for (int i = grid_.firstI(); i <= grid_.lastI(); ++i) {
      if (bed_.code(i, j)) visit(EdgeCell{i, j, Axis::X, inward, i, low ? j - 1 : j});
    }
  } else {
    const int i = low ? grid_.firstI() : grid_.lastI();
    for (int j = grid_.firstJ(); j <= grid_.lastJ(); ++j) {
      if (bed_.code(i, j)) visit(EdgeCell{i, j, Axis::Y, inward, low ? i - 1 : i, j});
    }
  }
}

void Flow::openEdges() {
  for (std::size_t e = 0; e < kEdges; ++e) {
    const EdgeCondition& condition = settings_.edges[e];
    if (condition.kind == EdgeCondition::Kind::Wall) continue;
    forEachEdgeCell(static_cast<Edge>(e), [&](const EdgeCell& c) {
      active_(c.shiftedI(-1), c.shiftedJ(-1)) = 1;
      if (condition.kind == EdgeCondition::Kind::Level)
        (c.axis == Axis::X ? open2_ : open1_)(c.sideI, c.sideJ) = 1;
    });
  }
}

void Flow::fill(const std::function<double(double, double)>& level, double qx, double qy) {
  for (int j = 1; j <= grid_.m(); ++j) {
    for (int i = 1; i <= grid_.n(); ++i) {
      level_(i, j) = -bed_.zc(i, j);
      if (active_(i, j)) level_(i, j) = std::max(level_(i, j), level(grid_.x(j), grid_.y(i)));
      q1_(i, j) = q2_(i, j) = 0;
    }
  }
  forEachCell(grid_, [&](int i, int j) {
    if (open1_(i, j) && isWet(i, j) && isWet(i + 1, j)) q1_(i, j) = qy;
    if (open2_(i, j) && isWet(i, j) && isWet(i, j + 1)) q2_(i, j) = qx;
  });
  setEdgeDischarges();
  updateMargin();
}

double Flow::stableStep() const {
  double deepest = settings_.dryDepth;
  forEachCell(grid_, [&](int i, int j) { deepest = std::max(deepest, depth(i, j)); });
  return settings_.courant * grid_.cellSize / std::sqrt(kGravity * deepest);
}

void Flow::run(double seconds) {
  while (seconds > 0) {
    const double steps = std::ceil(seconds / stableStep() - 1e-9);
    const double length = steps <= 1 ? seconds : seconds / steps;
    step(length);
    seconds = steps <= 1 ? 0 : seconds - length;
  }
}

// Discharge of one side after a step. The depth of flow at a side is that of the higher level
// above the side's bed; water leaves a cell only while the cell is wet.
template <Axis axis>
double Flow::nextDischarge(int i, int j, double seconds) const {
  constexpr int di = axis == Axis::Y ? 1 : 0;
  constexpr int dj = axis == Axis::X ? 1 : 0;
  const Field<double>& q = axis == Axis::X ? q2_ : q1_;
  const Field<double>& across = axis == Axis::X ? q1_ : q2_;
  const double sideBed = axis == Axis::X ? bed_.z2(i, j) : bed_.z1(i, j);

  const double low = level_(i, j);
  const double high = level_(i + di, j + dj);
  const double h = std::max(low, high) + sideBed;
  if (h <= settings_.dryDepth) return 0;

  const double own = settings_.centring;
  const double centred = own * q(i, j) + 0.5 * (1 - own) * (q(i - di, j - dj) + q(i + di, j + dj));
  const double pushed = centred - kGravity * h * seconds * (high - low) / grid_.cellSize;
  if (pushed == 0) return 0;

  const double transverse = 0.25 * (across(i, j) + across(i - dj, j - di) + across(i + di, j + dj) +
                                    across(i + di - dj, j + dj - di));
  const double speed = std::sqrt(q(i, j) * q(i, j) + transverse * transverse);
  // Friction is g h times its slope; of q |q| one factor is taken at the end of the step.
  const double result =
      pushed / (1 + seconds * kGravity * h * settings_.roughness.resistance(h) * speed);

  // Water comes from a wet cell and passes the higher of the two beds, critical at most: the scheme
  // knows no supercritical flow, and on a steep bank more would be an instability growing.
  const bool upward = result > 0;
  if (!isWet(upward ? i : i + di, upward ? j : j + dj)) return 0;
  const double crest = (upward ? low : high) + std::min(bed_.zc(i, j), bed_.zc(i + di, j + dj));
  if (crest <= 0) return 0;
  const double critical = crest * std::sqrt(kGravity * crest);
  return std::clamp(result, -critical, critical);
}

void Flow::step(double seconds) {
  for (int j = grid_.firstJ() - 1; j <= grid_.lastJ(); ++j) {
    for (int i = grid_.firstI() - 1; i <= grid_.lastI(); ++i) {
      next1_(i, j) = open1_(i, j) ? nextDischarge<Axis::Y>(i, j, seconds) : 0;
      next2_(i, j) = open2_(i, j) ? nextDischarge<Axis::X>(i, j, seconds) : 0;
    }
  }
  q1_.swap(next1_);
  q2_.swap(next2_);
  setEdgeDischarges();
  limitToStoredWater(seconds);
  updateLevels(seconds);
  updateMargin();
}

// The discharge of an edge spreads over its wet cells by conveyance, depth to the power 5/3; over
// all of them while the edge is dry. The depth is that below the mean level of the edge: below each
// cell's own level, a higher one would get more water, and the water would slosh from bank to bank.
void Flow::setEdgeDischarges() {
  for (std::size_t e = 0; e < kEdges; ++e) {
    const EdgeCondition& condition = settings_.edges[e];
    if (condition.kind != EdgeCondition::Kind::Discharge) continue;
    const auto edge = static_cast<Edge>(e);
    double levels = 0;
    int wetCells = 0;
    int cells = 0;
    forEachEdgeCell(edge, [&](const EdgeCell& c) {
      ++cells;
      if (!isWet(c.i, c.j)) return;
      levels += level_(c.i, c.j);
      ++wetCells;
    });
    const double level = wetCells > 0 ? levels / wetCells : 0;
    const auto conveyance = [&](const EdgeCell& c) {
      const double below = level + bed_.zc(c.i, c.j);
      return isWet(c.i, c.j) && below > 0 ? std::pow(below, 5.0 / 3.0) : 0.0;
    };
    double total = 0;
    forEachEdgeCell(edge, [&](const EdgeCell& c) { total += conveyance(c); });
    forEachEdgeCell(edge, [&](const EdgeCell& c) {
      const double share = total > 0 ? conveyance(c) / total : 1.0 / cells;
      (c.axis == Axis::X ? q2_ : q1_)(c.sideI, c.sideJ) =
          c.inward * condition.value * share / grid_.cellSize;
    });
  }
}

// No cell gives more water in a step than it holds: where the four sides would take more, all that
// leave the cell are scaled alike. Each discharge leaves one cell only, so depths stay positive.
void Flow::limitToStoredWater(double seconds) {
  forEachCell(grid_, [&](int i, int j) {
    const double leaving = std::max(q1_(i, j), 0.0) + std::max(q2_(i, j), 0.0) +
                           std::max(-q1_(i - 1, j), 0.0) + std::max(-q2_(i, j - 1), 0.0);
    const double share = leaving * seconds / grid_.cellSize;
    const double held = std::max(depth(i, j), 0.0);
    if (share <= held) return;
    const double factor = held / share;
    if (q1_(i, j) > 0) q1_(i, j) *= factor;
    if (q2_(i, j) > 0) q2_(i, j) *= factor;
    if (q1_(i - 1, j) < 0) q1_(i - 1, j) *= factor;
    if (q2_(i, j - 1) < 0) q2_(i, j - 1) *= factor;
  });
}

void Flow::updateLevels(double seconds) {
  const double ratio = seconds / grid_.cellSize;
  levelChange_ = 0;
  forEachCell(grid_, [&](int i, int j) {
    if (!active_(i, j)) return;
    const double raised =
        level_(i, j) + ratio * (q1_(i - 1, j) - q1_(i, j) + q2_(i, j - 1) - q2_(i, j));
    // A cell that gave all it held may miss zero by the last bit.
    const double next = std::max(raised, -bed_.zc(i, j));
    levelChange_ = std::max(levelChange_, std::abs(next - level_(i, j)) / seconds);
    level_(i, j) = next;
  });
  for (std::size_t e = 0; e < kEdges; ++e) {
    forEachEdgeCell(static_cast<Edge>(e), [&](const EdgeCell& c) {
      const double q = (c.axis == Axis::X ? q2_ : q1_)(c.sideI, c.sideJ);
      boundaryVolume_ += c.inward * q * seconds * grid_.cellSize;
    });
  }
}

// Levels outside open edges: the given one, or the line through the two cells inside, so that the
// depth at an inflow side is that of the flow behind it. Beyond a given level the discharge goes on
// as it crosses the edge, so that the centring does not hold it back there.
void Flow::updateMargin() {
  for (std::size_t e = 0; e < kEdges; ++e) {
    const EdgeCondition& condition = settings_.edges[e];
    if (condition.kind == EdgeCondition::Kind::Wall) continue;
    forEachEdgeCell(static_cast<Edge>(e), [&](const EdgeCell& c) {
      double outside = condition.value;
      if (condition.kind == EdgeCondition::Kind::Discharge) {
        outside = level_(c.i, c.j);
        const int i = c.shiftedI(1);
        const int j = c.shiftedJ(1);
        if (isWet(i, j)) outside += outside - level_(i, j);
      } else {
        Field<double>& q = c.axis == Axis::X ? q2_ : q1_;
        const int beyondI = c.axis == Axis::Y ? c.sideI - c.inward : c.sideI;
        const int beyondJ = c.axis == Axis::X ? c.sideJ - c.inward : c.sideJ;
        q(beyondI, beyondJ) = q(c.sideI, c.sideJ);
      }
      const int i = c.shiftedI(-1);
      const int j = c.shiftedJ(-1);
      level_(i, j) = std::max(outside, -bed_.zc(i, j));
    });
  }
}

void Flow::followBed(double volumeBefore) {
  forEachCell(grid_, [&](int i, int j) { level_(i, j) = std::max(level_(i, j), -bed_.zc(i, j)); });
  updateMargin();
  displacedVolume_ += storedVolume() - volumeBefore;
}

double Flow::storedVolume() const {
  double sum = 0;
  forEachCell(grid_, [&](int i, int j) {
    if (active_(i, j)) sum += depth(i, j);
  });
  return sum * grid_.cellArea();
}

bool Flow::isFinite() const {
  bool finite = true;
  forEachCell(grid_, [&](int i, int j) { finite = finite && std::isfinite(level_(i, j)); });
  return finite;
}

}  // namespace host
