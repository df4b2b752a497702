// A case, played from its first section to its last: files are there, a host calls, and what was meant is
// compared with what came. tests/cases/README.md tells what the sections mean.
#pragma once

#include <string>
#include <vector>

#include "fuzz/fuzz_input.hpp"

namespace nivaro::test {

enum class CaseKind {
  Meant,    // as somebody wrote it: what it expects is compared
  Mutated,  // as a fuzzer made it of others: only promises are held, and no file outside is touched
};

// A text for each section that expects something else; a broken promise ends the process.
std::vector<std::string> play(const fuzz::Archive& sections, const fuzz::Folder& folder,
                              CaseKind kind);

}  // namespace nivaro::test
