// What a caller states to open a GIS layer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "messages/gis/column.hpp"

namespace nivaro::gis {

enum class LayerFormat : std::int32_t { None = 0, Mif = 1, Shape = 2, Both = 3 };

struct LayerSettings {
  LayerFormat format = LayerFormat::Mif;
  std::string name;  // the path of its files without extension; a shapefile's suffix is added
  std::vector<Column> columns;
  std::string coordSys = "";    // MIF: the whole CoordSys line; blank: metres of no projection
  std::string projection = "";  // shapefile: the content of its .prj; blank: it has none

  // Where the project file lists the layer: 1 or -1 among the input layers, else the output layers.
  std::int32_t projectCode = 0;

  // Which of a shapefile's sub-layers are opened; an object for another cannot be written.
  bool points = true;
  bool lines = true;
  bool regions = true;
};

}  // namespace nivaro::gis
