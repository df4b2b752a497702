// The morphology step written down as plainly as it is described: eight capacities per cell, no
// buffers, nothing shared with the library but the views and the capacity function. It judges the
// library to 1e-9, and bit by bit where no transport is computed.
#pragma once

#include "morphology/fields.hpp"

namespace nivaro::reference {

void step(const StepInput& in, const Area& area);

}  // namespace nivaro::reference
