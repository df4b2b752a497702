// How far a run has come: one line that rewrites itself on a terminal, a line every tenth of the
// run elsewhere.
#pragma once

#include <chrono>
#include <ostream>
#include <string>

namespace host {

class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  Progress(std::ostream& out, bool isTerminal, double totalHours, Clock::time_point start);

  void show(double hours, Clock::time_point now);
  // Ends the rewriting line, so that what follows begins on a line of its own.
  void finish();

 private:
  std::ostream& out_;
  bool isTerminal_;
  double totalHours_;
  Clock::time_point start_;
  Clock::time_point shown_;
  int tenth_ = -1;
  bool lineIsOpen_ = false;
};

// Seconds as a person reads them: "8 s", "3 min 20 s", "2 h 5 min".
std::string durationText(double seconds);

}  // namespace host
