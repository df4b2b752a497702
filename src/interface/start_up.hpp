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
  std::string_view messageLayers = "";  // format of the messages layers: a word of the user's
};

void startUp(Module& module, const StartUpArguments& arguments);

}  // namespace nivaro
