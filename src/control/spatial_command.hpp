// The commands that give a spatially varying parameter its values: Set (one value for all cells),
// Read MI (a GIS layer) and Read MID (a table of cells).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "control/spatial_target.hpp"
#include "messages/diagnostics.hpp"

namespace nivaro {

enum class SpatialSource { Set, ReadMi, ReadMid };

struct SpatialCommand {
  SpatialSource source = SpatialSource::Set;
  const SpatialTarget& target;
  std::string_view value;        // behind "=="
  std::string_view controlLine;  // for messages
  std::string place;             // file and line of the command, for messages
};

class SpatialCommands {
 public:
  explicit SpatialCommands(Diagnostics& diagnostics);

  // Carries the command out on the fields of a domain. Whatever goes wrong ends the run.
  void run(const SpatialCommand& command, const SedimentFields& fields, std::int32_t logUnit);

 private:
  void set(const SpatialCommand& command, const SedimentFields& fields, std::int32_t logUnit);
  void announce(const std::string& text, std::int32_t logUnit);

  Diagnostics& diagnostics_;
};

}  // namespace nivaro
