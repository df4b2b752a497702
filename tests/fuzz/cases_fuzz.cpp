// The cases of tests/cases, changed at random: what they expect is not compared, but promises hold.
#include "runner/case_run.hpp"

namespace nivaro::fuzz {

void tryInput(const Archive& input, const Folder& folder) {
  test::play(input, folder, test::CaseKind::Mutated);
}

}  // namespace nivaro::fuzz
