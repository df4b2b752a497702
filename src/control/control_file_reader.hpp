// Reads the morphology control file of one domain, with the files that it includes: options,
// spatially varying parameters, and at the end the echo of the options to the log.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "control/spatial_command.hpp"
#include "files/file_units.hpp"
#include "messages/diagnostics.hpp"
#include "morphology/fields.hpp"
#include "morphology/parameters.hpp"
#include "text/control_line.hpp"

namespace nivaro {

// What one reading fills and needs.
struct ControlFileRequest {
  std::string_view controlFile;
  MorphologyParameters& parameters;     // of the domain
  const SedimentFields& fields;         // of the domain
  const GridDescription& grid;          // of the domain
  const MorphologyParameters& current;  // shown by the echo
  std::int32_t logUnit = 0;
};

class ControlFileReader {
 public:
  ControlFileReader(FileUnits& files, Diagnostics& diagnostics, VariableTable& variables,
                    SpatialCommands& spatial);

  // Starts from the defaults. Anything that cannot be read ends the run.
  void read(const ControlFileRequest& request);

 private:
  struct OpenFile {
    std::int32_t unit = 0;
    std::string name;
    int lineNumber = 0;
  };

  void openNext(const std::string& name);
  bool nextLine(std::string& line);
  void process(const ControlFileRequest& request, std::string& line);
  void includeFile(std::string_view name);
  void runSpatialCommand(const ControlFileRequest& request, SpatialSource source,
                         std::string_view command, std::string_view value, std::string_view line);
  Report located(Report report) const;
  std::string place() const;

  FileUnits& files_;
  Diagnostics& diagnostics_;
  VariableTable& variables_;
  SpatialCommands& spatial_;
  std::string folder_;           // of the top-level file; every file named in it is relative to it
  std::vector<OpenFile> stack_;  // top-level file first; the last one is being read
};

}  // namespace nivaro
