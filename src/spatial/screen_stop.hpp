// Ends of the run whose text goes to the screen only: not to the log, not counted as a message.
#pragma once

#include <utility>

#include "messages/diagnostics.hpp"
#include "text/report.hpp"

namespace nivaro {

[[noreturn]] inline void stopOnScreen(Diagnostics& diagnostics, const Report& report) {
  for (int i = 0; i < report.blankLines; ++i) diagnostics.console().line("");
  diagnostics.fatalOnScreen(report.line1);
}

// The value, or the end of the run with the report that came instead.
template <typename T>
T valueOrStop(Diagnostics& diagnostics, Outcome<T> outcome) {
  if (!outcome) stopOnScreen(diagnostics, outcome.report());
  return std::move(outcome.value());
}

}  // namespace nivaro
