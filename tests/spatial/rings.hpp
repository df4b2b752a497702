// Polygon sets on an integer grid, where ties abound, and which points lie in them in exact arithmetic.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "spatial/random_integers.hpp"

namespace nivaro::test {

struct IntegerPoint {
  int x, y;
};
using Ring = std::vector<IntegerPoint>;
using Rings = std::vector<Ring>;

inline Rings randomRings(RandomIntegers& random, int low, int high, bool closed) {
  Rings rings(static_cast<std::size_t>(random.between(1, 4)));
  for (Ring& ring : rings) {
    for (int k = random.between(1, 7); k > 0; --k)
      ring.push_back({random.between(low, high), random.between(low, high)});
    if (closed) ring.push_back(ring.front());
  }
  return rings;
}

// The rings as the module keeps them: a closing slot behind each.
struct Vertices {
  std::vector<double> x, y;
  std::vector<std::int32_t> ends;

  explicit Vertices(const Rings& rings) {
    for (const Ring& ring : rings) {
      for (const IntegerPoint& p : ring) add(p);
      ends.push_back(static_cast<std::int32_t>(x.size()));
      add(ring.front());
    }
  }

  void add(const IntegerPoint& p) {
    x.push_back(p.x);
    y.push_back(p.y);
  }
};

// An odd number of edges, lower ends left out, crosses the point's row to its left.
inline bool isInside(const Rings& rings, double px, double py) {
  int crossings = 0;
  for (const Ring& ring : rings)
    for (std::size_t k = 1; k < ring.size(); ++k) {
      IntegerPoint low = ring[k - 1], high = ring[k];
      if (low.y > high.y) std::swap(low, high);
      if (!(low.y < py && py <= high.y)) continue;
      const int rise = high.y - low.y;
      if (low.x * rise + (py - low.y) * (high.x - low.x) < px * rise) ++crossings;
    }
  return crossings % 2 == 1;
}

}  // namespace nivaro::test
