#include "flow.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace host {

namespace {

constexpr double kGravity = 9.81;

// Below this relative depth the logarithmic law loses its meaning; friction then stays as it is.
constexpr double kLowestLogArgument = 10.0;

// A side carries no deeper water than so many times what stands above the higher of its two beds: a
// thin film on a steep bank would else take water that it does not have.
constexpr double kDeepestOverCrest = 2.0;

// Shear velocity over velocity of a very rough bed, for the longest step.
constexpr double kLargestShear = 0.1;

// The loops look at cells that are wet or lie so near to a wet one that water can reach them before
// the next search, which comes after as many steps: a front moves by one cell in a step.
constexpr int kReach = 4;

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

// h^(-1/3) for h above 1e-30: a guess from the bits of the number and three steps of Newton, in
// plain arithmetic that works on several cells at once.
inline double inverseCubeRoot(double h) {
  const auto bits = std::bit_cast<std::int32_t>(static_cast<float>(h));
  double y = static_cast<double>(std::bit_cast<float>(0x54a21d2a - bits / 3));
  for (int k = 0; k < 3; ++k) y *= (4 - h * y * y * y) * (1.0 / 3.0);
  return y;
}

// ln x for ordinary x above 0, in plain arithmetic as well: x = 2^e m, and with m = sqrt(2) (1 + s) / (1 - s)
// the series of ln((1 + s) / (1 - s)), good to 1e-12.
inline double logarithm(double x) {
  const auto bits = std::bit_cast<std::uint64_t>(x);
  // The exponent as the last digits of 2^52 + e.
  const double e = std::bit_cast<double>((bits >> 52) | 0x4330000000000000u) - (0x1p52 + 1023);
  const double m = std::bit_cast<double>((bits & 0x000fffffffffffffu) | 0x3ff0000000000000u);
  const double s = (m - std::numbers::sqrt2) / (m + std::numbers::sqrt2);
  const double s2 = s * s;
  const double series = 1 + s2 * (1. / 3 + s2 * (1. / 5 + s2 * (1. / 7 + s2 * (1. / 9 + s2 / 11))));
  return (e + 0.5) * std::numbers::ln2 + 2 * s * series;
}

// Momentum that a discharge q carries from one side to the next, less what mixing carries back. Of four
// neighbouring sides in a row the middle two are the ones that it goes between. The carried velocity
// is that of the side upstream, continued by half a cell with the smooth slope of van Albada.
inline double momentumFlux(double q, double u0, double u1, double u2, double u3, double mixing) {
  const double here = u2 - u1;
  const double behind = u1 - u0;
  const double beyond = u3 - u2;
  const double upstream = q > 0 ? behind : beyond;
  const double both = upstream * here;
  const double slope =
      (both > 0 ? both : 0) * (upstream + here) / (upstream * upstream + here * here + 1e-30);
  return 0.5 * (q * (u1 + u2) - std::abs(q) * (here - slope)) - mixing * here;
}

}  // namespace

double Roughness::manningDrag(double depth) const {
  return kGravity * value * value * inverseCubeRoot(depth);
}

double Roughness::heightDrag(double depth) const {
  const double argument = 12 * depth / value;
  const double chezy = 18 / std::numbers::ln10 *
                       logarithm(argument > kLowestLogArgument ? argument : kLowestLogArgument);
  return kGravity / (chezy * chezy);
}

Flow::Sides::Sides(const GridFrame& grid, const Field<double>& sideBed, Axis axis)
    : bed(sideBed),
      along(axis == Axis::X ? grid.n() : 1),
      across(axis == Axis::X ? 1 : grid.n()),
      velocity(grid, 0.0),
      next(grid, 0.0),
      discharge(grid, 0.0),
      change(grid, 0.0),
      open(grid, 0.0),
      carries(grid, 0.0) {}

Flow::Flow(const GridFrame& grid, const FlowSettings& settings, const BedArrays& bed)
    : grid_(grid),
      settings_(settings),
      bed_(bed),
      x_(grid, bed.z2, Axis::X),
      y_(grid, bed.z1, Axis::Y),
      level_(grid, 0.0),
      depth_(grid, 0.0),
      drag_(grid, 0.0),
      mixing_(grid, 0.0),
      centre_(grid, 0.0),
      corner_(grid, 0.0),
      inside_(grid, 0.0),
      active_(grid, 0) {
  forEachCell(grid_, [&](int i, int j) {
    if (bed_.code(i, j) == 0) return;
    active_(i, j) = 1;
    inside_(i, j) = 1;
    x_.open(i, j) = x_.carries(i, j) = bed_.code(i, j + 1) != 0;
    y_.open(i, j) = y_.carries(i, j) = bed_.code(i + 1, j) != 0;
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
      if (condition.kind == EdgeCondition::Kind::Level) sidesOf(c.axis).open(c.sideI, c.sideJ) = 1;
    });
  }
}

void Flow::fill(const std::function<double(double, double)>& level, double qx, double qy) {
  for (int j = 1; j <= grid_.m(); ++j) {
    for (int i = 1; i <= grid_.n(); ++i) {
      level_(i, j) = -bed_.zc(i, j);
      if (active_(i, j)) level_(i, j) = std::max(level_(i, j), level(grid_.x(j), grid_.y(i)));
    }
  }
  const auto start = [&](Sides& sides, int i, int j, int di, int dj, double q) {
    const double h = 0.5 * (level_(i, j) + level_(i + di, j + dj)) + sides.bed(i, j);
    const bool flows = sides.open(i, j) > 0 && isWet(i, j) && isWet(i + di, j + dj);
    sides.discharge(i, j) = flows ? q : 0;
    sides.velocity(i, j) = flows ? q / h : 0;
  };
  forEachCell(grid_, [&](int i, int j) {
    start(x_, i, j, 0, 1, qx);
    start(y_, i, j, 1, 0, qy);
  });
  findStretches();
  setEdgeDischarges();
  updateMargin();
}

// Waves along both axes at once, sqrt(2 g h), leave a step of dx over that; what is carried may come
// half a cell far, and mixing may not overshoot.
double Flow::stableStep() const {
  const double* level = level_.data();
  const double* bed = bed_.zc.data();
  const double* u = x_.velocity.data();
  const double* v = y_.velocity.data();
  double deepest = settings_.dryDepth;
  double fastest = 0;
  for (const Stretch& part : stretches_) {
    for (std::ptrdiff_t k = part.begin; k < part.end; ++k) {
      deepest = std::max(deepest, level[k] + bed[k]);
      fastest = std::max(fastest, std::abs(u[k]) + std::abs(v[k]));
    }
  }
  const double viscosity =
      settings_.viscosity + settings_.mixing * kLargestShear * fastest * deepest;
  return settings_.courant * grid_.cellSize /
         (std::sqrt(2 * kGravity * deepest) + fastest + 8 * viscosity / grid_.cellSize);
}

void Flow::run(double seconds) {
  while (seconds > 0) {
    const double steps = std::ceil(seconds / stableStep() - 1e-9);
    const double length = steps <= 1 ? seconds : seconds / steps;
    step(length);
    seconds = steps <= 1 ? 0 : seconds - length;
  }
}

void Flow::step(double seconds) {
  describeCells();
  findChange(x_, y_);
  findChange(y_, x_);
  findVelocity(x_, y_, seconds);
  findVelocity(y_, x_, seconds);
  x_.velocity.swap(x_.next);
  y_.velocity.swap(y_.next);
  setEdgeDischarges();
  updateLevels(seconds);
  if (--stepsToSearch_ == 0) findStretches();
  updateMargin();
}

// Rows of cells that lie one behind another in memory, with the margin where water may enter. Beyond
// them everything is at rest.
void Flow::findStretches() {
  constexpr std::ptrdiff_t kLongestGap = 32;  // to go through is quicker than to start anew
  const int lowI = grid_.firstI() - 1, highI = grid_.lastI() + 1;
  const int lowJ = grid_.firstJ() - 1, highJ = grid_.lastJ() + 1;
  stretches_.clear();
  std::vector<std::pair<int, int>> wet(static_cast<std::size_t>(grid_.m()) + 1, {highI + 1, 0});
  for (int j = lowJ; j <= highJ; ++j) {
    for (int i = lowI; i <= highI; ++i) {
      const bool isOutside = active_(i, j) && inside_(i, j) == 0;
      if (depth(i, j) <= 0.5 * settings_.dryDepth && !isOutside) continue;
      for (int near = std::max(j - kReach, lowJ); near <= std::min(j + kReach, highJ); ++near) {
        auto& [first, last] = wet[static_cast<std::size_t>(near)];
        first = std::min(first, i);
        last = std::max(last, i);
      }
    }
  }
  for (int j = lowJ; j <= highJ; ++j) {
    const auto& [first, last] = wet[static_cast<std::size_t>(j)];
    if (first > last) continue;
    const Stretch column{flat(std::max(first - kReach, lowI), j),
                         flat(std::min(last + kReach, highI), j) + 1};
    if (!stretches_.empty() && column.begin - stretches_.back().end < kLongestGap)
      stretches_.back().end = column.end;
    else
      stretches_.push_back(column);
  }
  restOutside();
  stepsToSearch_ = kReach;
}

void Flow::restOutside() {
  const auto rest = [&](std::ptrdiff_t from, std::ptrdiff_t to) {
    for (Sides* s : {&x_, &y_}) {
      for (Field<double>* f : {&s->velocity, &s->next, &s->discharge, &s->change})
        std::fill(f->data() + from, f->data() + to, 0.0);
    }
    for (Field<double>* f : {&centre_, &corner_, &mixing_, &depth_})
      std::fill(f->data() + from, f->data() + to, 0.0);
  };
  std::ptrdiff_t from = 0;
  for (const Stretch& part : stretches_) {
    rest(from, part.begin);
    from = part.end;
  }
  rest(from, flat(grid_.n(), grid_.m()) + 1);
}

// Depth, bed friction and mixing of the cells. The viscosity is Elder's, in proportion to depth and
// shear velocity, on top of the given one; none in dry cells and outside.
void Flow::describeCells() {
  const double* level = level_.data();
  const double* bed = bed_.zc.data();
  const double* inside = inside_.data();
  const double* u = x_.velocity.data();
  const double* v = y_.velocity.data();
  double* __restrict depth = depth_.data();
  double* __restrict drag = drag_.data();
  double* __restrict mixing = mixing_.data();
  const std::ptrdiff_t n = x_.along;
  const double dry = settings_.dryDepth;

  const Roughness roughness = settings_.roughness;
  const double viscosity = settings_.viscosity;
  const double elder = settings_.mixing;

  for (const Stretch& part : stretches_) {
    for (std::ptrdiff_t k = part.begin; k < part.end; ++k) depth[k] = level[k] + bed[k];
    if (roughness.kind == Roughness::Kind::Manning) {
      for (std::ptrdiff_t k = part.begin; k < part.end; ++k)
        drag[k] = roughness.manningDrag(depth[k] > dry ? depth[k] : dry);
    } else {
      for (std::ptrdiff_t k = part.begin; k < part.end; ++k)
        drag[k] = roughness.heightDrag(depth[k] > dry ? depth[k] : dry);
    }
    for (std::ptrdiff_t k = part.begin; k < part.end; ++k) {
      const double uc = 0.5 * (u[k] + u[k - n]);
      const double vc = 0.5 * (v[k] + v[k - 1]);
      const double shear = std::sqrt(drag[k] * (uc * uc + vc * vc));
      const double wet = depth[k] > dry ? 1 : 0;
      mixing[k] = wet * inside[k] * depth[k] * (viscosity + elder * shear * depth[k]);
    }
  }
}

// What flows through the four faces of the cell around a side carries momentum in and out.
void Flow::findChange(Sides& sides, const Sides& other) {
  const std::ptrdiff_t a = sides.along;
  const std::ptrdiff_t b = sides.across;
  const double* u = sides.velocity.data();
  const double* q = sides.discharge.data();
  const double* p = other.discharge.data();
  const double* depth = depth_.data();
  const double* mixing = mixing_.data();
  const double* carries = sides.carries.data();
  double* __restrict centre = centre_.data();
  double* __restrict corner = corner_.data();
  double* __restrict change = sides.change.data();
  const double perCell = 1 / grid_.cellSize;
  const double dry = settings_.dryDepth;
  const std::ptrdiff_t begin = flat(grid_.firstI(), grid_.firstJ());
  const std::ptrdiff_t end = flat(grid_.lastI(), grid_.lastJ()) + 1;

  for (const Stretch& part : stretches_) {
    for (std::ptrdiff_t k = std::max(part.begin, begin); k < part.end; ++k)
      centre[k] = momentumFlux(0.5 * (q[k - a] + q[k]), u[k - 2 * a], u[k - a], u[k], u[k + a],
                               mixing[k] * perCell);
    for (std::ptrdiff_t k = part.begin; k < std::min(part.end, end); ++k) {
      const double m1 = mixing[k] < mixing[k + a] ? mixing[k] : mixing[k + a];
      const double m2 = mixing[k + b] < mixing[k + a + b] ? mixing[k + b] : mixing[k + a + b];
      corner[k] = momentumFlux(0.5 * (p[k] + p[k + a]), u[k - b], u[k], u[k + b], u[k + 2 * b],
                               (m1 < m2 ? m1 : m2) * perCell);
    }
  }
  for (const Stretch& part : stretches_) {
    for (std::ptrdiff_t k = std::max(part.begin, begin); k < std::min(part.end, end); ++k) {
      const double leaving = centre[k + a] - centre[k] + corner[k] - corner[k - b];
      const double water = 0.5 * (q[k + a] - q[k - a] + p[k] + p[k + a] - p[k - b] - p[k + a - b]);
      const double h = 0.5 * (depth[k] + depth[k + a]);
      change[k] = carries[k] * (u[k] * water - leaving) * perCell / (h > dry ? h : dry);
    }
  }
}

// Velocity after a step, and what it carries over the side: water of the depth upstream. The way closes
// between the dry depth and half of it: at one stroke, thin water on a bank would come and go for ever.
void Flow::findVelocity(Sides& sides, const Sides& other, double seconds) {
  const std::ptrdiff_t a = sides.along;
  const std::ptrdiff_t b = sides.across;
  const double* u = sides.velocity.data();
  const double* v = other.velocity.data();
  const double* open = sides.open.data();
  const double* change = sides.change.data();
  const double* level = level_.data();
  const double* depth = depth_.data();
  const double* bed = bed_.zc.data();
  const double* sideBed = sides.bed.data();
  const double* drag = drag_.data();
  double* __restrict next = sides.next.data();
  double* __restrict discharge = sides.discharge.data();
  const double slopeToSpeed = kGravity * seconds / grid_.cellSize;
  const double dry = settings_.dryDepth;
  const std::ptrdiff_t end = flat(grid_.lastI(), grid_.lastJ()) + 1;

  for (const Stretch& part : stretches_) {
    for (std::ptrdiff_t k = part.begin; k < std::min(part.end, end); ++k) {
      const double low = level[k], high = level[k + a];
      const double lowBed = bed[k], highBed = bed[k + a];
      const double lowDrag = drag[k], highDrag = drag[k + a];
      const double lowDepth = depth[k], highDepth = depth[k + a];
      const double pushed = u[k] + seconds * change[k] + slopeToSpeed * (low - high);
      const bool forward = pushed > 0;
      const double from = forward ? low : high;
      const double overCrest = kDeepestOverCrest * (from + (lowBed < highBed ? lowBed : highBed));
      const double overSide = from + sideBed[k];
      const double h = overCrest < overSide ? overCrest : overSide;
      const double source = forward ? lowDepth : highDepth;
      const double thinner = source < h ? source : h;
      const double opening = thinner < dry ? 2 * thinner / dry - 1 : 1;
      const double flows = opening > 0 ? 1 : 0;

      const double across = 0.25 * (v[k] + v[k - b] + v[k + a] + v[k + a - b]);
      const double speed = std::sqrt(u[k] * u[k] + across * across);
      const double friction = (forward ? lowDrag : highDrag) * speed / (h > dry ? h : dry);
      const double result = open[k] * pushed / (1 + seconds * friction);
      next[k] = flows * result;
      discharge[k] = flows * opening * result * h;
    }
  }
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
      const double q = c.inward * condition.value * share / grid_.cellSize;
      Sides& sides = sidesOf(c.axis);
      const double from =
          q * c.inward > 0 ? level_(c.shiftedI(-1), c.shiftedJ(-1)) : level_(c.i, c.j);
      const double h = from + sides.bed(c.sideI, c.sideJ);
      sides.discharge(c.sideI, c.sideJ) = q;
      sides.velocity(c.sideI, c.sideJ) = h > settings_.dryDepth ? q / h : 0;
    });
  }
}

// No cell gives more water in a step than it holds: where its sides would take more, all that
// leave the cell are scaled alike. Each discharge leaves one cell only, so depths stay positive.
void Flow::limitToStoredWater(double seconds) {
  Field<double>& q1 = y_.discharge;
  Field<double>& q2 = x_.discharge;
  forEachCell(grid_, [&](int i, int j) {
    const double leaving = std::max(q1(i, j), 0.0) + std::max(q2(i, j), 0.0) +
                           std::max(-q1(i - 1, j), 0.0) + std::max(-q2(i, j - 1), 0.0);
    const double share = leaving * seconds / grid_.cellSize;
    const double held = std::max(depth(i, j), 0.0);
    if (share <= held) return;
    const double factor = held / share;
    if (q1(i, j) > 0) q1(i, j) *= factor;
    if (q2(i, j) > 0) q2(i, j) *= factor;
    if (q1(i - 1, j) < 0) q1(i - 1, j) *= factor;
    if (q2(i, j - 1) < 0) q2(i, j - 1) *= factor;
  });
}

void Flow::updateLevels(double seconds) {
  const std::ptrdiff_t n = x_.along;
  const double* q2 = x_.discharge.data();
  const double* q1 = y_.discharge.data();
  const double* inside = inside_.data();
  const double* bed = bed_.zc.data();
  double* __restrict level = level_.data();
  double* __restrict raised = centre_.data();
  const double ratio = seconds / grid_.cellSize;
  const auto raise = [&] {
    double least = 0;
    for (const Stretch& part : stretches_) {
      for (std::ptrdiff_t k = part.begin; k < part.end; ++k) {
        raised[k] = level[k] + inside[k] * ratio * (q1[k - 1] - q1[k] + q2[k - n] - q2[k]);
        const double deep = inside[k] * (raised[k] + bed[k]);
        least = deep < least ? deep : least;
      }
    }
    return least;
  };
  if (raise() < 0) {
    limitToStoredWater(seconds);
    raise();
  }
  // A cell that gave all it held may miss zero by the last bit.
  for (const Stretch& part : stretches_) {
    for (std::ptrdiff_t k = part.begin; k < part.end; ++k)
      level[k] = raised[k] > -bed[k] ? raised[k] : -bed[k];
  }

  for (std::size_t e = 0; e < kEdges; ++e) {
    forEachEdgeCell(static_cast<Edge>(e), [&](const EdgeCell& c) {
      const double q = sidesOf(c.axis).discharge(c.sideI, c.sideJ);
      boundaryVolume_ += c.inward * q * seconds * grid_.cellSize;
    });
  }
}

double Flow::levelChange() const {
  double fastest = 0;
  forEachCell(grid_, [&](int i, int j) {
    const double gain = q1()(i - 1, j) - q1()(i, j) + q2()(i, j - 1) - q2()(i, j);
    fastest = std::max(fastest, std::abs(gain) / grid_.cellSize);
  });
  return fastest;
}

// Levels outside open edges: the given one, or the line through the two cells inside, so that the
// depth at an inflow side is that of the flow behind it.
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
      }
      // Outside, the flow goes on as it crosses the edge.
      Sides& sides = sidesOf(c.axis);
      const int beyondI = c.axis == Axis::Y ? c.sideI - c.inward : c.sideI;
      const int beyondJ = c.axis == Axis::X ? c.sideJ - c.inward : c.sideJ;
      sides.velocity(beyondI, beyondJ) = sides.velocity(c.sideI, c.sideJ);
      sides.discharge(beyondI, beyondJ) = sides.discharge(c.sideI, c.sideJ);
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
