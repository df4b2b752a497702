// How the layer library speaks and stops: it lies below the message writer, so it prints its own
// lines, to the screen and to a log of its own choosing.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "files/file_units.hpp"
#include "files/termination.hpp"
#include "platform/console.hpp"

namespace nivaro::gis {

// What went wrong, as the lines to print; none when all went well. The files of a layer return it,
// the layer table prints it and ends the run.
struct Failure {
  std::string line1;
  std::string line2 = "";
};
using MaybeFailure = std::optional<Failure>;

class LibraryReport {
 public:
  LibraryReport(Console& console, FileUnits& files, Termination& termination);

  // The unit of the library's log; none while it is 0 or less.
  void setLogUnit(std::int32_t unit) { logUnit_ = unit; }

  // Empty lines, then the lines that are not blank, each cut to 1000 characters.
  void print(int blankLines, std::initializer_list<std::string_view> lines);

  // Prints the lines behind one empty line and ends the run.
  [[noreturn]] void stop(std::initializer_list<std::string_view> lines);
  [[noreturn]] void stop(const Failure& failure);

 private:
  void line(std::string_view text);

  Console& console_;
  FileUnits& files_;
  Termination& termination_;
  std::int32_t logUnit_ = 0;
};

}  // namespace nivaro::gis
