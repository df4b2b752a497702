// The box around vertices.
#pragma once

#include <algorithm>
#include <limits>

#include "messages/gis/object.hpp"

namespace nivaro::gis {

struct BoundingBox {
  Vertex low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  Vertex high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

  bool isEmpty() const { return low.x > high.x; }

  void extend(Part vertices) {
    for (const Vertex& vertex : vertices) {
      low = {std::min(low.x, vertex.x), std::min(low.y, vertex.y)};
      high = {std::max(high.x, vertex.x), std::max(high.y, vertex.y)};
    }
  }

  bool holds(const BoundingBox& other) const {
    return low.x <= other.low.x && low.y <= other.low.y && high.x >= other.high.x &&
           high.y >= other.high.y;
  }
};

inline BoundingBox boundingBox(Part vertices) {
  BoundingBox box;
  box.extend(vertices);
  return box;
}

}  // namespace nivaro::gis
