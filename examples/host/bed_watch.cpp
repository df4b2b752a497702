#include "bed_watch.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "number_format.hpp"

namespace host {

namespace {

// One message speaks for all cells within so many of its own, so that a bed that wears down to rock
// shows as a few labels and not as a carpet of them.
constexpr int kCellsPerMessage = 12;
// A bed that changes by more than this share of the depth in one step outruns the flow.
constexpr double kLargestShareOfDepth = 0.1;
// Shallower water, m, at the edges that wet and dry, is left out of that.
constexpr double kShallow = 0.25;
// A bed closer to its limit than this, m, stands at it.
constexpr double kTouch = 1e-6;
// Smaller changes of the bed, m, are not worth a label.
constexpr double kSmallestChange = 0.001;

}  // namespace

BedWatch::BedWatch(const GridFrame& grid, const BedArrays& bed, const double* bedLimit)
    : grid_(grid), bedBefore_(bed.zc), limit_(grid, 0.0), canReachLimit_(grid, 0) {
  std::copy_n(bedLimit, grid.n() * grid.m(), limit_.data());
  forEachCell(grid_, [&](int i, int j) {
    canReachLimit_(i, j) = bed.code(i, j) && -bed.zc(i, j) > limit_(i, j) + kTouch;
  });
}

bool BedWatch::isFarFrom(const Places& places, int i, int j) const {
  return std::none_of(places.begin(), places.end(), [&](const auto& place) {
    return std::max(std::abs(place.first - i), std::abs(place.second - j)) <= kCellsPerMessage;
  });
}

PlacedMessage BedWatch::at(int i, int j, Message message) const {
  return {std::move(message), grid_.x(j), grid_.y(i)};
}

std::vector<PlacedMessage> BedWatch::afterStep(const BedArrays& bed, const double* change,
                                               const Field<double>& level, double hours) {
  std::vector<PlacedMessage> messages;
  forEachCell(grid_, [&](int i, int j) {
    const double z = -bed.zc(i, j);
    if (canReachLimit_(i, j) && z <= limit_(i, j) + kTouch) {
      canReachLimit_(i, j) = 0;
      if (isFarFrom(reachedLimit_, i, j)) {
        reachedLimit_.emplace_back(i, j);
        messages.push_back(
            at(i, j,
               {"CHECK - Bed worn down to its limit of " + fixed(limit_(i, j), 2) + " m",
                "after " + fixed(hours, 1) + " h; it was at " + fixed(-bedBefore_(i, j), 2) +
                    " m. More cells around may follow."}));
      }
    }
    const double moved = std::abs(change[limit_.position(i, j)]);
    const double depth = level(i, j) - z;
    if (!bed.code(i, j) || depth < kShallow || moved <= kLargestShareOfDepth * depth) return;
    if (!isFarFrom(changedMuch_, i, j)) return;
    changedMuch_.emplace_back(i, j);
    messages.push_back(at(
        i, j,
        {"WARNING - Bed changed by " + fixed(moved, 3) + " m in one step, at a depth of " +
             fixed(depth, 2) + " m",
         "after " + fixed(hours, 1) + " h. The morphology step may be too long for this place."}));
  });
  return messages;
}

std::vector<PlacedMessage> BedWatch::extremes(const BedArrays& bed, double hours) const {
  std::pair<int, int> deepest, highest;
  double scour = 0;
  double deposit = 0;
  forEachCell(grid_, [&](int i, int j) {
    if (!bed.code(i, j)) return;
    const double rise = bedBefore_(i, j) - bed.zc(i, j);
    if (rise < scour) scour = rise, deepest = {i, j};
    if (rise > deposit) deposit = rise, highest = {i, j};
  });
  const std::string when = "after " + fixed(hours, 1) + " h";
  std::vector<PlacedMessage> messages;
  if (scour < -kSmallestChange)
    messages.push_back(at(deepest.first, deepest.second,
                          {"CHECK - Deepest scour " + fixed(-scour, 2) + " m", when}));
  if (deposit > kSmallestChange)
    messages.push_back(at(highest.first, highest.second,
                          {"CHECK - Highest deposit " + fixed(deposit, 2) + " m", when}));
  return messages;
}

}  // namespace host
