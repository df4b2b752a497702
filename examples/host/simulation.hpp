// One run of a case: flow and module in turn, results at the output times.
#pragma once

#include <optional>
#include <ostream>
#include <stdexcept>

#include "case_file.hpp"
#include "module_library.hpp"
#include "morphology_coupling.hpp"
#include "profile.hpp"
#include "result_files.hpp"

namespace host {

// The flow or the bed is no number any more.
struct UnstableError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct RunReport {
  SandBalance sand;
  ModuleEffort effort;
  double wallSeconds = 0;
  double waterError = 0;   // m3 that the water balance misses
  double waterPassed = 0;  // m3 that crossed the edges, as a measure for it
  std::optional<Comparison> comparison;
  int moduleErrors = 0, moduleWarnings = 0, moduleChecks = 0;
};

RunReport runCase(const Case& model, const ModuleLibrary& module, const ResultFolder& results,
                  std::ostream& out, bool isTerminal);

void printReport(std::ostream& out, const RunReport& report);
std::string summaryTable(const RunReport& report);

}  // namespace host
