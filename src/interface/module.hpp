// Everything the module remembers between two calls of the host, in one place. docs/state.md says
// of each member who writes it and when it is valid.
#pragma once

#include <cstdint>

#include "control/control_file_reader.hpp"
#include "control/spatial_command.hpp"
#include "files/file_units.hpp"
#include "files/termination.hpp"
#include "interface/domain_field_table.hpp"
#include "interface/parameter_table.hpp"
#include "messages/diagnostics.hpp"
#include "messages/gis/layer_table.hpp"
#include "messages/gis_settings.hpp"
#include "messages/layer_messages.hpp"
#include "messages/mif_layer_opener.hpp"
#include "messages/record.hpp"
#include "messages/workspace_list.hpp"
#include "messages/writer.hpp"
#include "morphology/engine/workspace.hpp"
#include "output/check_layer.hpp"
#include "output/sms_dataset.hpp"
#include "platform/console.hpp"
#include "platform/process.hpp"
#include "platform/unit_table.hpp"
#include "spatial/mif_reader.hpp"
#include "text/control_line.hpp"

namespace nivaro {

// Members stand in the order of the floors they come from, and are built in that order.
struct Module {
  Module(Console& console, Process& process, MessageRecord& record);
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  Console& console;
  Process& process;
  MessageRecord& record;
  UnitTable units;
  Termination termination;
  FileUnits files;
  gis::LayerTable gisLayers;
  MessageWriter messages;
  LayerMessages layerMessages;
  Diagnostics diagnostics;
  VariableTable variables;
  std::int32_t logUnit = 0;
  GisSettings gisSettings;
  WorkspaceList workspace;
  MifLayerOpener layerOpener;
  MifReader layers;
  SpatialCommands spatialCommands;
  ControlFileReader controlFile;
  DomainFieldTable fields;
  ParameterTable parameters;
  StepWorkspace stepWorkspace;
  SmsDataset dataset;
  CheckLayer checkLayer;
};

}  // namespace nivaro
