// A layer table with real files in a folder of its own, and objects of every kind.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "messages/gis/layer_table.hpp"
#include "support/test_module.hpp"

namespace nivaro::gis::test {

class GisTest : public nivaro::test::ModuleTest {
 protected:
  GisTest() {
    files.initFileUnits(2000);
    console.answers.push_back("");  // to "Press Enter to Close"
  }

  LayerSettings settingsFor(LayerFormat format, std::string_view name) const {
    return {.format = format,
            .name = folder.path(name),
            .columns = {{"Message", ColumnType::Char, 60}, {"Link", ColumnType::Char, 40}}};
  }

  std::int32_t openMif(std::string_view name = "a") {
    return layers.gisOpenLayer(settingsFor(LayerFormat::Mif, name));
  }
  std::int32_t openShapes(std::string_view name = "a") {
    return layers.gisOpenLayer(settingsFor(LayerFormat::Shape, name));
  }

  void write(std::int32_t layer, const Object& object, std::string_view attributes = "\"m\",\"\"") {
    layers.gisWriteObject(layer, object);
    layers.gisWriteRecord(layer, object, attributes);
  }

  // What the screen shows of a call that ends the run.
  template <typename Call>
  std::string shownWhenStopping(Call call) {
    console.output.clear();
    EXPECT_THROW(call(), nivaro::test::ProcessEnded);
    return console.output;
  }

  FileUnits& files = module.files;
  LayerTable& layers = module.gisLayers;
};

inline Object objectOf(ObjectKind kind, std::vector<Vertex> vertices,
                       std::vector<std::int32_t> firstVertex = {1}) {
  return {.kind = kind,
          .firstVertex = std::move(firstVertex),
          .vertices = std::move(vertices),
          .label = kind == ObjectKind::Text ? "\"m\"" : "",
          .name = "Object"};
}

inline Object pointAt(double x, double y) {
  return objectOf(ObjectKind::Point, {{x, y}});
}

inline const Object kNullObject = objectOf(ObjectKind::None, {});

// A square of 10 with a square hole of 2 in its middle, both counter-clockwise, and an island of
// half a unit in the hole: three closed rings of five vertices.
inline Object ringedRegion() {
  std::vector<Vertex> vertices;
  for (const auto& [low, high] : {std::pair(0.0, 10.0), {4.0, 6.0}, {5.0, 5.5}})
    for (const auto& [x, y] :
         {std::pair(low, low), {high, low}, {high, high}, {low, high}, {low, low}})
      vertices.push_back({x, y});
  return objectOf(ObjectKind::Region, vertices, {1, 6, 11});
}

}  // namespace nivaro::gis::test
