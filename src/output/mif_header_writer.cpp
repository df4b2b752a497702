#include "output/mif_header_writer.hpp"

#include <limits>
#include <span>
#include <string>

#include "files/pause.hpp"
#include "platform/fixed_field.hpp"
#include "platform/host_path.hpp"
#include "platform/list_input.hpp"
#include "platform/native_file.hpp"
#include "text/blank_padded.hpp"
#include "text/keyword.hpp"
#include "text/transform.hpp"

namespace nivaro {

namespace {

constexpr std::string_view kFixedLines[] = {"Version 300", R"(Charset "WindowsLatin1")",
                                            R"(Delimiter ",")"};

// The pair of numbers before the next ")"; `rest` is then what follows that.
bool readPair(std::string_view& rest, double& x, double& y) {
  const std::size_t end = rest.find(')');
  constexpr double kUnread = std::numeric_limits<double>::quiet_NaN();
  double a = kUnread;  // what an empty item leaves
  double b = kUnread;
  if (ListInput(rest.substr(0, end)).readAll(a, b) != ReadStatus::Ok || a != a || b != b)
    return false;
  x = a;
  y = b;
  rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  return true;
}

// False for bounds that cannot be read. A line without bounds is fine.
bool findBounds(std::string_view line, Bounds& bounds) {
  std::string_view rest;
  if (!flagExistsRet(line, "Bounds (", rest)) return true;
  if (!readPair(rest, bounds.xMin, bounds.yMin)) return false;
  const std::size_t second = rest.find('(');
  if (second == std::string_view::npos) return false;
  rest.remove_prefix(second + 1);
  return readPair(rest, bounds.xMax, bounds.yMax);
}

}  // namespace

std::string planeHeader(const Bounds& bounds) {
  const auto number = [](double value) { return fixedField(value, 15, 3); };
  std::string header;
  for (const std::string_view line : kFixedLines) header.append(line).append(lineEnd());
  return header + "CoordSys NonEarth Units \"m\" Bounds (" + number(bounds.xMin) + "," +
         number(bounds.yMin) + ") (" + number(bounds.xMax) + "," + number(bounds.yMax) + ")" +
         std::string(lineEnd());
}

MifHeaderWriter::MifHeaderWriter(FileUnits& files, Diagnostics& diagnostics,
                                 Termination& termination)
    : files_(files), diagnostics_(diagnostics), termination_(termination) {}

bool MifHeaderWriter::miWriteMifHeader(Unit& mif, const MifHeaderSource& source,
                                       std::int32_t logUnit, Bounds& bounds) {
  std::int32_t& log = diagnostics_.messages().record().log_unit;
  const std::int32_t previousLog = log;
  log = logUnit;

  bool isPlane = false;
  std::string projection(trimmed(source.projectionLine));
  if (std::string text = projection; !blank(text)) {
    for (const std::string_view line : kFixedLines) mif.writeRecord(line);
    mif.writeRecord(projection);
    readBounds(projection, bounds);
  } else if (!trimmed(source.headerFile).empty() && hostPath(source.headerFile).exists) {
    copyHeader(mif, source.headerFile, bounds);
  } else {
    writePlane(mif, source.headerFile, bounds);
    isPlane = true;
  }
  log = previousLog;
  return isPlane;
}

void MifHeaderWriter::copyHeader(Unit& mif, std::string_view headerFile, Bounds& bounds) {
  std::int32_t number = files_.openFile(headerFile, "I ", 1);
  std::string_view line;
  while (files_.find(number)->readRecord(line) == ReadStatus::Ok && !flagExists(line, "Columns")) {
    mif.writeRecord(trimmed(line));
    readBounds(line, bounds);
  }
  files_.closeFile(number);
}

void MifHeaderWriter::writePlane(Unit& mif, std::string_view headerFile, const Bounds& bounds) {
  diagnostics_.deliver(
      {.line1 = "WARNING 0307 - No MI Projection or mif header file " +
                std::string(trimmed(headerFile)) + " found.",
       .line2 = "               Non-Earth Coordinates will be used.  [miWriteMifHeader]"});
  pauseRun(diagnostics_.console());

  const std::string header = planeHeader(bounds);
  mif.writeBytes(std::as_bytes(std::span(header)));
}

void MifHeaderWriter::readBounds(std::string_view line, Bounds& bounds) {
  if (findBounds(line, bounds)) return;
  constexpr std::string_view text = "ERROR 0311 - Could not read XY Bounds in MI Projection Line.";
  diagnostics_.console().line(text);
  diagnostics_.messages().toLog(text);
  termination_.exits();
}

}  // namespace nivaro
