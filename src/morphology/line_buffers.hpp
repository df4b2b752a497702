// Working memory of the sweeps along one line: one array per quantity, so that each stage runs over
// contiguous numbers whatever the direction of the line.
#pragma once

#include <cstddef>
#include <vector>

namespace nivaro {

// One side of every buffered cell. Transports are components along the index, kg/(m s).
struct SideBuffer {
  std::vector<double> depth;      // m
  std::vector<double> normal;     // velocity, m/s
  std::vector<double> speed;      // m/s
  std::vector<double> suspended;  // qs
  std::vector<double> bedLoad;    // qb

  void resize(std::size_t size) {
    for (auto* values : {&depth, &normal, &speed, &suspended, &bedLoad}) values->resize(size);
  }
};

// Only the active wet cells of a line are kept, in the order of their position: the others neither
// change nor touch what is carried past them.
struct LineBuffers {
  std::size_t count = 0;
  std::vector<int> position;  // on the line
  std::vector<double> d50;
  std::vector<double> d90;
  std::vector<double> inSituVoids;
  std::vector<double> depositionVoids;
  std::vector<unsigned char> atBedLimit;
  std::vector<double> change;         // bed level change so far, m
  std::vector<double> concentration;  // of the latest deposition
  std::vector<double> adaptation;     // of the latest deposition

  SideBuffer lower;
  SideBuffer upper;
  SideBuffer centredLower;  // used when velocity centring is on: downstream in the reverse sweep
  SideBuffer centredUpper;  // the same: downstream in the forward sweep

  explicit LineBuffers(std::size_t longest) : position(longest), atBedLimit(longest) {
    for (auto* values :
         {&d50, &d90, &inSituVoids, &depositionVoids, &change, &concentration, &adaptation})
      values->resize(longest);
    for (auto* side : {&lower, &upper, &centredLower, &centredUpper}) side->resize(longest);
  }
};

}  // namespace nivaro
