#include "progress.hpp"

#include <algorithm>
#include <cmath>

#include "number_format.hpp"

namespace host {

namespace {

constexpr std::chrono::milliseconds kRefresh{200};

double secondsBetween(Progress::Clock::time_point a, Progress::Clock::time_point b) {
  return std::chrono::duration<double>(b - a).count();
}

std::string padded(const std::string& text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

}  // namespace

std::string durationText(double seconds) {
  const auto whole = static_cast<long>(std::ceil(seconds));
  if (whole < 60) return std::to_string(whole) + " s";
  if (whole < 3600) return std::to_string(whole / 60) + " min " + std::to_string(whole % 60) + " s";
  return std::to_string(whole / 3600) + " h " + std::to_string(whole % 3600 / 60) + " min";
}

Progress::Progress(std::ostream& out, bool isTerminal, double totalHours, Clock::time_point start)
    : out_(out), isTerminal_(isTerminal), totalHours_(totalHours), start_(start), shown_(start) {}

void Progress::show(double hours, Clock::time_point now) {
  const double share = totalHours_ > 0 ? std::min(hours / totalHours_, 1.0) : 1.0;
  const int tenth = static_cast<int>(std::floor(share * 10 + 1e-9));
  const bool isDue =
      isTerminal_ ? now - shown_ >= kRefresh || tenth_ < 0 || share >= 1 : tenth > tenth_;
  if (!isDue) return;
  shown_ = now;
  tenth_ = tenth;

  const double elapsed = secondsBetween(start_, now);
  std::string line = padded(fixed(100 * share, 0), 4) + " %   " + fixed(hours, 2) + " of " +
                     fixed(totalHours_, 2) + " h";
  if (share >= 1) {
    line += "   took " + durationText(elapsed);
  } else if (share > 0 && elapsed > 0) {
    line += "   about " + durationText(elapsed * (1 - share) / share) + " left";
  }
  if (isTerminal_) {
    out_ << '\r' << line << "\033[K" << std::flush;
    lineIsOpen_ = true;
  } else {
    out_ << line << std::endl;
  }
}

void Progress::finish() {
  if (lineIsOpen_) out_ << std::endl;
  lineIsOpen_ = false;
}

}  // namespace host
