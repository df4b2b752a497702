// Suspended sand carried cell to cell along a line, and the bed change that this makes. The case
// tables are those of docs/numerics.md.
#pragma once

#include "morphology/fields.hpp"
#include "morphology/line_buffers.hpp"

namespace nivaro {

// Upward along the index, with the bed load of both directions.
void carryForward(const StepInput& in, const SideBuffer& lower, const SideBuffer& upper,
                  LineBuffers& line);

// Downward, suspended sand only. Takes no part where flow is upward, converging or diverging: the
// forward sweep has done that.
void carryReverse(const StepInput& in, const SideBuffer& lower, const SideBuffer& upper,
                  LineBuffers& line);

}  // namespace nivaro
