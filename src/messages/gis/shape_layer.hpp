// A layer as shapefiles: one each for its points, lines and regions.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "files/file_units.hpp"
#include "messages/gis/dbase_file.hpp"
#include "messages/gis/layer_settings.hpp"
#include "messages/gis/object.hpp"
#include "messages/gis/report.hpp"
#include "messages/gis/shape_file.hpp"

namespace nivaro::gis {

// The suffix of the sub-layer that objects of this kind go to; empty for a null object, which goes
// to all of them, and for what no shapefile can hold.
std::string_view subLayerSuffix(ObjectKind kind);

class ShapeLayer {
 public:
  explicit ShapeLayer(FileUnits& files) : files_(files) {}

  MaybeFailure open(const LayerSettings& settings);

  MaybeFailure writeObject(const Object& object);

  // The attributes of the object written last. Headers, records and counts of the sub-layer's files
  // are right on the disk afterwards.
  MaybeFailure writeRecord(const Object& object, std::string_view attributes);

  MaybeFailure close();

 private:
  struct SubLayer {
    std::string_view suffix;
    ShapeGeometry geometry;
    DbaseTable table;
    std::int32_t shpUnit = 0;
    std::int32_t shxUnit = 0;
    std::int32_t dbfUnit = 0;
  };

  MaybeFailure openSubLayer(const LayerSettings& settings, std::string_view suffix, ShapeType type);
  std::vector<SubLayer*> subLayersFor(ObjectKind kind);
  Failure withFile(Failure failure, const SubLayer& sub) const;
  ShapeUnits unitsOf(const SubLayer& sub) const;

  FileUnits& files_;
  std::vector<SubLayer> subLayers_;  // those that are open
};

}  // namespace nivaro::gis
