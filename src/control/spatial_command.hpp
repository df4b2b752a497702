// The commands that give a spatially varying parameter its values: Set (one value for all cells),
// Read MI (a GIS layer) and Read MID (a table of cells).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "control/cell_table.hpp"
#include "control/spatial_target.hpp"
#include "files/file_units.hpp"
#include "messages/diagnostics.hpp"
#include "messages/mif_layer_opener.hpp"
#include "spatial/grid_assignment.hpp"
#include "spatial/grid_frame.hpp"
#include "spatial/mif_reader.hpp"

namespace nivaro {

enum class SpatialSource { Set, ReadMi, ReadMid };

struct SpatialCommand {
  SpatialSource source = SpatialSource::Set;
  const SpatialTarget& target;
  bool regionsAdd = false;       // of a layer, to what the cells hold
  std::string_view value;        // behind "=="
  std::string_view folder;       // that a file named by the value lies in
  std::string_view controlLine;  // for messages
  std::string place;             // file and line of the command, for messages
};

// The host's description of a domain's grid.
struct GridDescription {
  GridFrame frame;                 // of layers
  std::int32_t firstRowBound = 0;  // the last field elements that rows of cell tables may set
  std::int32_t secondRowBound = 0;
  std::int32_t firstRowOffset = 0;  // index of a row that means field element 2
  std::int32_t secondRowOffset = 0;
  bool isUsed = true;  // false for a domain without morphology, which has no cells to set
};

class SpatialCommands {
 public:
  SpatialCommands(FileUnits& files, Diagnostics& diagnostics, MifLayerOpener& opener,
                  MifReader& layers);

  // Carries the command out on the fields of a domain. Whatever goes wrong ends the run; no cell
  // outside the fields is written, whatever the grid's bounds say.
  void run(const SpatialCommand& command, const SedimentFields& fields, const GridDescription& grid,
           std::int32_t logUnit);

 private:
  void set(const SpatialCommand& command, const SedimentFields& fields, std::int32_t logUnit);
  void readLayer(const SpatialCommand& command, const SedimentFields& fields,
                 const GridDescription& grid, std::int32_t logUnit);
  void readCellTable(const SpatialCommand& command, const SedimentFields& fields,
                     const GridDescription& grid, std::int32_t logUnit);

  void passObject(Unit& mif, Unit& mid);
  template <typename T, typename ToCell>
  void assignRows(Unit& table, Grid<T> field, const GridDescription& grid, ToCell toCell);
  bool nextRow(Unit& table, std::int64_t number, CellRow& row);
  [[noreturn]] void failRow(const Unit& table, std::int64_t number, const std::string& reason);
  void announce(const std::string& text, std::int32_t logUnit);

  FileUnits& files_;
  Diagnostics& diagnostics_;
  MifLayerOpener& opener_;
  MifReader& layers_;
  GridAssignment assignment_;
};

}  // namespace nivaro
