// The plain form of the step as fast as the compiler makes it: for this machine, with the C library's
// functions.
#pragma once

#include "morphology/fields.hpp"

namespace nivaro::bench {

[[gnu::visibility("default")]] void plainForm(const StepInput& in, const Area& area);

}  // namespace nivaro::bench
