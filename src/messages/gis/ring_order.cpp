#include "messages/gis/ring_order.hpp"

#include <algorithm>
#include <cstddef>

#include "messages/gis/bounding_box.hpp"

namespace nivaro::gis {

namespace {

// Twice the area of the triangle a, b, point; positive when the point lies left of a to b.
double side(const Vertex& a, const Vertex& b, const Vertex& point) {
  return (b.x - a.x) * (point.y - a.y) - (point.x - a.x) * (b.y - a.y);
}

bool isOnSegment(const Vertex& a, const Vertex& b, const Vertex& point) {
  return side(a, b, point) == 0.0 && std::min(a.x, b.x) <= point.x &&
         point.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= point.y &&
         point.y <= std::max(a.y, b.y);
}

// 1 inside, -1 outside, 0 on the ring itself.
int insideVote(const Vertex& point, Part ring) {
  bool inside = false;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Vertex& a = ring[i];
    const Vertex& b = ring[(i + 1) % ring.size()];
    if (isOnSegment(a, b, point)) return 0;
    const bool crossesHeight = (a.y > point.y) != (b.y > point.y);
    if (crossesHeight && (side(a, b, point) > 0.0) == (b.y > a.y)) inside = !inside;
  }
  return inside ? 1 : -1;
}

// Rings do not cross, so one vertex would tell, unless it touches the other ring: a few vertices
// and edge middles vote. A few, since rings may have tens of thousands.
bool isWithin(Part inner, Part outer) {
  constexpr std::size_t kVoters = 16;
  const std::size_t stride = std::max<std::size_t>(1, inner.size() / kVoters);
  int votes = 0;
  for (std::size_t i = 0; i < inner.size(); i += stride) {
    const Vertex& next = inner[(i + 1) % inner.size()];
    votes += insideVote(inner[i], outer);
    votes += insideVote({(inner[i].x + next.x) / 2.0, (inner[i].y + next.y) / 2.0}, outer);
  }
  return votes > 0;
}

}  // namespace

double signedArea(Part ring) {
  if (ring.empty()) return 0.0;
  // About the first vertex: map coordinates are large, and their products would lose small rings.
  double twice = 0.0;
  for (std::size_t i = 1; i + 1 < ring.size(); ++i) twice += side(ring[0], ring[i], ring[i + 1]);
  return twice / 2.0;
}

std::vector<std::vector<Vertex>> orderedRings(const std::vector<Part>& rings) {
  std::vector<BoundingBox> boxes;
  boxes.reserve(rings.size());
  for (const Part& ring : rings) boxes.push_back(boundingBox(ring));

  std::vector<std::vector<Vertex>> ordered;
  for (std::size_t i = 0; i < rings.size(); ++i) {
    bool isHole = false;
    for (std::size_t j = 0; j < rings.size(); ++j)
      if (j != i && boxes[j].holds(boxes[i]) && isWithin(rings[i], rings[j])) isHole = !isHole;

    ordered.emplace_back(rings[i].begin(), rings[i].end());
    const double area = signedArea(rings[i]);
    const bool wrongWay = isHole ? area < 0.0 : area > 0.0;
    if (wrongWay) std::reverse(ordered.back().begin(), ordered.back().end());
  }
  return ordered;
}

}  // namespace nivaro::gis
