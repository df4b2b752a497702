#include "spatial/segment_walk.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "platform/fixed_field.hpp"
#include "platform/support.hpp"
#include "spatial/plane.hpp"
#include "spatial/segments.hpp"

namespace nivaro {
namespace {

// Segments shorter than this along both axes cover nothing.
constexpr double kSamePoint = 1e-4;

// All centre lines between the ends are crossed, but for one or two at either end: beyond this the
// list overflows for certain. Coordinates gone astray are so found without walking to them.
constexpr double kSurelyTooMany = SegmentWalk::kMaxCells + 10;

// Steps beyond the cell of a segment's end that may still cross something: left of and below the
// origin, where indices are rounded toward it, the end lies one cell further on.
constexpr std::int64_t kBeyondEnd = 3;

// A walk through the rows steps along local y, one through the columns along local x.
enum class Steps { Rows, Columns };

struct LocalPoint {
  double x;
  double y;
};

// What the direction of the walk decides: a point and a cell by what lies along the walk and what
// lies across it.
template <Steps steps>
struct Direction {
  static constexpr bool kRows = steps == Steps::Rows;
  static constexpr char kMessageNumber = kRows ? '1' : '3';

  static double along(LocalPoint p) { return kRows ? p.y : p.x; }
  static double across(LocalPoint p) { return kRows ? p.x : p.y; }
  static LocalPoint point(double along, double across) {
    return kRows ? LocalPoint{across, along} : LocalPoint{along, across};
  }
  static CellIndex cell(std::int32_t along, std::int32_t across) {
    return kRows ? CellIndex{along, across} : CellIndex{across, along};
  }
};

bool meet(LocalPoint a, LocalPoint b, LocalPoint from, LocalPoint to) {
  return intersectLineV2(a.x, a.y, b.x, b.y, from.x, from.y, to.x, to.y) == crossing::kOnBoth;
}

double centreOf(std::int32_t index, double cellSize) {
  return (index - 0.5) * cellSize;
}

Report tooManyCells() {
  return {.line1 = "SORRY - Exceeded limit of" + integerField(SegmentWalk::kMaxCells, 9) +
                   " HX cells per HX polyline segment.  Contact " + std::string(kSupportAddress),
          .blankLines = 0};
}

Report noIntersection(char number) {
  return {.line1 = std::string("Should not be here - gridline_5 - intersection point ") + number +
                   " - contact " + std::string(kSupportAddress),
          .blankLines = 0};
}

// One walk: its segment and cell sizes, as seen along and across its direction.
template <Steps steps>
class Walk {
  using D = Direction<steps>;

 public:
  Walk(LocalPoint a, LocalPoint b, double dx, double dy, std::vector<CellIndex>& cells)
      : a_(a),
        b_(b),
        dx_(dx),
        dy_(dy),
        alongSize_(D::along({dx, dy})),
        acrossSize_(D::across({dx, dy})),
        cells_(cells) {}

  std::optional<Report> run() {
    // In reals, since cells beyond all 4-byte numbers have the same one. A walk goes along the longer
    // extent, unless coordinates overflowed when they were turned.
    const double along = std::abs(D::along(b_) - D::along(a_));
    const double across = std::abs(D::across(b_) - D::across(a_));
    if (!(along / std::abs(alongSize_) <= kSurelyTooMany) || !(across <= along))
      return tooManyCells();
    const std::int32_t alongA = cellIndex(D::along(a_), alongSize_);
    const std::int32_t alongB = cellIndex(D::along(b_), alongSize_);
    const std::int32_t acrossA = cellIndex(D::across(a_), acrossSize_);
    const std::int32_t acrossB = cellIndex(D::across(b_), acrossSize_);
    const std::int64_t linesBetween = std::abs(std::int64_t{alongB} - alongA);
    // Cells that are far from square would make it walk on for as long as they are flat.
    const std::int64_t last = std::clamp(std::abs(std::int64_t{acrossB} - acrossA), linesBetween,
                                         linesBetween + kBeyondEnd);
    const std::int64_t direction = alongB < alongA ? -1 : 1;

    for (std::int64_t step = 0; step <= last; ++step) {
      const auto index = static_cast<std::int32_t>(alongA + step * direction);
      std::optional<Report> report;
      if (crossesLine(index))
        report = addCrossing(index);
      else if (step == 0 && crossesEndCell(index, acrossA))
        report = add(D::cell(index, acrossA));
      else if (step == last && crossesEndCell(index, acrossB))
        report = add(D::cell(index, acrossB));
      if (report) return report;
    }
    return std::nullopt;
  }

 private:
  LocalPoint lineStart(std::int32_t index) const {
    return D::point(centreOf(index, alongSize_),
                    std::min(D::across(a_), D::across(b_)) - acrossSize_);
  }
  LocalPoint lineEnd(std::int32_t index) const {
    return D::point(centreOf(index, alongSize_),
                    std::max(D::across(a_), D::across(b_)) + acrossSize_);
  }

  // Whether the segment crosses the centre line of this row (column).
  bool crossesLine(std::int32_t index) const {
    return meet(a_, b_, lineStart(index), lineEnd(index));
  }

  // Whether it crosses the other centre line of an end's cell, within that cell.
  bool crossesEndCell(std::int32_t index, std::int32_t across) const {
    const double centre = centreOf(index, alongSize_);
    const double half = alongSize_ / 2.0;
    const double acrossCentre = centreOf(across, acrossSize_);
    return meet(a_, b_, D::point(centre - half, acrossCentre),
                D::point(centre + half, acrossCentre));
  }

  std::optional<Report> addCrossing(std::int32_t index) {
    const LocalPoint start = lineStart(index);
    const LocalPoint end = lineEnd(index);
    LocalPoint found{};
    if (!intersectionPoint(a_.x, a_.y, b_.x, b_.y, start.x, start.y, end.x, end.y, found.x,
                           found.y))
      return noIntersection(D::kMessageNumber);
    return add({cellIndex(found.y, dy_), cellIndex(found.x, dx_)});
  }

  std::optional<Report> add(CellIndex cell) {
    if (cells_.size() == SegmentWalk::kMaxCells) return tooManyCells();
    cells_.push_back(cell);
    return std::nullopt;
  }

  LocalPoint a_;
  LocalPoint b_;
  double dx_;
  double dy_;
  double alongSize_;
  double acrossSize_;
  std::vector<CellIndex>& cells_;
};

}  // namespace

Outcome<std::span<const CellIndex>> SegmentWalk::cells(const Segment& segment, double dx,
                                                       double dy) {
  cells_.clear();
  const LocalPoint a{segment.ax, segment.ay};
  const LocalPoint b{segment.bx, segment.by};
  if (samePoint(a.x, a.y, b.x, b.y, kSamePoint)) return std::span<const CellIndex>();

  const bool isSteep = std::abs(b.y - a.y) > std::abs(b.x - a.x);
  const std::optional<Report> report = isSteep ? Walk<Steps::Rows>(a, b, dx, dy, cells_).run()
                                               : Walk<Steps::Columns>(a, b, dx, dy, cells_).run();
  if (report) return *report;
  return std::span<const CellIndex>(cells_);
}

}  // namespace nivaro
