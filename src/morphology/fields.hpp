// The arrays and settings that one morphology call works on: views of the host's memory. Where each
// element lies on the staggered grid is drawn in docs/numerics.md.
#pragma once

#include <cstdint>

#include "morphology/parameters.hpp"
#include "platform/grid.hpp"
#include "platform/logical.hpp"

namespace nivaro {

// Flow as the host computed it. Velocities are positive toward the increasing index, in m/s.
struct HostFlow {
  Grid<const Logical> wet;        // cell holds water
  Grid<const Logical> flow;       // cell lets water through a side whose other cell is dry
  Grid<const double> waterLevel;  // cell centre, m
  Grid<const double> v2;          // through the side between (i, j) and (i, j+1)
  Grid<const double> v1;          // through the side between (i, j) and (i+1, j)
};

// Bed of the host as depth below datum, in m, positive downward: the bed elevation is the negative.
struct HostBed {
  Grid<double> zpts;  // corner shared by (i, j), (i+1, j), (i, j+1) and (i+1, j+1)
  Grid<double> zc;    // cell centre
  Grid<double> z2;    // side between (i, j) and (i, j+1)
  Grid<double> z1;    // side between (i, j) and (i+1, j)
};

// The module's fields of one domain, one value per cell, in the order in which a step receives
// them. Bed changes are level changes in m, positive upward.
struct SedimentFields {
  Grid<double> previousChange;   // P: applied in the previous step, for the time centring
  Grid<double> appliedChange;    // A: limited change during a step, slumping change after it
  Grid<double> cellChange;       // C: of the latest step
  Grid<double> concentration;    // of the latest deposition computation
  Grid<double> adaptation;       // coefficient of the latest deposition computation, 1/m
  Grid<double> spare;            // set to 0 by every step
  Grid<double> d50;              // median grain size, m
  Grid<double> d90;              // m
  Grid<double> inSituVoids;      // pore fraction of the bed in place, for erosion
  Grid<double> depositionVoids;  // pore fraction of fresh deposit
  Grid<double> bedLimit;         // lowest elevation to which the bed may erode, m
  Grid<std::int32_t> bedCode;    // B: odd takes part in transport, above 0 in changes of the bed
};

struct StepSettings {
  double cellSize = 0.0;             // m
  double slumpDistanceSecond = 0.0;  // between neighbours along the second index, m
  double slumpDistanceFirst = 0.0;   // between neighbours along the first index, m
  double timeStep = 0.0;             // s
  bool raiseSideDepth = false;       // hold the depth at a side above a share of the higher level's
  double raiseFactor = 0.0;          // that share
};

// All that a call reads and writes. Every grid has the same n x m.
struct StepInput {
  HostFlow flow;
  HostBed bed;
  SedimentFields fields;
  StepSettings settings;
  MorphologyParameters parameters;
};

}  // namespace nivaro
