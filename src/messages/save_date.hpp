// A layer that is exported from a MapInfo table must not be older than the table: whoever edits the
// table and forgets to export it would compute with the old layer.
#pragma once

#include <cstdint>
#include <string>

#include "files/file_units.hpp"
#include "files/termination.hpp"
#include "messages/diagnostics.hpp"
#include "messages/layer_units.hpp"

namespace nivaro {

struct SaveDateQuestion {
  std::string layer;
  std::string table;
  bool isError = false;  // an old layer must be exported again before the run goes on
  std::int32_t logUnit = 0;
};

class SaveDateCheck {
 public:
  SaveDateCheck(FileUnits& files, Diagnostics& diagnostics, Termination& termination);

  // True: the run goes on with the layer. False: the layer's files have been closed and the person
  // at the console has exported them again; they are to be opened and checked once more. A layer
  // without a table is not older than it.
  bool run(const SaveDateQuestion& question, LayerUnits& units);

 private:
  void say(const std::string& line, std::int32_t logUnit);
  void askForExport();

  FileUnits& files_;
  Diagnostics& diagnostics_;
  Termination& termination_;
};

}  // namespace nivaro
