// Working memory of the sweeps: a strip of neighbouring lines that are walked together, one line in
// each lane. Element [position][lane] of an array belongs to a cell or, one position more, to the side
// below it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nivaro {

// Along the second index strips are as wide as a page of memory: narrower ones would meet a page of every
// array in every row for a few cells. Along the first index narrow ones stay in the near caches.
constexpr std::ptrdiff_t kSecondStripLines = 512;
constexpr std::ptrdiff_t kFirstStripLines = 16;

// Lines along the first index are turned into lanes in pieces of this length, which stay in the near
// caches.
constexpr std::ptrdiff_t kPiece = 64;                 // a block of cells
constexpr std::ptrdiff_t kPieceMemory = kPiece + 16;  // and what lanes may reach beyond it

// Bits of a cell's flags.
constexpr std::int64_t kActiveCell = 1;  // carries sand and is wet
constexpr std::int64_t kAtBedLimit = 2;
constexpr std::int64_t kPlainVoids = 4;  // where no sand comes or goes the bed stays
// Bits of what a sweep did in it.
constexpr std::int64_t kErosion = 1;
constexpr std::int64_t kSettled = 2;

// Transports and discharges at sides as components along the index. A sweep looks at the side that it
// comes from and at the one that it goes to; velocity centring changes the latter. Without centring
// the arrays of the two are the same.
struct SideArrays {
  double* suspendedAbove = nullptr;         // qs as the cell above the side sees it
  double* suspendedBelow = nullptr;         // as the cell below it does
  double* discharge = nullptr;              // un h, m2/s
  double* centredSuspendedAbove = nullptr;  // centred on the cell above: where reverse sweeps go to
  double* centredDischargeAbove = nullptr;
  double* centredSuspendedBelow = nullptr;  // on the cell below: where forward sweeps go to
  double* centredDischargeBelow = nullptr;
};

struct BedLoadArrays {
  double* above = nullptr;  // qb as the cell above the side sees it
  double* below = nullptr;  // as the cell below it does, centred on that cell
};

// What a sweep leaves in the cells of a few positions.
struct Exchange {
  double* net = nullptr;            // suspended transport that stays in the cell
  double* concentration = nullptr;  // where it settled
  double* adaptation = nullptr;
  std::int64_t* outcome = nullptr;
};

// Rows of a piece of several lines: row `line` begins at element line * kPieceMemory.
struct PieceMemory {
  static constexpr std::ptrdiff_t kLength = kFirstStripLines * kPieceMemory;
  alignas(64) double side[7][kLength];
  alignas(64) double bedLoadAbove[kLength];
  alignas(64) double bedLoadBelow[kLength];
  alignas(64) std::int64_t flags[kLength];
  alignas(64) std::int64_t outcomeRows[kLength];

  // Of the cells of the piece as lanes.
  static constexpr std::ptrdiff_t kCells = kFirstStripLines * kPiece;
  alignas(64) double net[kCells];
  alignas(64) double concentration[kCells];
  alignas(64) double adaptation[kCells];
  alignas(64) std::int64_t outcome[kCells];
};

struct StripArrays {
  SideArrays sides;
  std::int64_t* flags = nullptr;
  // Whether the reverse sweep has anything to do: by element over the lanes of a vector, found out by
  // the forward sweep, and along the first index by the first position of a piece.
  unsigned char* descends = nullptr;
  unsigned char* pieceDescends = nullptr;
  PieceMemory* piece = nullptr;
  std::ptrdiff_t stride = 0;  // lines in a row of the arrays
};

}  // namespace nivaro
