// A host that puts objects on a MIF layer and on shapefiles and lists both in a project. No exported
// routine opens shapefiles, so it works with the floors themselves.
//
// Usage: layer_host PREFIX
// Says on standard error, after each round of objects, how many rounds the files hold.
#include <cstdio>
#include <memory>
#include <string>

#include "interface/module.hpp"

namespace {

using nivaro::gis::LayerFormat;
using nivaro::gis::LayerTable;
using nivaro::gis::Object;
using nivaro::gis::ObjectKind;

Object object(ObjectKind kind, double at) {
  Object made;
  made.kind = kind;
  made.name = "thing";
  made.vertices = {{at, -at}};
  if (kind != ObjectKind::Point) made.vertices.insert(made.vertices.end(), {{at + 1, 0}, {at, 1}});
  if (kind == ObjectKind::Region) made.vertices.push_back({at, -at});
  return made;
}

void writeRound(LayerTable& layers, std::int32_t layer, int round) {
  for (const ObjectKind kind : {ObjectKind::Point, ObjectKind::Polyline, ObjectKind::Region}) {
    const Object made = object(kind, 10.0 * round);
    layers.gisWriteObject(layer, made);
    layers.gisWriteRecord(layer, made,
                          std::to_string(round) + ",\"round " + std::to_string(round) + "\"");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const std::string prefix = argv[1];
  constexpr int kRounds = 12;
  nivaro::StandardConsole console;
  nivaro::RealProcess process;
  const auto record = std::make_unique<nivaro::MessageRecord>();
  nivaro::Module module(console, process, *record);
  module.files.initFileUnits(2000);

  LayerTable& layers = module.gisLayers;
  layers.openProject(prefix + ".qgs");
  std::int32_t opened[2] = {};
  for (const LayerFormat format : {LayerFormat::Mif, LayerFormat::Shape}) {
    nivaro::gis::LayerSettings settings;
    settings.format = format;
    settings.name = prefix;
    settings.columns = {{"Round", nivaro::gis::ColumnType::Integer},
                        {"Text", nivaro::gis::ColumnType::Char, 20}};
    settings.projection = "LOCAL_CS[\"flume\"]";
    opened[format == LayerFormat::Shape] = layers.gisOpenLayer(settings);
  }
  for (int round = 1; round <= kRounds; ++round) {
    for (const std::int32_t layer : opened) writeRound(layers, layer, round);
    std::fprintf(stderr, "%d\n", round);
  }
  layers.gisCloseAll();
  return 7;
}
