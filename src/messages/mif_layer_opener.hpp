// Opens every MapInfo layer that the module reads or writes: the pair of a `.mif` and a `.mid` file,
// or a single file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "files/file_units.hpp"
#include "files/termination.hpp"
#include "messages/diagnostics.hpp"
#include "messages/gis/layer_table.hpp"
#include "messages/gis_settings.hpp"
#include "messages/layer_units.hpp"
#include "messages/save_date.hpp"
#include "messages/workspace_list.hpp"

namespace nivaro {

enum class LayerFiles { Pair, Single };

class MifLayerOpener {
 public:
  MifLayerOpener(FileUnits& files, Diagnostics& diagnostics, Termination& termination,
                 WorkspaceList& workspace, gis::LayerTable& gisLayers, const GisSettings& settings);

  // Opens an input layer; of a pair, `name` may be either file or have no extension. The pair is
  // checked for the host's projection; it, and a single `.mid` file, is entered in the workspace and
  // checked for its age. What the settings call an error ends the run. Where there is a QGIS project
  // it lists the pair.
  LayerUnits openInput(std::string_view name, LayerFiles files, std::int32_t logUnit);

  // Creates the files of a pair, without checks and without a workspace entry.
  LayerUnits openOutput(std::string_view name);

  void close(LayerUnits& units);

 private:
  std::string openFiles(std::string_view name, LayerFiles files, std::string_view mode,
                        LayerUnits& units);
  void checkProjection(Unit& mif);
  void listInProject(Unit& mif);
  bool checkSaveDate(const std::string& opened, LayerUnits& units, std::int32_t logUnit);

  FileUnits& files_;
  Diagnostics& diagnostics_;
  WorkspaceList& workspace_;
  gis::LayerTable& gisLayers_;
  const GisSettings& settings_;
  SaveDateCheck saveDate_;
};

}  // namespace nivaro
