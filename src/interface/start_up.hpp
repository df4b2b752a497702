// Start-up: the unit pool, the files that stay open for the run, the banner, the GIS settings.
#pragma once

#include <string_view>

#include "interface/module.hpp"

namespace nivaro {

struct StartUpArguments {
  std::string_view simulationName;
  std::string_view outputPrefix;  // folder and base name of workspace and dataset
  std::string_view logPrefix;     // folder and base name of the log
  GisSettings gis;
  // Words of the user's:
  std::string_view messageLayers = "";  // format of the messages layers
  std::string_view processor = "";      // what computes the steps
};

void startUp(Module& module, const StartUpArguments& arguments);

}  // namespace nivaro
