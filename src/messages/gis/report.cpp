#include "messages/gis/report.hpp"

#include <cstddef>

#include "text/blank_padded.hpp"

namespace nivaro::gis {

namespace {

constexpr std::size_t kLineLength = 1000;

}  // namespace

LibraryReport::LibraryReport(Console& console, FileUnits& files, Termination& termination)
    : console_(console), files_(files), termination_(termination) {}

void LibraryReport::print(int blankLines, std::initializer_list<std::string_view> lines) {
  for (int i = 0; i < blankLines; ++i) line("");
  for (const std::string_view text : lines)
    if (!trimmed(text).empty()) line(trimmed(text.substr(0, kLineLength)));
}

void LibraryReport::stop(std::initializer_list<std::string_view> lines) {
  print(1, lines);
  termination_.exits();
}

void LibraryReport::stop(const Failure& failure) {
  stop({failure.line1, failure.line2});
}

void LibraryReport::line(std::string_view text) {
  console_.line(text);
  if (logUnit_ < 1) return;
  if (Unit* log = files_.find(logUnit_)) log->writeLogLine(text);
}

}  // namespace nivaro::gis
