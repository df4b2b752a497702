#include "spatial/polygon.hpp"

#include <string>

#include "platform/support.hpp"
#include "spatial/segments.hpp"

namespace nivaro {
namespace {

// How far beyond the leftmost vertex the ray ends.
constexpr double kRayMargin = 10.0;

// Counts the crossings of the ray with one polygon after another.
class Ray {
 public:
  Ray(double px, double py, double minX, std::span<const double> x, std::span<const double> y)
      : px_(px), py_(py), endX_(minX - kRayMargin), x_(x), y_(y) {}

  void cross(std::size_t first, std::size_t end) {
    previousY_ = lastYOffTheLine(first, end);
    for (std::size_t i = first; i + 1 < end; ++i)
      if (crosses(i)) isOdd_ = !isOdd_;
  }

  bool isOdd() const { return isOdd_; }

 private:
  // Where the boundary comes from when it enters the polygon's first vertex.
  double lastYOffTheLine(std::size_t first, std::size_t end) const {
    while (end > first && y_[end - 1] == py_) --end;
    return end > first ? y_[end - 1] : py_;
  }

  // The edge that starts at this vertex. A vertex on the line of the ray is counted with the edge
  // that leaves the line, and only where the boundary passes through the line.
  bool crosses(std::size_t from) {
    const std::size_t to = from + 1;
    if (y_[from] == y_[to]) return false;
    if (y_[to] == py_) {
      previousY_ = y_[from];
      return false;
    }
    if (y_[from] == py_ && x_[from] <= px_) return (previousY_ - py_) * (y_[to] - py_) < 0.0;
    return intersectLine(px_, py_, endX_, py_, x_[from], y_[from], x_[to], y_[to]);
  }

  double px_;
  double py_;
  double endX_;
  std::span<const double> x_;
  std::span<const double> y_;
  double previousY_ = 0.0;
  bool isOdd_ = false;
};

}  // namespace

Outcome<bool> insidePolygon(double px, double py, std::span<const double> x,
                            std::span<const double> y, double minX,
                            std::span<const std::int32_t> ends, int place) {
  Ray ray(px, py, minX, x, y);
  const bool isConsistent = forEachPolygon(
      x.size(), ends, [&](std::size_t first, std::size_t end) { ray.cross(first, end); });
  if (isConsistent) return ray.isOdd();
  return Report{.line1 = "Invalid number of polygons in region sent to inside_polygon routine [" +
                         std::to_string(place) + "] - contact " + std::string(kSupportAddress)};
}

}  // namespace nivaro
