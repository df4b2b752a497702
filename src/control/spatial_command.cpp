#include "control/spatial_command.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

#include "files/path.hpp"
#include "platform/list_input.hpp"
#include "platform/real_to_integer.hpp"
#include "spatial/table_rows.hpp"
#include "text/blank_padded.hpp"
#include "text/number_text.hpp"

namespace nivaro {

namespace {

AssignmentTarget assignmentTarget(const SpatialCommand& command, const SedimentFields& fields) {
  AssignmentTarget target{.field = fields.bedCode, .regionsAdd = command.regionsAdd};
  if (command.target.real != nullptr) target.field = fields.*command.target.real;
  return target;
}

// Field element along one index; wide enough for any two indices of the host.
std::int64_t element(std::int32_t index, std::int32_t offset) {
  return std::int64_t{index} - offset + 2;
}

bool isWithin(std::int64_t element, std::int32_t bound, int size) {
  return element >= 2 && element <= bound && element <= size;
}

}  // namespace

SpatialCommands::SpatialCommands(FileUnits& files, Diagnostics& diagnostics, MifLayerOpener& opener,
                                 MifReader& layers)
    : files_(files),
      diagnostics_(diagnostics),
      opener_(opener),
      layers_(layers),
      assignment_(diagnostics, layers) {}

void SpatialCommands::run(const SpatialCommand& command, const SedimentFields& fields,
                          const GridDescription& grid, std::int32_t logUnit) {
  switch (command.source) {
    case SpatialSource::Set:
      return set(command, fields, logUnit);
    case SpatialSource::ReadMi:
      return readLayer(command, fields, grid, logUnit);
    case SpatialSource::ReadMid:
      return readCellTable(command, fields, grid, logUnit);
  }
}

void SpatialCommands::set(const SpatialCommand& command, const SedimentFields& fields,
                          std::int32_t logUnit) {
  double value = std::numeric_limits<double>::quiet_NaN();  // what an empty item leaves
  const ReadStatus status = readListItem(command.value, value);
  if (status == ReadStatus::End)
    diagnostics_.fatal({.line1 = "ERROR - Reading value of \"Set\" command",
                        .line2 = std::string(trimmed(command.controlLine)),
                        .detail1 = command.place});
  const bool isInteger = command.target.real == nullptr;
  if (status == ReadStatus::Error || !std::isfinite(value) ||
      (isInteger && !isInIntegerRange(value)))
    diagnostics_.fatal({.line1 = "ERROR - Reading following line in control file",
                        .line2 = std::string(trimmed(command.controlLine)),
                        .detail1 = command.place});

  announce(std::string(command.target.name) + " globally set to " + areal(value), logUnit);
  if (command.target.real != nullptr)
    std::ranges::fill((fields.*command.target.real).cells(), value);
  else
    std::ranges::fill(fields.bedCode.cells(), truncated(value));
}

void SpatialCommands::readLayer(const SpatialCommand& command, const SedimentFields& fields,
                                const GridDescription& grid, std::int32_t logUnit) {
  const std::string name = addFolder(command.folder, fileNamePath(command.value));
  LayerUnits units = opener_.openInput(name, LayerFiles::Pair, logUnit);
  Unit& mif = *files_.find(units.mif);
  Unit& mid = *files_.find(units.data);
  if (!layers_.findObjectSection(mif))
    diagnostics_.fatal({.line1 = "ERROR - Reading input data - qvmor_rdinpf22",
                        .line2 = std::string(trimmed(command.controlLine)),
                        .detail1 = command.place,
                        .detail2 = "File \"" + mif.path() + "\""});

  announce(std::string(command.target.name) + " spatially set using " + name, logUnit);
  const AssignmentTarget target = assignmentTarget(command, fields);
  while (layers_.objectsLeft(mif, mid)) {
    if (grid.isUsed)
      assignment_.processNextObject(mif, mid, grid.frame, target);
    else
      passObject(mif, mid);
  }
  opener_.close(units);
}

// What is wrong with a layer is told even where nothing is set.
void SpatialCommands::passObject(Unit& mif, Unit& mid) {
  const MifObject* object = layers_.nextObject(mif, mid);
  if (object == nullptr) return;
  for (std::int32_t section = 0; section < object->sections; ++section) layers_.readSection(mif);
}

void SpatialCommands::readCellTable(const SpatialCommand& command, const SedimentFields& fields,
                                    const GridDescription& grid, std::int32_t logUnit) {
  const std::string name = addFolder(command.folder, command.value);
  LayerUnits units = opener_.openInput(name, LayerFiles::Single, logUnit);
  Unit& table = *files_.find(units.data);

  announce(std::string(command.target.name) + " spatially set using " + name, logUnit);
  if (command.target.real != nullptr)
    assignRows(table, fields.*command.target.real, grid, [](double value) { return value; });
  else
    assignRows(table, fields.bedCode, grid, truncated);
  opener_.close(units);
}

template <typename T, typename ToCell>
void SpatialCommands::assignRows(Unit& table, Grid<T> field, const GridDescription& grid,
                                 ToCell toCell) {
  std::int64_t outside = 0;
  std::int64_t firstOutside = 0;
  CellRow row;
  for (std::int64_t number = 1; nextRow(table, number, row); ++number) {
    const std::int64_t i = element(row.first, grid.firstRowOffset);
    const std::int64_t j = element(row.second, grid.secondRowOffset);
    if (!isWithin(i, grid.firstRowBound, field.n()) ||
        !isWithin(j, grid.secondRowBound, field.m())) {
      if (++outside == 1) firstOutside = number;
      continue;
    }
    if (std::is_integral_v<T> && !isInIntegerRange(row.value))
      failRow(table, number, "Its value is beyond the integers of 4 bytes: " + areal8(row.value));
    field(static_cast<int>(i), static_cast<int>(j)) = toCell(row.value);
  }
  if (outside == 0 || !grid.isUsed) return;
  diagnostics_.deliver(
      {.line1 = "WARNING - Some/all values from last Read MID command are outside the 2D grid.",
       .line2 = ainteger(outside) + " of the rows, the first of them row " +
                ainteger(firstOutside) + ", of file \"" + table.path() + "\"",
       .blankLines = 0});
}

// False at the end of the table. A row that cannot be read ends the run.
bool SpatialCommands::nextRow(Unit& table, std::int64_t number, CellRow& row) {
  std::string_view text;
  const ReadStatus status = readRow(table, text);
  if (status == ReadStatus::End) return false;
  if (status == ReadStatus::Error) failRow(table, number, "It cannot be read.");
  if (!readCellRow(text, row))
    failRow(table, number, "Not two integers and a number: " + std::string(text));
  return true;
}

void SpatialCommands::failRow(const Unit& table, std::int64_t number, const std::string& reason) {
  diagnostics_.fatal({.line1 = "ERROR - Reading line " + ainteger(number) + " of .mid file",
                      .line2 = "File \"" + table.path() + "\"",
                      .detail1 = reason});
}

// An empty line and the text, on the screen and in the log.
void SpatialCommands::announce(const std::string& text, std::int32_t logUnit) {
  for (const std::string& line : {std::string(), text}) {
    diagnostics_.console().line(line);
    diagnostics_.messages().toUnit(logUnit, line);
  }
}

}  // namespace nivaro
