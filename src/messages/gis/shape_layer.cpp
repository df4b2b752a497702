#include "messages/gis/shape_layer.hpp"

#include "files/path.hpp"
#include "messages/gis/layer_files.hpp"
#include "platform/support.hpp"
#include "text/blank_padded.hpp"

namespace nivaro::gis {

namespace {

Failure shapeFailure() {
  return {"ERROR 0439 - Writing .shp file object coordinates."};
}
Failure tableFailure() {
  return {"ERROR 0417 - Writing .dbf record."};
}

}  // namespace

std::string_view subLayerSuffix(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Point:
    case ObjectKind::Multipoint:
    case ObjectKind::Text:
      return "_P";
    case ObjectKind::Line:
    case ObjectKind::Polyline:
    case ObjectKind::MultiplePolyline:
      return "_L";
    case ObjectKind::Region:
      return "_R";
    case ObjectKind::Unset:
    case ObjectKind::None:
      return "";
  }
  return "";
}

MaybeFailure ShapeLayer::open(const LayerSettings& settings) {
  // The suffix, which says what a file holds, is what an object finds its sub-layer by.
  struct Wanted {
    bool open;
    std::string_view suffix;
    ShapeType type;
  };
  for (const auto& [open, suffix, type] : {Wanted{settings.points, "_P", ShapeType::Point},
                                           Wanted{settings.lines, "_L", ShapeType::Polyline},
                                           Wanted{settings.regions, "_R", ShapeType::Polygon}}) {
    if (!open) continue;
    if (auto failure = openSubLayer(settings, suffix, type)) return failure;
  }
  return {};
}

MaybeFailure ShapeLayer::openSubLayer(const LayerSettings& settings, std::string_view suffix,
                                      ShapeType type) {
  const std::string name = settings.name + std::string(suffix);
  SubLayer& sub = subLayers_.emplace_back(SubLayer{
      .suffix = suffix, .geometry = ShapeGeometry(type), .table = DbaseTable(settings.columns)});
  if (auto failure = openLayerFile(files_, name + ".shp", "BO", sub.shpUnit)) return failure;
  if (auto failure = openLayerFile(files_, name + ".shx", "BO", sub.shxUnit)) return failure;
  if (auto failure = openLayerFile(files_, name + ".dbf", "BO", sub.dbfUnit)) return failure;
  if (!sub.geometry.startFiles(unitsOf(sub))) return headerFailure(name + ".shp");
  if (!sub.table.writeHeader(files_.find(sub.dbfUnit))) return headerFailure(name + ".dbf");
  // Without a projection file readers ask, with a blank one they complain.
  if (trimmed(settings.projection).empty()) return {};

  std::int32_t prjUnit = 0;
  if (auto failure = openLayerFile(files_, name + ".prj", "O ", prjUnit)) return failure;
  Unit* prj = files_.find(prjUnit);
  if (!prj->writeRecord(trimmed(settings.projection)) || !prj->flush())
    return headerFailure(name + ".prj");
  files_.closeFile(prjUnit);
  return {};
}

MaybeFailure ShapeLayer::writeObject(const Object& object) {
  if (object.kind == ObjectKind::Unset)
    return Failure{"Should not be here [gisWriteObject-shp].  Please contact " +
                   std::string(kSupportAddress)};
  const std::vector<SubLayer*> subLayers = subLayersFor(object.kind);
  // The caller did not want files for this geometry: there is nowhere to write.
  if (subLayers.empty()) return shapeFailure();
  for (SubLayer* sub : subLayers) {
    if (!sub->geometry.accepts(object))
      return Failure{
          "ERROR 0350 - Trying to write a SHP object that is not yet supported.  Please contact " +
          std::string(kSupportAddress)};
    if (!sub->geometry.add(unitsOf(*sub), object)) return withFile(shapeFailure(), *sub);
  }
  return {};
}

MaybeFailure ShapeLayer::writeRecord(const Object& object, std::string_view attributes) {
  const std::vector<SubLayer*> subLayers = subLayersFor(object.kind);
  if (subLayers.empty()) return tableFailure();
  for (SubLayer* sub : subLayers) {
    // The table first: readers pass over a record without a shape.
    if (!sub->table.addRecord(files_.find(sub->dbfUnit), attributes))
      return withFile(tableFailure(), *sub);
    if (!sub->geometry.writeHeaders(unitsOf(*sub))) return withFile(shapeFailure(), *sub);
  }
  return {};
}

MaybeFailure ShapeLayer::close() {
  // The first failure is told, but it does not keep the other files from their headers.
  MaybeFailure failure;
  for (SubLayer& sub : subLayers_) {
    // A run that ended between an object and its record leaves a blank one.
    bool hasRecords = true;
    while (hasRecords && sub.table.recordCount() < sub.geometry.recordCount())
      hasRecords = sub.table.addRecord(files_.find(sub.dbfUnit), "");
    // An object whose record is nowhere stays out of the headers, or readers find more in the index
    // than in the table.
    if (!hasRecords) {
      if (!failure) failure = withFile(tableFailure(), sub);
    } else if (!sub.geometry.writeHeaders(unitsOf(sub)) && !failure) {
      failure = withFile(shapeFailure(), sub);
    }
    files_.closeFile(sub.shpUnit);
    files_.closeFile(sub.shxUnit);
    files_.closeFile(sub.dbfUnit);
  }
  return failure;
}

// A null object goes wherever there are files.
std::vector<ShapeLayer::SubLayer*> ShapeLayer::subLayersFor(ObjectKind kind) {
  const std::string_view suffix = subLayerSuffix(kind);
  std::vector<SubLayer*> found;
  for (SubLayer& sub : subLayers_)
    if (kind == ObjectKind::None || sub.suffix == suffix) found.push_back(&sub);
  return found;
}

// The failure, with the file that has failed and its reason.
Failure ShapeLayer::withFile(Failure failure, const SubLayer& sub) const {
  for (const std::int32_t unit : {sub.shpUnit, sub.shxUnit, sub.dbfUnit})
    if (const Unit* file = files_.find(unit); file != nullptr && !file->failure().empty())
      failure.line2 = "File \"" + correctSlash(file->path()) + "\": " + file->failure();
  return failure;
}

ShapeUnits ShapeLayer::unitsOf(const SubLayer& sub) const {
  return {files_.find(sub.shpUnit), files_.find(sub.shxUnit)};
}

}  // namespace nivaro::gis
