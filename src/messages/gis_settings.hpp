// What the host said at start-up about its GIS layers: kept for everything that opens or writes
// one.
#pragma once

#include <string>

namespace nivaro {

struct GisSettings {
  bool checkSaveDate = false;            // compare a layer's date with that of its table
  std::string tableExtension{};          // of the table that belongs to a layer
  bool saveDateIsError = false;          // an old layer stops the run instead of warning
  std::string checkLayerPrefix{};        // folder and base name of the check layer
  std::string checkLayerHeaderSource{};  // its CoordSys line, or blank
  std::string hostProjection{};          // CoordSys line of the host, normalised; blank: no check
  bool projectionIsError = false;        // another projection stops the run instead of warning
};

}  // namespace nivaro
