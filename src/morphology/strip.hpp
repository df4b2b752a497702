// Working memory of the sweeps: a strip of neighbouring lines that are walked together, one line in
// each lane. Element [position][lane] of an array belongs to a cell or, one position more, to the side
// below it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nivaro {

// Along the second index wide strips make long pieces of each row, along the first narrow ones are
// quicker to turn.
constexpr std::ptrdiff_t kSecondStripLines = 64;
constexpr std::ptrdiff_t kFirstStripLines = 16;

// Bits of a cell's flags.
constexpr std::int64_t kActiveCell = 1;  // carries sand and is wet
constexpr std::int64_t kAtBedLimit = 2;
// Bits of what the sweeps did in it.
constexpr std::int64_t kForwardErosion = 1;
constexpr std::int64_t kReverseErosion = 2;
constexpr std::int64_t kSettled = 4;

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

struct StripArrays {
  SideArrays sides;
  BedLoadArrays bedLoad;
  std::int64_t* flags = nullptr;
  double* forward = nullptr;  // net suspended transport that a sweep leaves in the cell
  double* reverse = nullptr;
  double* concentration = nullptr;
  double* adaptation = nullptr;
  std::int64_t* outcome = nullptr;
  unsigned char* rowActive = nullptr;  // by position: whether any of its cells is active
};

}  // namespace nivaro
