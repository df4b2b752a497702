#include "plain_form.hpp"

#include "morphology/plain_step.hpp"

namespace nivaro::bench {

void plainForm(const StepInput& in, const Area& area) {
  plainStep(in, area);
}

}  // namespace nivaro::bench
